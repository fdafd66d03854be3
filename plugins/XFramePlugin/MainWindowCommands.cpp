// What the entries of the menus do.
#include "MainWindow.h"

#include "AboutDialog.h"
#include "InstallationDialog.h"
#include "LanguageMenu.h"
#include "SettingsDialog.h"
#include "common/CommonUtils.h"
#include "support/Clsids.h"
#include "support/OtherPlugins.h"

#include <QAction>
#include <QMenu>

namespace {

/// Operators can remove the help page.
void showHelp(MainWindow* window)
{
    if (!showPage(Clsids::Help))
        showInstallation(window);
}

} // namespace

MenuCommands MainWindow::commands()
{
    const auto triggers = [this](auto slot) {
        return [this, slot](QAction* action, const QString&) {
            connect(action, &QAction::triggered, this, slot);
        };
    };
    auto* const languages = new LanguageMenu(this);
    connect(languages, &LanguageMenu::chosen, this, &MainWindow::useLanguage);
    const auto compact = [this](QAction* action, const QString&) {
        action->setCheckable(true);
        action->setChecked(CommonUtils::IsMiniMode());
        connect(action, &QAction::triggered, this, &MainWindow::setCompact);
        connect(this, &MainWindow::compactChanged, action, &QAction::setChecked);
    };
    const auto help = [this](QAction* action, const QString&) {
        action->setShortcut(Qt::Key_F1);
        connect(action, &QAction::triggered, this, [this] { showHelp(this); });
    };
    const auto language = [languages](QAction* action, const QString&) {
        delete action->menu(); // the sub-menu of the file has no entries
        action->setMenu(languages);
    };
    const auto page = [this](QAction* action, const QString& clsid) {
        connect(action, &QAction::triggered, this, [this, clsid] { Q_EMIT pageChosen(clsid); });
    };
    return {
        {QStringLiteral("About"), triggers([this] { showAbout(this); })},
        {QStringLiteral("Compact"), compact},
        {QStringLiteral("Help"), help},
        {QStringLiteral("Installation"), triggers([this] { showInstallation(this); })},
        {QStringLiteral("Language"), language},
        {QStringLiteral("Open"), triggers(&MainWindow::bringToFront)},
        {QStringLiteral("Quit"), triggers(&MainWindow::quit)},
        {QStringLiteral("Settings"), triggers([this] { showSettings(*this); })},
        {QStringLiteral("page:"), page},
    };
}
