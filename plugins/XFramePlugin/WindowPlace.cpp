#include "WindowPlace.h"

#include <QScreen>
#include <QStringList>
#include <QVector>
#include <QWidget>

namespace {

constexpr int Farthest = 1 << 20; ///< pixels; no screen is that large

/// Four numbers; an empty rectangle if the text is anything else.
QRect rectangle(const QString& text)
{
    QVector<int> numbers;
    for (const QString& word : text.split(QLatin1Char(' ')))
        numbers.append(qBound(-Farthest, word.toInt(), Farthest));
    return numbers.size() == 4 ? QRect(numbers[0], numbers[1], numbers[2], numbers[3]) : QRect();
}

/// The nearest place within an area, shrunk if necessary.
QRect fitted(const QRect& place, const QRect& area)
{
    const QSize size = place.size().boundedTo(area.size());
    const QPoint last = area.bottomRight() - QPoint(size.width() - 1, size.height() - 1);
    return {QPoint(qBound(area.left(), place.left(), last.x()), qBound(area.top(), place.top(), last.y())),
            size};
}

} // namespace

// QWidget::restoreGeometry() keeps a strip free for the desktop's title bar above the window. A window with its own
// frame would come down from the upper edge of the screen, and lose some of its height if it fills the screen's.
QString WindowPlace::describe(const QWidget& window, bool hasOwnFrame)
{
    if (!hasOwnFrame)
        return QString::fromLatin1(window.saveGeometry().toBase64());
    const QRect place = window.normalGeometry();
    return QStringLiteral("%1 %2 %3 %4").arg(place.x()).arg(place.y()).arg(place.width()).arg(place.height());
}

bool WindowPlace::restore(QWidget& window, const QString& place)
{
    const QRect described = rectangle(place);
    if (described.isEmpty())
        return window.restoreGeometry(QByteArray::fromBase64(place.toLatin1()));
    window.setGeometry(fitted(described, window.screen()->availableVirtualGeometry()));
    return true;
}
