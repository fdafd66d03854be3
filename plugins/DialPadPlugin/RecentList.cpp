#include "RecentList.h"

#include "RecentNumbers.h"
#include "support/DialString.h"
#include "support/Text.h"

#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <functional>

namespace {

constexpr int EntryHeight = 32;
constexpr int LargestWidth = 300;

/// Calls a function when an arrow key has moved to another entry. The focus alone makes the first entry the current one,
/// which must not replace what the user has typed.
class ArrowList : public QListWidget
{
public:
    explicit ArrowList(std::function<void()> moved)
        : m_moved(std::move(moved))
    {
    }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        const int before = currentRow();
        QListWidget::keyPressEvent(event);
        if (currentRow() != before)
            m_moved();
    }

private:
    std::function<void()> m_moved;
};

/// Shows numbers that are never mirrored.
class NumberDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale&) const override
    {
        return unmirrored(value.toString());
    }
};

} // namespace

RecentList::RecentList(QWidget* parent)
    : Surface(parent)
    , m_list(new ArrowList([this] { choose(); }))
    , m_remove(new QPushButton)
{
    QLabel* const caption = Look::label(QString(), Look::NormalText, QFont::DemiBold);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setItemDelegate(new NumberDelegate(m_list));
    m_remove->setMinimumSize(Look::ButtonSize);
    setMaximumWidth(LargestWidth);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Look::Gap * 2, Look::Gap * 2, Look::Gap * 2, Look::Gap * 2);
    column->setSpacing(Look::Gap);
    column->addWidget(caption);
    column->addWidget(m_list, 1);
    column->addWidget(m_remove, 0, Qt::AlignLeft);
    connect(m_list, &QListWidget::itemClicked, this, &RecentList::choose);
    connect(m_list, &QListWidget::currentRowChanged, m_remove,
            [this](int row) { m_remove->setEnabled(row >= 0); });
    connect(m_remove, &QPushButton::clicked, this, &RecentList::removeCurrent);
    // Not itemActivated(), which some desktops emit at a single click.
    for (const int key : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(key, m_list, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated, this,
                &RecentList::callRequested);
    connect(new QShortcut(Qt::Key_Delete, m_list, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, this, &RecentList::removeCurrent);
    keepTranslated(this, [=] {
        caption->setText(text("IDS_DIAL_RECENT"));
        m_list->setAccessibleName(caption->text());
        m_remove->setText(text("IDS_DIAL_REMOVE"));
    });
}

void RecentList::refresh()
{
    const QStringList numbers = RecentNumbers::load();
    m_list->clear();
    for (const QString& number : numbers) {
        auto* const item = new QListWidgetItem(number, m_list);
        item->setSizeHint({0, EntryHeight});
    }
    m_remove->setEnabled(false); // none is chosen
    setVisible(!numbers.isEmpty());
}

void RecentList::enter()
{
    if (m_list->count() == 0)
        return;
    m_list->setCurrentRow(0);
    m_list->setFocus();
    choose();
}

void RecentList::choose()
{
    if (const QListWidgetItem* const item = m_list->currentItem())
        Q_EMIT chosen(item->text());
}

void RecentList::removeCurrent()
{
    const int row = m_list->currentRow();
    if (row < 0)
        return;
    RecentNumbers::remove(m_list->item(row)->text());
    refresh();
    m_list->setCurrentRow(qMin(row, m_list->count() - 1));
}
