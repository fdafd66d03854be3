#include "support/Look.h"

#include "support/Label.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QStyleOptionViewItem>

namespace {

constexpr qreal QuietShare = 0.2; // of the background colour in quiet text
constexpr qreal FocusShare = 0.5; // of the text colour in frames around what has the focus

/// Gives a label a text colour that is derived from the application's palette, also when that changes.
class TextColour : public QObject
{
public:
    using Derive = QColor (*)(const QPalette& normal);

    TextColour(QLabel* label, Derive derive)
        : QObject(label)
        , m_label(label)
        , m_derive(derive)
    {
        label->installEventFilter(this);
        apply();
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::PaletteChange)
            apply();
        return false;
    }

private:
    void apply();

    QLabel* m_label;
    Derive m_derive;
};

void TextColour::apply()
{
    const QColor color = m_derive(QApplication::palette(m_label));
    QPalette own = m_label->palette();
    if (own.color(QPalette::WindowText) == color)
        return;
    own.setColor(QPalette::WindowText, color);
    m_label->setPalette(own);
}

/// The palette's own role for such text, PlaceholderText, is not set on all platforms.
QColor dimmed(const QPalette& palette)
{
    return Look::mixed(palette.color(QPalette::WindowText), palette.color(QPalette::Window), QuietShare);
}

QColor alarming(const QPalette& palette)
{
    return Look::toneColor(Look::Tone::Bad, palette);
}

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Base).lightness() < 128;
}

} // namespace

QColor Look::toneColor(Tone tone, const QPalette& palette)
{
    const bool dark = isDark(palette);
    switch (tone) {
    case Tone::Good:
        return dark ? QColor(0x5f, 0xd0, 0x8a) : QColor(0x14, 0x6b, 0x39);
    case Tone::Info:
        return dark ? QColor(0x8c, 0xc1, 0xff) : QColor(0x1b, 0x5f, 0xc4);
    case Tone::Bad:
        return dark ? QColor(0xff, 0x9d, 0x94) : QColor(0xb3, 0x26, 0x1e);
    case Tone::Quiet:
        break;
    }
    return mixed(palette.color(QPalette::Text), palette.color(QPalette::Base), QuietShare);
}

QColor Look::mixed(const QColor& first, const QColor& second, qreal share)
{
    const auto channel = [share](qreal from, qreal to) {
        return from + (to - from) * share;
    };
    return QColor::fromRgbF(channel(first.redF(), second.redF()), channel(first.greenF(), second.greenF()),
                            channel(first.blueF(), second.blueF()));
}

QColor Look::lineColor(const QPalette& palette)
{
    return mixed(palette.color(QPalette::Window), palette.color(QPalette::WindowText), 0.14);
}

QColor Look::entryBackground(const QStyleOptionViewItem& option, QPalette::ColorRole role)
{
    const QColor normal = option.palette.color(role);
    const QColor highlight = option.palette.color(QPalette::Active, QPalette::Highlight);
    if (option.state.testFlag(QStyle::State_Selected))
        return mixed(normal, highlight, 0.22);
    return option.state.testFlag(QStyle::State_MouseOver) ? mixed(normal, highlight, 0.09) : normal;
}

QColor Look::focusColor(const QPalette& palette)
{
    return mixed(palette.color(QPalette::Active, QPalette::Highlight), palette.color(QPalette::WindowText),
                 FocusShare);
}

void Look::setFont(QWidget* widget, qreal scale, QFont::Weight weight)
{
    QFont font = widget->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setWeight(weight);
    widget->setFont(font);
}

void Look::makeQuiet(QLabel* label)
{
    label->setProperty("quiet", true); // for style sheets
    new TextColour(label, dimmed);
}

void Look::setStyleProperty(QWidget* widget, const char* name, const QVariant& value)
{
    if (widget->property(name) == value)
        return;
    widget->setProperty(name, value);
    widget->style()->polish(widget);
}

void Look::makeSelectable(QLabel* label)
{
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    label->setFocusPolicy(Qt::StrongFocus);
    label->setProperty("selectable", true);
}

void Look::followText(QLineEdit* field)
{
    QObject::connect(field, &QLineEdit::textChanged, field,
                     [field] { setStyleProperty(field, "isEmpty", field->text().isEmpty()); });
}

QLabel* Look::label(const QString& content, qreal scale, QFont::Weight weight)
{
    auto* label = new Label;
    setFont(label, scale, weight);
    label->setText(content);
    return label;
}

QLabel* Look::wrappedLabel(qreal scale, QFont::Weight weight)
{
    QLabel* label = Look::label(QString(), scale, weight);
    label->setWordWrap(true);
    return label;
}

QLabel* Look::quietLabel(const QString& content, bool wrapped)
{
    QLabel* label = Look::label(content, NormalText);
    makeQuiet(label);
    label->setWordWrap(wrapped);
    return label;
}

QLabel* Look::errorLabel()
{
    QLabel* label = wrappedLabel(NormalText);
    label->setProperty("error", true); // for style sheets with colours of their own
    new TextColour(label, alarming);
    return label;
}
