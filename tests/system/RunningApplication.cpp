#include "RunningApplication.h"

#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "Startup/Startup.h"

#include <QAction>
#include <QMenu>
#include <QSaveFile>
#include <QtTest>

#include <algorithm>

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

TestHome::TestHome(const QByteArray& settings)
{
    qputenv("QRVL_USER_DIR", m_folder.path().toLocal8Bit());
    QFile file(m_folder.filePath("settings.ini"));
    if (!file.open(QIODevice::WriteOnly) || file.write(settings) != settings.size())
        qFatal("the settings cannot be written");
}

RunningApplication::RunningApplication() = default;
RunningApplication::~RunningApplication() = default;

void RunningApplication::start()
{
    end(); // it still runs if a test has failed early
    m_startup = std::make_unique<Startup>(true);
}

void RunningApplication::end()
{
    m_startup.reset();
    MainFrame::forget();
}

QWidget* RunningApplication::window() const
{
    auto* const mainFrame = Startup::GetMainFrameService();
    return mainFrame ? mainFrame->GetMainWindow() : nullptr;
}

void RunningApplication::simulate(const QByteArray& modems)
{
    const auto write = [&modems] {
        QSaveFile file(QString::fromLocal8Bit(qgetenv("QRVL_USER_DIR")) + "/simulator.ini");
        return file.open(QIODevice::WriteOnly) && file.write(modems) == modems.size() && file.commit();
    };
    // On Windows the file cannot be replaced while the service reads it.
    for (int attempts = 1; !write(); ++attempts) {
        QVERIFY(attempts < 250);
        QTest::qSleep(20);
    }
}

void RunningApplication::choose(const QString& ownName) const
{
    for (QMenu* menu : window()->findChildren<QMenu*>()) {
        emit menu->aboutToShow();
        for (QAction* choice : menu->actions()) {
            if (choice->text() == ownName)
                choice->trigger();
        }
        emit menu->aboutToHide();
    }
    QCoreApplication::processEvents();
}

QObject* RunningApplication::owner(const char* shortcut) const
{
    const auto objects = window()->findChildren<QObject*>();
    const auto has = [shortcut](const QObject* object) {
        return object->property("shortcut").value<QKeySequence>() == QKeySequence(shortcut);
    };
    const auto found = std::find_if(objects.begin(), objects.end(), has);
    return found == objects.end() ? nullptr : *found;
}
