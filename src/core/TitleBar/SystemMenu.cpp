#include "TitleBar/SystemMenu_p.h"

#include "Change/Change.h"
#include "TitleBar/TitleBar.h"
#include "common/CommonUtils.h"
#include "platform/SystemMenu_p.h"

#include <QMenu>
#include <QToolButton>
#include <QWindow>

namespace {

using namespace SystemMenuStates;

/// The string of an entry, from the main frame's language files.
QString captionOf(Entry entry)
{
    const char* id = nullptr;
    switch (entry) {
    case Restore:
        id = "IDS_SYSMENU_RESTORE";
        break;
    case Move:
        id = "IDS_SYSMENU_MOVE";
        break;
    case Size:
        id = "IDS_SYSMENU_SIZE";
        break;
    case Minimize:
        id = "IDS_SYSMENU_MINIMIZE";
        break;
    case Maximize:
        id = "IDS_SYSMENU_MAXIMIZE";
        break;
    }
    return Change::tr(QString::fromLatin1(id), QStringLiteral("XFramePlugin"));
}

} // namespace

SystemMenu::SystemMenu(TitleBar* titleBar)
    : QObject(titleBar)
    , m_titleBar(*titleBar)
{
}

void SystemMenu::setNativeStates(bool isMaximized)
{
    if (QWidget* const window = m_titleBar.window(); window->testAttribute(Qt::WA_WState_Created))
        setStates(Platform::systemMenu(window->winId()), isMaximized);
}

void SystemMenu::setStates(void* menu, bool isMaximized)
{
    if (!menu)
        return;
    for (const EntryState& state : of(isMaximized, CommonUtils::IsMiniMode()))
        Platform::enableMenuEntry(menu, state.entry,
                                  state.isEnabled ? Platform::MenuEntryEnabled : Platform::MenuEntryGreyed);
}

void SystemMenu::show(const QPoint& point, bool isMaximized)
{
    if (Platform::showSystemMenu(m_titleBar.window()->winId(), point)) {
        Q_EMIT closed();
        return;
    }
    if (!m_menu)
        m_menu = makeMenu();
    const QList<QAction*> actions = m_menu->actions();
    auto action = actions.begin();
    for (const EntryState& state : of(isMaximized, CommonUtils::IsMiniMode())) {
        (*action)->setText(captionOf(state.entry));
        (*action++)->setEnabled(state.isEnabled);
    }
    m_menu->popup(point);
}

QMenu* SystemMenu::makeMenu()
{
    auto* menu = new QMenu(&m_titleBar);
    for (const EntryState& state : of(false, false))
        connect(menu->addAction(QString()), &QAction::triggered, this,
                [this, entry = state.entry] { run(entry); });
    connect(menu, &QMenu::aboutToHide, this, &SystemMenu::closed);
    return menu;
}

void SystemMenu::run(SystemMenuStates::Entry entry)
{
    QWindow* const window = m_titleBar.window()->windowHandle();
    switch (entry) {
    case Size:
        if (window)
            window->startSystemResize(Qt::RightEdge | Qt::BottomEdge);
        break;
    case Move:
        if (window)
            window->startSystemMove();
        break;
    case Minimize:
        // What the button does; a main window may have connected it to something other than showSmall().
        if (auto* const button = m_titleBar.findChild<QToolButton*>(QStringLiteral("Core_ButtonMinimize")))
            button->click();
        break;
    case Maximize:
        m_titleBar.showMax();
        break;
    case Restore:
        m_titleBar.showRestore();
        break;
    }
}
