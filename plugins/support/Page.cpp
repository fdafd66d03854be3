#include "support/Page.h"

#include "support/AccessibleRole.h"
#include "support/Text.h"

#include <QApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <QVariant>

namespace {

constexpr int NarrowPage = 420; ///< narrower ones have less space at their sides
constexpr int LowPage = 300;    ///< lower ones have no lead
constexpr int AboveText = 6; ///< in a label with selectable text: its frame, a margin that Qt adds, rounding

QLabel* heading(const QString& title)
{
    QLabel* const label = Look::label(title, Look::HeadingText, QFont::DemiBold);
    setAccessibleRole(label, QAccessible::Heading);
    return label;
}

} // namespace

Page::Page(const char* title, const char* lead, Look::Sign sign, QWidget* parent)
    : QScrollArea(parent)
    , m_heading(new QHBoxLayout)
    , m_lead(Look::quietLabel(QString(), true))
    , m_content(new QVBoxLayout)
{
    setWindowIcon(Look::tileIcon(sign));
    setFrameShape(NoFrame);
    setWidgetResizable(true);

    auto* column = new QWidget;
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(Look::Margin, Look::Margin, Look::Margin, Look::Margin);
    layout->setSpacing(0);
    auto* titles = new QVBoxLayout;
    titles->setSpacing(Look::Gap / 2);
    QLabel* titleLabel = Look::label(QString(), Look::TitleText, QFont::DemiBold);
    setAccessibleRole(titleLabel, QAccessible::Heading);
    titles->addWidget(titleLabel);
    titles->addWidget(m_lead);
    m_heading->setSpacing(Look::Gap * 2);
    m_heading->addLayout(titles, 1);
    layout->addLayout(m_heading);
    m_content->setSpacing(Look::Gap * 2);
    layout->addLayout(m_content, 1);
    setWidget(column);
    for (const QScrollBar* const bar : {horizontalScrollBar(), verticalScrollBar()})
        connect(bar, &QScrollBar::rangeChanged, this, &Page::followScrollRange);

    keepTranslated(this, [=] {
        setWindowTitle(text(title));
        setAccessibleName(windowTitle());
        titleLabel->setText(windowTitle());
        m_lead->setText(text(lead));
    });
}

void Page::setCorner(QWidget* corner)
{
    m_heading->addWidget(corner);
}

void Page::setBadge(int number)
{
    setProperty("badge", number);
}

bool Page::isLow() const
{
    return height() < LowPage;
}

void Page::keyPressEvent(QKeyEvent* event)
{
    auto* const button = qobject_cast<QPushButton*>(QApplication::focusWidget());
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (button && isAncestorOf(button) && isReturn && !event->isAutoRepeat())
        button->click();
    else
        QScrollArea::keyPressEvent(event);
}

void Page::resizeEvent(QResizeEvent* event)
{
    const int side = width() < NarrowPage ? Look::Gap * 2 : Look::Margin;
    const int end = isLow() ? Look::Gap / 2 : Look::Margin;
    m_lead->setVisible(!isLow());
    m_content->setContentsMargins(0, isLow() ? Look::Gap / 2 : Look::Gap * 2, 0, 0);
    widget()->layout()->setContentsMargins(side, end, side, end);
    QScrollArea::resizeEvent(event);
    followScrollRange(); // which may have been empty from the start
}

void Page::followScrollRange()
{
    if (!hasOwnFocus())
        return; // the policy would become that of the proxy
    const bool scrolls = horizontalScrollBar()->maximum() > 0 || verticalScrollBar()->maximum() > 0;
    setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::NoFocus);
}

void Page::clearContent()
{
    while (QLayoutItem* item = m_content->takeAt(0)) {
        delete item->widget();
        delete item;
    }
}

QVBoxLayout* Surface::makeColumn(const char* title, QWidget* corner)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Look::Gap * 2, Look::Gap * 2, Look::Gap * 2, Look::Gap * 2);
    column->setSpacing(Look::Gap);
    auto* line = new QHBoxLayout;
    QLabel* const label = heading(QString());
    line->addWidget(label, 1);
    if (corner)
        line->addWidget(corner);
    column->addLayout(line);
    keepTranslated(label, [=] { label->setText(text(title)); });
    return column;
}

void Surface::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Look::lineColor(palette()));
    painter.setBrush(palette().base());
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Look::Radius, Look::Radius);
}

Card::Card(const QString& title, QWidget* parent)
    : Surface(parent)
    , m_rows(new QGridLayout(this))
{
    m_rows->setContentsMargins(Look::Gap * 2, Look::Gap * 2, Look::Gap * 2, Look::Gap * 2);
    m_rows->setHorizontalSpacing(Look::Margin);
    m_rows->setVerticalSpacing(Look::Gap);
    m_rows->setColumnStretch(0, 1); // the same columns in all panels of a page
    m_rows->setColumnStretch(1, 2);
    if (!title.isEmpty())
        m_rows->addWidget(heading(title), 0, 0, 1, 2);
}

void Card::addRow(const QString& caption, const QString& value)
{
    const int row = m_rows->rowCount();
    QLabel* content = Look::label(value, Look::NormalText);
    Look::makeSelectable(content);
    content->setWordWrap(true); // in narrow windows
    content->setAlignment((content->alignment() & ~Qt::AlignVertical_Mask) | Qt::AlignTop);
    content->setAccessibleName(caption);
    content->setAccessibleDescription(value);
    QLabel* captionLabel = Look::quietLabel(caption, true);
    captionLabel->setContentsMargins(0, AboveText, 0, 0);
    m_rows->addWidget(captionLabel, row, 0, Qt::AlignTop);
    m_rows->addWidget(content, row, 1);
}

void Card::addText(const QString& content)
{
    QLabel* paragraph = Look::label(content, Look::NormalText);
    paragraph->setWordWrap(true);
    m_rows->addWidget(paragraph, m_rows->rowCount(), 0, 1, 2);
}
