#pragma once

#include <QPointer>
#include <QWidget>

class HeaderBar;
class LanguageSwitch;
class PluginsPage;
class QMenu;
struct Situation;

/// The main window: a header with the menus, below it the area of the pages, and at the bottom the status
/// bar. It can be made compact, which is the application's mini mode. In the section "mainwindow" of the
/// settings it remembers that ("compact") and, for both forms, its size and place ("geometry",
/// "compactgeometry").
class MainWindow : public QWidget
{
    Q_OBJECT

public:
    /// Also applies the skin.
    /// @param language must outlive the window
    MainWindow(LanguageSwitch& language, QWidget* parent);
    ~MainWindow() override;

    /// The window's own page. Belongs to the window, wherever a layout puts it.
    QWidget* pluginsPage() const;

    /// Puts the area of the pages below the header. An earlier area must be gone.
    void setArea(QWidget* area);

    /// Puts the status bar at the bottom. An earlier one must be gone.
    void setStatusBar(QWidget* statusBar);

    /// Shows what is attached and which customisation key is in force.
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
