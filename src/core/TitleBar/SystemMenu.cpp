#include "TitleBar/SystemMenu_p.h"

#include "Change/Change.h"
#include "TitleBar/TitleBar.h"
#include "common/CommonUtils.h"
#include "platform/SystemMenu_p.h"

#include <QMenu>
#include <QWindow>

#include <algorithm>

namespace {

struct EntryText
{
    SystemMenu::Entry entry;
    const char* id; ///< of a string of the main frame
};

constexpr EntryText EntryTexts[] = {
    {SystemMenu::Restore, "IDS_SYSMENU_RESTORE"},   {SystemMenu::Move, "IDS_SYSMENU_MOVE"},
    {SystemMenu::Size, "IDS_SYSMENU_SIZE"},         {SystemMenu::Minimize, "IDS_SYSMENU_MINIMIZE"},
    {SystemMenu::Maximize, "IDS_SYSMENU_MAXIMIZE"},
};

QString textOf(const EntryText& entry)
{
    return Change::tr(QString::fromLatin1(entry.id), QStringLiteral("XFramePlugin"));
}

bool isEnabled(const SystemMenu::States& states, SystemMenu::Entry entry)
{
    return std::any_of(states.begin(), states.end(), [entry](const SystemMenu::EntryState& state) {
        return state.entry == entry && state.isEnabled;
    });
}

} // namespace

SystemMenu::States SystemMenu::statesFor(bool isMaximized, bool isCompact)
{
    const bool fillsScreen = isMaximized && !isCompact;
    const bool isNormal = !isMaximized && !isCompact;
    return {{{Move, !fillsScreen},
             {Restore, fillsScreen},
             {Minimize, true},
             {Size, isNormal},
             {Maximize, isNormal}}};
}

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
    for (const EntryState& state : statesFor(isMaximized, CommonUtils::IsMiniMode()))
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
    const States states = statesFor(isMaximized, CommonUtils::IsMiniMode());
    const QList<QAction*> actions = m_menu->actions();
    for (int i = 0; i < actions.size(); ++i) {
        actions[i]->setText(textOf(EntryTexts[i]));
        actions[i]->setEnabled(isEnabled(states, EntryTexts[i].entry));
    }
    m_menu->popup(point);
}

QMenu* SystemMenu::makeMenu()
{
    auto* menu = new QMenu(&m_titleBar);
    for (const EntryText& text : EntryTexts) {
        QAction* const action = menu->addAction(QString());
        action->setData(text.entry);
        connect(action, &QAction::triggered, this, [this, entry = text.entry] { run(entry); });
    }
    connect(menu, &QMenu::aboutToHide, this, &SystemMenu::closed);
    return menu;
}

void SystemMenu::run(Entry entry)
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
        m_titleBar.showSmall();
        break;
    case Maximize:
        m_titleBar.showMax();
        break;
    case Restore:
        m_titleBar.showRestore();
        break;
    }
}
