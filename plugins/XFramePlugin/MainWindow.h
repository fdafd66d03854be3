#pragma once

#include <QPointer>
#include <QWidget>

class HeaderBar;
class LanguageSwitch;
class PluginsPage;
class QMenu;
struct Situation;

/// The main window: a header with the menus, the pages below it, and the status bar at the bottom. It can be
/// made compact, which is the application's mini mode. The window stores this in the section "mainwindow" of
/// the settings ("compact"), together with the size and position of both forms ("geometry",
/// "compactgeometry").
class MainWindow : public QWidget
{
    Q_OBJECT

public:
    /// Also applies the skin.
    /// @param language must outlive the window
    MainWindow(LanguageSwitch& language, QWidget* parent);
    ~MainWindow() override;

    /// The page "Plugins". The window owns it, even if a layout changes its parent.
    QWidget* pluginsPage() const;

    /// Puts the area with the pages below the header. Delete an earlier area first.
    void setArea(QWidget* area);

    /// Puts the status bar at the bottom. Delete an earlier one first.
    void setStatusBar(QWidget* statusBar);

    /// Shows the attached modems and the current customisation key.
    void showSituation(const Situation& situation);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void addMenus();
    QMenu* makeMainMenu();
    void useLanguage(const QString& code);
    void setCompact(bool isCompact);
    void adaptToForm();
    void restorePlace();
    void rememberPlace() const;

    LanguageSwitch& m_language;
    HeaderBar* m_header;
    QPointer<PluginsPage> m_pluginsPage;
};
