#include "support/Look.h"

#include "support/Label.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QStyle>
#include <QStyleOptionViewItem>

namespace {

constexpr qreal QuietShare = 0.2; // of the background colour in quiet text
constexpr qreal FocusShare = 0.5; // of the text colour in frames around what has the focus

/// Dims a label's text colour, also when the palette changes. (The palette's own role for such text,
/// PlaceholderText, is not set on all platforms.)
class Dimmer : public QObject
{
public:
    explicit Dimmer(QLabel* label)
        : QObject(label)
        , m_label(label)
    {
        label->installEventFilter(this);
        dim();
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::PaletteChange)
            dim();
        return false;
    }

private:
    void dim();

    QLabel* m_label;
};

void Dimmer::dim()
{
    const QPalette normal = QApplication::palette(m_label);
    const QColor dimmed =
        Look::mixed(normal.color(QPalette::WindowText), normal.color(QPalette::Window), QuietShare);
    QPalette own = m_label->palette();
    if (own.color(QPalette::WindowText) == dimmed)
        return;
    own.setColor(QPalette::WindowText, dimmed);
    m_label->setPalette(own);
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
    new Dimmer(label);
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

QLabel* Look::label(const QString& content, qreal scale, QFont::Weight weight)
{
    auto* label = new Label;
    setFont(label, scale, weight);
    label->setText(content);
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
    QLabel* label = Look::label(QString(), NormalText);
    label->setWordWrap(true);
    label->setProperty("error", true); // for style sheets with colours of their own
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, toneColor(Tone::Bad, palette));
    label->setPalette(palette);
    return label;
}
