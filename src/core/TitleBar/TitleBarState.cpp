// The states of a window with a title bar: normal, maximised, tile; and the windows that hide with it.
#include "TitleBar/TitleBar.h"

#include "TitleBar/TileGrid_p.h"
#include "common/Log.h"

#include <QApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QToolButton>
#include <QWindow>

int TitleBar::iVerticalCnt = 0;
int TitleBar::iHorizontalCnt = 0;
TileCell** TitleBar::s_ppMatrixOccupy = nullptr;

namespace {

/// Shared by all windows; lives as long as the process.
TileGrid& tileGrid()
{
    static TileGrid* const grid = new TileGrid;
    return *grid;
}

void makeTileGrid(const QRect& available, const char* function)
{
    tileGrid() = TileGrid(available);
    TitleBar::iVerticalCnt = tileGrid().rows();
    TitleBar::iHorizontalCnt = tileGrid().columns();
    TitleBar::s_ppMatrixOccupy = tileGrid().matrix();
    if (TitleBar::iVerticalCnt == 0)
        LOG_DEBUG("%s, %s : %s : %d : ZERO_LENGTH_ALLOCATIONS failer", LOG_TIME, LOG_FILE, function,
                  __LINE__);
    else if (TitleBar::iHorizontalCnt == 0)
        LOG_DEBUG("%s, %s : %s: %d:  ZERO_LENGTH_ALLOCATIONS failer", LOG_TIME, LOG_FILE, function, __LINE__);
}

} // namespace

TitleBar::~TitleBar()
{
    if (m_bHoldsTile)
        setOccupyState(true, m_rectTile);
}

void TitleBar::ShowWindow(QRect& geometry)
{
    window()->setGeometry(geometry);
    window()->move(geometry.topLeft());
}

QRect TitleBar::availableGeometry() const
{
    const QWidget* const owner = window();
    const QScreen* screen = owner->windowHandle() ? owner->windowHandle()->screen() : nullptr;
    if (!screen)
        screen = QGuiApplication::screenAt(owner->geometry().center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}

bool TitleBar::hasButtons(const char* function) const
{
    if (m_pButtonMinimize && m_pButtonMaximize && m_pButtonRestore)
        return true;
    LOG_DEBUG("%s, %s : maximize or restore button is null", LOG_FILE, function);
    return false;
}

void TitleBar::showSmall()
{
    LOG_DEBUG("%s, %s : entered", LOG_FILE, LOG_FUNCTION);
    if (m_bMinimizeHides) {
        LOG_DEBUG("%s, %s : hide called", LOG_FILE, LOG_FUNCTION);
        window()->hide();
        return;
    }
    moveToMiniPos();
    setMiniState();
}

void TitleBar::moveToMiniPos()
{
    if (m_bInTile)
        return;
    if (!m_bMaximized)
        m_rectNormal = window()->geometry();
    if (!s_ppMatrixOccupy)
        makeTileGrid(availableGeometry(), LOG_FUNCTION);
    TileCell* const cell = tileGrid().firstFree();
    if (!cell)
        return;
    cell->count = 1;
    cell->window = window();
    m_rectTile = cell->rect;
    m_bInTile = true;
    m_bHoldsTile = true;
    ShowWindow(m_rectTile);
}

void TitleBar::setMiniState()
{
    if (m_bMinimizeHides)
        return;
    if (!m_pButtonRestore) {
        LOG_DEBUG("%s, %s : restore button is null", LOG_FILE, LOG_FUNCTION);
        return;
    }
    if (m_pButtonMinimize)
        m_pButtonMinimize->hide();
    if (m_pButtonRestore->isHidden())
        m_pButtonRestore->show();
    else
        EnableMaximizeButton(true);
}

void TitleBar::setOccupyState(bool release, QRect& rect)
{
    tileGrid().change(release, rect);
}

void TitleBar::ReleaseOccupy()
{
    QRect geometry = window()->geometry();
    setOccupyState(true, geometry);
    m_bHoldsTile = false;
}

void TitleBar::showMax()
{
    if (!hasButtons(LOG_FUNCTION))
        return;
    if (!m_bMaximizeEnabled) {
        LOG_DEBUG("%s, %s : maximize is disabled", LOG_FILE, LOG_FUNCTION);
        return;
    }
    if (!m_bInTile && !m_bMaximized)
        m_rectNormal = window()->geometry();
    m_pButtonMaximize->hide();
    m_pButtonRestore->show();
    leaveTile(!m_bMinimizeHides);
    m_bMaximized = true;
    QRect available = availableGeometry();
    ShowWindow(available);
    initSysmenu();
}

void TitleBar::showRestore()
{
    if (!hasButtons(LOG_FUNCTION))
        return;
    if (m_bMaximized && m_bInTile) {
        showMax();
        return;
    }
    if (m_bMaximized)
        EnableMaximizeButton(true);
    m_pButtonRestore->hide();
    leaveTile(!m_bMinimizeHides && window()->isVisible());
    m_bMaximized = false;
    if (m_rectNormal.isValid())
        ShowWindow(m_rectNormal);
    initSysmenu();
}

/// Ends the state of a tile and shows the button that a tile lacks.
/// @param release whether to give the cell back
void TitleBar::leaveTile(bool release)
{
    if (m_bHoldsTile && release)
        ReleaseOccupy();
    m_bInTile = false;
    EnableMinimizeButton(m_bMinimizeShown);
}

void TitleBar::HideAllPopupWindow()
{
    m_listPopups.clear();
    QList<QPointer<QWidget>> widgets; // hiding one may delete others
    for (QWidget* const widget : QApplication::topLevelWidgets())
        widgets.append(widget);
    for (const QPointer<QWidget>& widget : qAsConst(widgets)) {
        if (!widget || widget == window() || !widget->isVisible())
            continue;
        LOG_DEBUG("%s, %s :hide widget %s during hide main", LOG_FILE, LOG_FUNCTION,
                  qUtf8Printable(widget->objectName()));
        widget->hide();
        m_listPopups.append(widget);
    }
}

void TitleBar::RestoreAllPopupWindow()
{
    const QList<QPointer<QWidget>> popups = m_listPopups; // showing one may change the list
    for (const QPointer<QWidget>& popup : popups)
        if (popup)
            popup->show();
}

void TitleBar::DeletePopupWindow(QWidget* widget)
{
    LOG_DEBUG("%s, %s, %s : Enter", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    if (!widget) {
        LOG_DEBUG("%s, %s, %s : Exit: the widget is null", LOG_TIME, LOG_FILE, LOG_FUNCTION);
        return;
    }
    if (m_listPopups.removeAll(widget) > 0)
        LOG_DEBUG("%s, %s, %s : the widget is deleted from list", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    LOG_DEBUG("%s, %s, %s : Exit", LOG_TIME, LOG_FILE, LOG_FUNCTION);
}
