#include "SettingsDialog.h"

#include "GeneralSettings.h"
#include "MainWindow.h"
#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/PluginIds.h"
#include "Startup/Startup.h"
#include "WindowSettings.h"
#include "common/ShowInFront.h"
#include "support/Dialog.h"
#include "support/LoadedPage.h"
#include "support/Text.h"

#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr QSize PreferredSize{680, 420};
constexpr QLatin1String DialogName("settingsDialog");
constexpr const char* ClsidProperty = "clsid"; ///< of a page: the plugin that it belongs to

void addTab(QTabWidget* tabs, QWidget* page)
{
    tabs->addTab(page, page->windowTitle());
    QObject::connect(page, &QWidget::windowTitleChanged, tabs,
                     [tabs, page](const QString& title) { tabs->setTabText(tabs->indexOf(page), title); });
}

/// A plugin that is unloaded deletes its page, which also removes the tab.
QTabWidget* makeTabs(MainWindow& window)
{
    auto* tabs = new QTabWidget;
    tabs->setDocumentMode(true);
    tabs->setFocusPolicy(Qt::NoFocus); // its bar takes the focus
    addTab(tabs, new GeneralSettings(window));
    addTab(tabs, new WindowSettings(window));
    IPluginContainer& container = *Startup::GetPluginContainer();
    const QStringList clsids = container.GetSettingsPlugins();
    for (const QString& clsid : clsids) {
        QWidget* const page = buildPage(container, clsid, tabs, PluginIds::SettingsPage);
        if (!page)
            continue;
        addTab(tabs, page);
        page->setProperty(ClsidProperty, clsid);
    }
    return tabs;
}

void chooseTab(QTabWidget* tabs, const QString& clsid)
{
    for (int index = 0; index < tabs->count(); ++index) {
        if (!clsid.isEmpty() && tabs->widget(index)->property(ClsidProperty) == clsid)
            tabs->setCurrentIndex(index);
    }
}

/// The dialog that is open; null without one.
ExtendDialog* openDialog(const MainWindow& window)
{
    const auto dialogs = window.findChildren<ExtendDialog*>(DialogName);
    const auto dialog = std::find_if(dialogs.begin(), dialogs.end(),
                                     [](const ExtendDialog* candidate) { return candidate->isVisible(); });
    return dialog == dialogs.end() ? nullptr : *dialog;
}

/// What the Tab key visits first on a page that need not be visible yet.
QWidget* firstField(const QWidget* page)
{
    for (QWidget* next = page->nextInFocusChain(); next != page; next = next->nextInFocusChain()) {
        if (page->isAncestorOf(next) && (next->focusPolicy() & Qt::TabFocus) && next->isEnabledTo(page) &&
            next->isVisibleTo(page))
            return next;
    }
    return nullptr;
}

} // namespace

void showSettings(MainWindow& window, const QString& shown)
{
    if (ExtendDialog* const open = openDialog(window)) {
        chooseTab(open->findChild<QTabWidget*>(), shown);
        showInFront(open);
        return;
    }
    auto* dialog = new ExtendDialog(&window, Qt::WindowCloseButtonHint, enWidgetNormal);
    dialog->setObjectName(DialogName);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    auto* close = new QPushButton;
    close->setMinimumSize(Look::ButtonSize);
    QObject::connect(close, &QPushButton::clicked, dialog, &QDialog::close);
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    QTabWidget* const tabs = makeTabs(window);
    chooseTab(tabs, shown);
    layout->addWidget(tabs, 1);
    layout->addWidget(close, 0, Qt::AlignRight);
    keepTranslated(dialog, [=] {
        dialog->setWindowTitle(caption("IDS_MENU_SETTINGS").text);
        tabs->setAccessibleName(dialog->windowTitle());
        close->setText(text("IDS_ABOUT_CLOSE"));
    });
    fillDialog(dialog, content, PreferredSize);
    makeResizable(dialog);
    if (QWidget* const field = firstField(tabs->currentWidget()))
        field->setFocus();
    dialog->open();
}
