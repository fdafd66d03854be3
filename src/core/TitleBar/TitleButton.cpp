#include "TitleBar/TitleButton_p.h"

#include "Change/Change.h"

#include <QPainter>

namespace {

constexpr int IconSize = 16;

// Marks are drawn around the centre of the button; a mark reaches this far, in device-independent pixels.
constexpr qreal Reach = 4.5;

void drawMinimize(QPainter& painter)
{
    painter.drawLine(QPointF(-Reach, Reach), QPointF(Reach, Reach));
}

void drawMaximize(QPainter& painter)
{
    painter.drawRect(QRectF(-Reach, -Reach, 2 * Reach, 2 * Reach));
}

void drawRestore(QPainter& painter)
{
    constexpr qreal shift = 2;
    painter.drawRect(QRectF(-Reach, -Reach + shift, 2 * Reach - shift, 2 * Reach - shift));
    painter.drawPolyline(QPolygonF({QPointF(-Reach + shift, -Reach + shift), QPointF(-Reach + shift, -Reach),
                                    QPointF(Reach, -Reach), QPointF(Reach, Reach - shift),
                                    QPointF(Reach - shift, Reach - shift)}));
}

void drawClose(QPainter& painter)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawLine(QPointF(-Reach, -Reach), QPointF(Reach, Reach));
    painter.drawLine(QPointF(-Reach, Reach), QPointF(Reach, -Reach));
}

struct Look
{
    const char* objectName;
    const char* caption; ///< identifier of the string
    void (*draw)(QPainter&);
};

/// In the order of TitleButton::Mark.
constexpr Look Looks[] = {
    {"Core_ButtonMinimize", "IDS_SYSMENU_MINIMIZE", drawMinimize},
    {"Core_ButtonMaximize", "IDS_SYSMENU_MAXIMIZE", drawMaximize},
    {"Core_ButtonRestore", "IDS_SYSMENU_RESTORE", drawRestore},
    {"Core_ButtonClose", "IDS_SYSMENU_CLOSE", drawClose},
};

} // namespace

TitleButton::TitleButton(Mark mark, QWidget* parent)
    : QToolButton(parent)
    , m_mark(mark)
{
    setObjectName(QLatin1String(Looks[mark].objectName));
    setFocusPolicy(Qt::NoFocus);
    setIconSize({IconSize, IconSize});
    translate();
}

void TitleButton::translate()
{
    const QString caption = Change::tr(QLatin1String(Looks[m_mark].caption), QStringLiteral("XFramePlugin"));
    setAccessibleName(caption);
    setToolTip(caption);
}

void TitleButton::paintEvent(QPaintEvent* event)
{
    QToolButton::paintEvent(event);
    if (!icon().isNull())
        return;
    QPainter painter(this);
    painter.translate(QRectF(rect()).center());
    painter.setPen(QPen(palette().color(QPalette::ButtonText), 1.2));
    Looks[m_mark].draw(painter);
}
