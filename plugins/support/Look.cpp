#include "support/Look.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QPalette>

namespace {

constexpr qreal QuietShare = 0.35; // of the background in quiet text

/// A label that begins where the window's lines begin, whatever script its own text is in: names and numbers
/// stay Latin in a window that is laid out from right to left.
class Label : public QLabel
{
public:
    Label() { align(); }

protected:
    void changeEvent(QEvent* event) override
    {
        QLabel::changeEvent(event);
        if (event->type() == QEvent::LayoutDirectionChange)
            align();
    }

private:
    void align()
    {
        const bool isMirrored = layoutDirection() == Qt::RightToLeft;
        if (!(alignment() & Qt::AlignHCenter))
            setAlignment((isMirrored ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute |
                         Qt::AlignVCenter);
    }
};

/// A label whose colour is drawn halfway back into the background, also when the palette changes. (The
/// palette's own role for quiet text is no help: some platforms leave it unset.)
class QuietLabel : public Label
{
public:
    QuietLabel()
    {
        setProperty("quiet", true); // for style sheets
        dim();
    }

protected:
    void changeEvent(QEvent* event) override
    {
        Label::changeEvent(event);
        if (event->type() == QEvent::PaletteChange)
            dim();
    }

private:
    void dim();
};

void QuietLabel::dim()
{
    const QPalette normal = QApplication::palette(this);
    const QColor dimmed =
        Look::mixed(normal.color(QPalette::WindowText), normal.color(QPalette::Window), QuietShare);
    QPalette own = palette();
    if (own.color(QPalette::WindowText) == dimmed)
        return;
    own.setColor(QPalette::WindowText, dimmed);
    setPalette(own);
}

void setUp(QLabel* label, const QString& content, qreal scale, QFont::Weight weight)
{
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setWeight(weight);
    label->setFont(font);
    label->setTextFormat(Qt::PlainText);
    label->setText(content);
}

} // namespace

static bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Base).lightness() < 128;
}

QColor Look::toneColor(Tone tone, const QPalette& palette)
{
    const bool dark = isDark(palette);
    switch (tone) {
    case Tone::Good:
        return dark ? QColor(0x5f, 0xd0, 0x8a) : QColor(0x17, 0x7a, 0x41);
    case Tone::Info:
        return dark ? QColor(0x74, 0xb4, 0xff) : QColor(0x1b, 0x5f, 0xc4);
    case Tone::Bad:
        return dark ? QColor(0xff, 0x8a, 0x80) : QColor(0xb3, 0x26, 0x1e);
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

QLabel* Look::label(const QString& content, qreal scale, QFont::Weight weight)
{
    auto* label = new Label;
    setUp(label, content, scale, weight);
    return label;
}

QLabel* Look::quietLabel(const QString& content, bool wrapped)
{
    auto* label = new QuietLabel;
    setUp(label, content, 1.0, QFont::Normal);
    label->setWordWrap(wrapped);
    return label;
}
