#pragma once

#include "Situation.h"
#include "support/XmlMenu.h"

#include <QBasicTimer>
#include <QPointer>
#include <QWidget>

#include <optional>

class HeaderBar;
class LanguageSwitch;
class PluginsPage;
class Menus;
class ProblemLine;
class WindowFrame;

/// The main window: a header with the menus, the pages below it, and the status bar at the bottom. The header
/// is part of the title bar unless the desktop frames the window, see FrameStyle. The window can be made
/// compact, which is the application's mini mode. It stores this in the section "mainwindow" of the settings
/// ("compact"), together with the size and position of both forms ("geometry", "compactgeometry") and whether
/// it is maximised ("maximized").
class MainWindow : public QWidget
{
    Q_OBJECT

public:
    /// Also applies the skin.
    /// @param language must outlive the window
    MainWindow(LanguageSwitch& language, QWidget* parent);
    ~MainWindow() override;

    /// A page for a window without any other. The window owns it, even if a layout changes its parent.
    QWidget* pluginsPage() const;

    /// Puts the area with the pages below the header. Delete an earlier area first.
    void setArea(QWidget* area);

    /// Puts the status bar at the bottom. Delete an earlier one first.
    void setStatusBar(QWidget* statusBar);

    /// Shows the attached modems and the current customisation key.
    void showSituation(const Situation& situation);

    /// What was shown last.
    const Situation& situation() const { return m_situation; }

    /// Shows the state of the modem in use in the notification area, and a line if settings cannot be saved.
    void showStatus();

    /// Says in the notification area how many messages are unread.
    void showUnread(int unread);

    /// Shows the window for the first time, unless the desktop has started the application and the user wants it to be in
    /// the notification area. If there is no such area for ten seconds, the window is shown after all.
    void showAtStart();

    /// Shows the window if it is hidden or minimised, in front of others.
    void bringToFront();

    /// Stores size and position for the next start.
    void rememberPlace();

    // ---- What the settings change

    void useLanguage(const QString& code);
    void setCompact(bool isCompact);

    /// Whether the desktop shows the icon in the notification area.
    bool hasTray() const;

    /// Follows Background::isWanted().
    void followBackground();

Q_SIGNALS:
    /// The user wants to see the page of a plugin.
    void pageChosen(const QString& clsid);

    void compactChanged(bool isCompact);

    /// Modems or plugins may have changed.
    void situationChanged();

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool nativeEvent(const QByteArray& type, void* message, long* result) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    MenuCommands commands();
    void quit();
    void hideInTray();
    void hideAndRemember();
    void adaptToForm();
    void adaptHeader();
    void restorePlace();

    LanguageSwitch& m_language;
    HeaderBar* m_header;
    ProblemLine* m_problems;
    Menus* m_menus;
    WindowFrame* m_frame = nullptr; ///< null in the desktop's frame
    Situation m_situation;
    QPointer<PluginsPage> m_pluginsPage;
    std::optional<bool> m_hasSmallHeader;
    bool m_isInTray = false;       ///< hidden, but not closed
    bool m_quitsWhenClosed = true; ///< QGuiApplication::quitOnLastWindowClosed() before that
    QBasicTimer m_waitForTray;
};
