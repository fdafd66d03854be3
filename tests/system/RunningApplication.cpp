#include "RunningApplication.h"

#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "common/CommonUtils.h"

#include <QAbstractButton>
#include <QAction>
#include <QLockFile>
#include <QMenu>

namespace {

/// The pointers to the main frame, which Startup leaves when it ends: another start in the same process must not
/// find them.
struct MainFrame : private Startup
{
    static void forget()
    {
        m_pUiPlugin = nullptr;
        m_pUiPluginService = nullptr;
    }
};

} // namespace

void RunningApplication::start()
{
    end(); // it still runs if a test has failed early
    QGuiApplication::setQuitOnLastWindowClosed(false);
    m_startup = std::make_unique<Startup>(true);
}

void RunningApplication::end()
{
    CommonUtils::SetShutDownFlag();
    m_startup.reset();
    CommonUtils::ResetShutDownFlag();
    MainFrame::forget();
}

QWidget* RunningApplication::window() const
{
    auto* const mainFrame = Startup::GetMainFrameService();
    return mainFrame ? mainFrame->GetMainWindow() : nullptr;
}

QWidgetList RunningApplication::windows(const char* className)
{
    QWidgetList found;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->inherits(className) && widget->isVisible())
            found.append(widget);
    return found;
}

QAbstractButton* RunningApplication::titleButton(const QWidget* window, const char* name)
{
    return window->findChild<QAbstractButton*>(QString("Core_Button") + name);
}

void RunningApplication::choose(const QString& entry) const
{
    for (QMenu* menu : window()->findChildren<QMenu*>()) {
        emit menu->aboutToShow();
        for (QAction* action : menu->actions())
            if (action->text() == entry)
                action->trigger();
        emit menu->aboutToHide();
    }
    QCoreApplication::processEvents();
}

void RunningApplication::useSkin(const QByteArray& name) const
{
    const bool isUsual = name.isEmpty() || name == "dark";
    CommonUtils::SetSettings("mainwindow", "dark", name == "dark" ? "true" : "false");
    CommonUtils::SetSettings("MiniSkin", "Name", name);
    for (const bool isCompact : {isUsual, !isUsual}) // there and back, to read the skin
        if (CommonUtils::IsMiniMode() != isCompact)
            QVERIFY(QMetaObject::invokeMethod(owner("Ctrl+M"), "trigger"));
    QCOMPARE(CommonUtils::IsMiniMode(), !isUsual);
}

QObject* RunningApplication::owner(const char* shortcut) const
{
    for (QObject* object : window()->findChildren<QObject*>())
        if (object->property("shortcut").value<QKeySequence>() == QKeySequence(shortcut))
            return object;
    return nullptr;
}
