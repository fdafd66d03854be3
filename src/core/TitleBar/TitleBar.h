#pragma once

#include "skylume_global.h"

#include <QFrame>
#include <QList>
#include <QPoint>
#include <QPointer>
#include <QRect>

class QLabel;
class QToolButton;
class SystemMenu;
struct TileCell;

/// The title bar of a frameless window: icon, title and the buttons to minimise, maximise, restore and close
/// it. The window is moved by dragging the title bar; a double click maximises or restores it.
///
/// A minimised window is not shown in the task bar: it shrinks to a tile at the bottom of the screen. All
/// title bars of the process share one grid of tiles. It is laid out for the screen of the first window that
/// is minimised and never changes afterwards. With SetMinimizeBehavior(true) the window is hidden instead.
///
/// The buttons are drawn in the colour of their text unless the skin gives them icons (qproperty-icon). They
/// have names for assistive tools, but do not take the keyboard focus.
///
/// Style sheets find the parts by their object names: "Core_ButtonMinimize", "Core_ButtonMaximize",
/// "Core_ButtonRestore", "Core_ButtonClose", "Core_LabelTitleIcon" and "Core_LabelTitle".
///
/// GUI thread only.
class SKYLUME_EXPORT TitleBar : public QFrame
{
    Q_OBJECT

public:
    /// Takes its title from the main frame's string "IDS_XFRAME_TITLE" and the icon of the installation.
    /// Windows can be maximised only if the setting "EnableMaxButton" of the section "system" is "true".
    /// @param parent the window that the bar belongs to; it owns the bar. The second argument is ignored.
    TitleBar(QWidget* parent, int);

    /// Gives back the tile that the window occupies.
    ~TitleBar() override;

    // ---- Appearance

    /// Sets the text of the title label; the window's own title does not change.
    /// @param title plain text
    void SetWindowTitle(QString const& title);

    /// Shows a picture, scaled to fit into w by h pixels with its proportions kept.
    /// @param path a picture file; empty for the application's icon. The label is cleared if it cannot be
    ///             read.
    void setCusTitleBarIcon(QString path, int w, int h);

    void HideAllControl(); ///< hides the icon and all buttons; the title stays
    void ShowAllControl(); ///< shows the icon and the buttons that fit the state of the window

    // These show or hide a part. The maximise button stays hidden while maximising is disabled, the minimise button while
    // the window is a tile.
    void EnableIcon(bool isVisible);
    void EnableMaximizeButton(bool isVisible);
    void EnableMinimizeButton(bool isVisible);
    void EnableCloseButton(bool isVisible);

    void GrayoutCloseButton(bool isEnabled); ///< false greys the button out
    bool IsCloseButtonEnable() const;        ///< whether the close button is not greyed out

    // ---- State of the window

    bool IsMaximized() const { return m_bMaximized; } ///< also true for a tile that was maximised before
    bool IsMinimized() const { return m_bInTile; }    ///< whether the window is a tile

    /// Sets whether the window can be dragged; it can at first.
    void SetMoveable(bool isMoveable) { m_bMoveable = isMoveable; }

    /// Sets whether minimising hides the window instead of making it a tile; false at first.
    void SetMinimizeBehavior(bool hides) { m_bMinimizeHides = hides; }
    bool getMinimizeBehavior() const { return m_bMinimizeHides; } ///< whether minimising hides the window

    /// Sets the window's geometry, in screen coordinates.
    void ShowWindow(QRect& geometry);

    // ---- Tiles

    /// Moves the window to the first free tile, from the bottom left. It stays where it is when none is free.
    void moveToMiniPos();

    /// Changes the buttons to those of a tile. Does nothing when minimising hides the window.
    void setMiniState();

    /// Raises or lowers the occupancy of every tile that a rectangle touches.
    /// @param release true lowers it
    /// @param rect    in screen coordinates
    void setOccupyState(bool release, QRect& rect);

    /// Lowers the occupancy of the tiles that the window touches.
    void ReleaseOccupy();

    // ---- Other windows

    /// Hides every visible top-level widget but this title bar's window and remembers them.
    void HideAllPopupWindow();

    /// Shows the remembered windows that still exist.
    void RestoreAllPopupWindow();

    /// Forgets one of them.
    void DeletePopupWindow(QWidget* widget);

    // ---- System menu, with the entries Move, Restore, Minimize, Size and Maximize

    /// Enables and disables the entries of the window's menu to fit its state. Does nothing unless minimising
    /// hides the window.
    void initSysmenu();

    /// Opens the menu, or swallows the request when the menu was closed by that very click.
    /// @param point in screen coordinates
    void showSystemMenu(QPoint const& point);

    /// As initSysmenu(), for a given menu.
    /// @param menu        handle of a menu of the system
    /// @param isMaximized state to set the entries for
    void SetSysmenuState(unsigned int menu, bool isMaximized);

    /// Whether a point, in coordinates of the title bar, is on the visible icon.
    bool isIconPressed(QPoint const& point) const;

    static int iVerticalCnt;            ///< rows of tiles
    static int iHorizontalCnt;          ///< columns of tiles
    static TileCell** s_ppMatrixOccupy; ///< the rows, the lowest first; null until a window is minimised

public Q_SLOTS:
    void showSmall();   ///< makes the window a tile, or hides it, see SetMinimizeBehavior()
    void showMax();     ///< lets it fill the available area of its screen, unless maximising is disabled
    void showRestore(); ///< restores it; a tile that was maximised before is maximised again

Q_SIGNALS:
    /// For windows that follow the minimising of a dialog; they emit it themselves.
    void minimizedDialog();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void enterEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    Q_DISABLE_COPY_MOVE(TitleBar)

    void makeParts();
    void layOutParts();
    void connectButtons();
    bool hasButtons(const char* function) const;
    QRect availableGeometry() const;

    void leaveTile(bool release);
    void moveWindow(const QPoint& topLeft);
    bool staysAvailable(const QPoint& cursor, const char* function) const;

    QPointer<QToolButton> m_pButtonMinimize;
    QPointer<QToolButton> m_pButtonMaximize;
    QPointer<QToolButton> m_pButtonRestore;
    QPointer<QToolButton> m_pButtonClose;
    QPointer<QLabel> m_pLabelIcon;
    QPointer<QLabel> m_pLabelTitle;
    bool m_bMaximized = false;
    bool m_bInTile = false;
    QRect m_rectNormal; ///< geometry of the window before it was maximised or minimised
    bool m_bPressed = false;
    QPoint m_pointPress; ///< in coordinates of the window
    bool m_bMoveable = true;
    bool m_bMinimizeHides = false;
    bool m_bMaximizeEnabled;
    bool m_bMinimizeShown = true; ///< whether the window has a minimise button when it is no tile
    QList<QPointer<QWidget>> m_listPopups;
    bool m_bMenuShown = false; ///< the next request for the menu only closes it
    bool m_bHoldsTile = false; ///< the grid counts m_rectTile as occupied by this window
    QRect m_rectTile;
    SystemMenu* m_pSystemMenu; ///< owned as a child
};
