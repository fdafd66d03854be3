#pragma once

#include <QObject>

#include <array>

class QAction;
class QMenu;
class QPoint;
class TitleBar;

/// The menu behind a window's icon: the system's own where it has one, else one of ours with the same entries.
class SystemMenu : public QObject
{
    Q_OBJECT

public:
    /// Commands of the entries; their numbers are those that Windows uses.
    enum Entry : unsigned int {
        Size = 0xF000,
        Move = 0xF010,
        Minimize = 0xF020,
        Maximize = 0xF030,
        Restore = 0xF120,
    };

    struct EntryState
    {
        Entry entry;
        bool isEnabled;
    };

    using States = std::array<EntryState, 5>;

    /// Which entries a window offers.
    /// @param isCompact whether the application is in mini mode
    static States statesFor(bool isMaximized, bool isCompact);

    explicit SystemMenu(TitleBar* titleBar);

    /// Sets the entries of the menu that the system gives the title bar's window, if there is one.
    void setNativeStates(bool isMaximized);

    /// Sets the entries of a given menu of the system.
    static void setStates(void* menu, bool isMaximized);

    /// Opens the menu.
    /// @param point in screen coordinates
    void show(const QPoint& point, bool isMaximized);

Q_SIGNALS:
    void closed();

private:
    QMenu* makeMenu();
    void run(Entry entry);

    TitleBar& m_titleBar;
    QMenu* m_menu = nullptr; ///< made when it is needed, owned by the title bar
};
