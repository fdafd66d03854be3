#include "common/CommonUtils.h"

#include "common/Log.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>

namespace {

constexpr int LabelMargin = 2;

/// Longer texts do not fit into any widget, and measuring megabytes would take minutes.
constexpr int LongestMeasured = 16 * 1024;

/// The part of a text that a widget can show at most.
QString visiblePart(const QString& text, Qt::TextElideMode mode)
{
    if (text.size() <= LongestMeasured)
        return text;
    if (mode == Qt::ElideMiddle)
        return text.left(LongestMeasured / 2) + text.right(LongestMeasured / 2);
    return mode == Qt::ElideLeft ? text.right(LongestMeasured) : text.left(LongestMeasured);
}

/// @param isMeasurable false if there is no widget
/// @param font         returns the font metrics; called only for a measurable, non-empty text
template <typename Font>
void measure(bool isMeasurable, const QString& text, Font font, int& height, int& width, const char* function)
{
    LOG_DEBUG("Enter  : %s: %s: %s %d", LOG_TIME, LOG_FILE, function, __LINE__);
    if (!isMeasurable) {
        LOG_DEBUG("%s: %s: %s %d : Bad input Param", LOG_TIME, LOG_FILE, function, __LINE__);
    } else if (text.isEmpty()) {
        LOG_DEBUG("%s: %s: %s %d : Empty String in the widget", LOG_TIME, LOG_FILE, function, __LINE__);
    } else {
        const QFontMetrics metrics = font();
        width = metrics.horizontalAdvance(text);
        height = metrics.height();
    }
    LOG_DEBUG("End  : %s: %s: %s %d", LOG_TIME, LOG_FILE, function, __LINE__);
}

} // namespace

void CommonUtils::ElidedText(QLabel* label, QString text, Qt::TextElideMode mode)
{
    LOG_DEBUG("%s: %s: %s: %d: Entered", LOG_TIME, LOG_FILE, LOG_FUNCTION, __LINE__);
    if (!label) {
        LOG_DEBUG("%s: %s: %s: %d: NULL == pLabel", LOG_TIME, LOG_FILE, LOG_FUNCTION, __LINE__);
        return;
    }
    showElided(label, text, mode, LabelMargin);
    LOG_DEBUG("%s: %s: %s: %d: Exit", LOG_TIME, LOG_FILE, LOG_FUNCTION, __LINE__);
}

void CommonUtils::LableElidedText(QLabel* label, QString text, Qt::TextElideMode mode)
{
    LOG_DEBUG("%s: %s: %s: %d: Entered", LOG_TIME, LOG_FILE, LOG_FUNCTION, __LINE__);
    ElidedText(label, text, mode);
    LOG_DEBUG("%s: %s: %s: %d: Exit", LOG_TIME, LOG_FILE, LOG_FUNCTION, __LINE__);
}

void CommonUtils::AbstractButtonElidedText(QAbstractButton* button, QString text, Qt::TextElideMode mode)
{
    LOG_DEBUG("%s: %s: %s: %d: Entered", LOG_TIME, LOG_FILE, LOG_FUNCTION, __LINE__);
    if (!button) {
        LOG_DEBUG("%s: %s: %s: %d: NULL == pButton", LOG_TIME, LOG_FILE, LOG_FUNCTION, __LINE__);
        return;
    }
    setElidedTextForWidgetText(button, text, mode);
    LOG_DEBUG("%s: %s: %s: %d: Exit", LOG_TIME, LOG_FILE, LOG_FUNCTION, __LINE__);
}

void CommonUtils::GetWidgetStringHeightAndWidth(QWidget* widget, QString text, int& height, int& width)
{
    measure(
        widget, text, [widget] { return widget->fontMetrics(); }, height, width, LOG_FUNCTION);
}

void CommonUtils::GetApplicationStringHeightAndWidth(QString text, int& height, int& width)
{
    measure(
        true, text, [] { return QFontMetrics(QApplication::font()); }, height, width, LOG_FUNCTION);
}

QString CommonUtils::elided(const QFontMetrics& metrics, const QString& text, Qt::TextElideMode mode,
                            int width, bool& fits)
{
    const QString part = visiblePart(text, mode);
    fits = part.size() == text.size() && metrics.boundingRect(part).width() <= width;
    return fits ? text : metrics.elidedText(mode == Qt::ElideNone ? text : part, mode, width);
}
