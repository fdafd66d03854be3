#include "support/ElidedLabel.h"

#include "common/CommonUtils.h"

#include <QEvent>
#include <QTextDocument>

#include <algorithm>

namespace {

constexpr int LeastCharacters = 4;
constexpr int LongestMeasured = 4096; // characters; more do not fit into any window and take long to measure
constexpr int MarginAtText = 2;       // pixels that ElidedText() needs beside the text

} // namespace

ElidedLabel::ElidedLabel(QWidget* parent)
    : Label(parent)
{
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
}

void ElidedLabel::setFullText(const QString& text)
{
    m_fullText = text;
    setAccessibleDescription(text);
    updateGeometry();
    elide();
}

QSize ElidedLabel::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    const QString text = m_fullText.left(LongestMeasured);
    const int width = qMax(metrics.boundingRect(text).width(), metrics.horizontalAdvance(text));
    return {width + MarginAtText, Label::sizeHint().height()};
}

QSize ElidedLabel::minimumSizeHint() const
{
    const int least = fontMetrics().averageCharWidth() * LeastCharacters;
    return {qMin(least, sizeHint().width()), Label::minimumSizeHint().height()};
}

void ElidedLabel::changeEvent(QEvent* event)
{
    Label::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        elide();
}

void ElidedLabel::resizeEvent(QResizeEvent* event)
{
    Label::resizeEvent(event);
    elide();
}

/// Whether each word fits into a line of its own.
bool ElidedLabel::isWrappable() const
{
    if (!wordWrap() || m_fullText.size() > LongestMeasured)
        return false;
    const QStringList words = m_fullText.split(QLatin1Char(' '));
    return std::all_of(words.begin(), words.end(), [this](const QString& word) {
        return fontMetrics().horizontalAdvance(word) + MarginAtText <= width();
    });
}

void ElidedLabel::elide()
{
    if (isWrappable()) {
        setText(m_fullText);
        setToolTip({});
        return;
    }
    CommonUtils::ElidedText(this, m_fullText, Qt::ElideRight);
    if (Qt::mightBeRichText(toolTip()))
        setToolTip(QLatin1String("<p style=\"white-space: pre-wrap\">") + m_fullText.toHtmlEscaped() +
                   QLatin1String("</p>"));
}
