#include "NumberField.h"

#include "HoldButton.h"
#include "support/Look.h"
#include "support/Text.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>

namespace {

constexpr int Height = 52;

/// Draws the usual symbol for "delete backwards" in the colour of the button's text.
class BackspaceButton : public HoldButton
{
public:
    using HoldButton::HoldButton;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        HoldButton::paintEvent(event);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(
            QPen(palette().color(isEnabled() ? QPalette::Normal : QPalette::Disabled, QPalette::ButtonText),
                 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.translate(QRectF(rect()).center());
        painter.drawPolygon(QPolygonF({{-11, 0}, {-5, -7}, {10, -7}, {10, 7}, {-5, 7}}));
        painter.drawLine(QPointF(-1, -3), QPointF(5, 3));
        painter.drawLine(QPointF(-1, 3), QPointF(5, -3));
    }
};

QLineEdit* makeEdit()
{
    auto* edit = new QLineEdit;
    Look::setFont(edit, Look::TitleText);
    edit->setMinimumHeight(Height);
    edit->setAlignment(Qt::AlignCenter);
    keepTranslated(edit, [edit] {
        edit->setPlaceholderText(text("IDS_DIAL_NUMBER"));
        edit->setAccessibleName(edit->placeholderText());
    });
    Look::followText(edit);
    return edit;
}

HoldButton* makeBackspace(QLineEdit* edit)
{
    auto* button = new BackspaceButton;
    button->setFixedSize(Height, Height);
    button->setEnabled(false);
    QObject::connect(button, &HoldButton::tapped, edit, &QLineEdit::backspace);
    QObject::connect(button, &HoldButton::held, edit, &QLineEdit::clear);
    QObject::connect(edit, &QLineEdit::textChanged, button,
                     [button](const QString& number) { button->setEnabled(!number.isEmpty()); });
    keepTranslated(button, [button] {
        button->setAccessibleName(text("IDS_DIAL_BACKSPACE"));
        button->setToolTip(text("IDS_DIAL_BACKSPACE_HINT"));
        button->setAccessibleDescription(button->toolTip());
    });
    return button;
}

} // namespace

NumberField::NumberField(QWidget* parent)
    : QWidget(parent)
    , m_edit(makeEdit())
{
    setLayoutDirection(Qt::LeftToRight); // numbers are never mirrored
    setFocusProxy(m_edit);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Look::Gap);
    row->addWidget(m_edit, 1);
    row->addWidget(makeBackspace(m_edit));
}
