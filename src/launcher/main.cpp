#include "CommandLine.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "SingleInstance.h"
#include "StartReport.h"
#include "Startup/Startup.h"
#include "TerminationSignals.h"
#include "common/CommonUtils.h"
#include "common/GuardedCall.h"
#include "common/RecentLog.h"
#include "common/ShowInFront.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QWidget>

#include <cstdlib>
#include <memory>
#include <optional>

namespace {

void describeApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("skylume"));
    QCoreApplication::setApplicationVersion(QStringLiteral(SKYLUME_VERSION));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Skylume"));
}

// Rules in the environment variable QT_LOGGING_RULES override these.
void configureLogging(bool verbose)
{
    const QString rules = QStringLiteral("default.debug=%1\nskylume.*.debug=%1");
    QLoggingCategory::setFilterRules(rules.arg(verbose ? QStringLiteral("true") : QStringLiteral("false")));
}

/// Null if the main frame has none.
QWidget* mainWindow()
{
    IMainFrameUIService* const service = Startup::GetMainFrame() ? Startup::GetMainFrameService() : nullptr;
    QWidget* window = nullptr;
    if (service)
        guardedCall("GetMainWindow", QStringLiteral("main frame"),
                    [&] { window = service->GetMainWindow(); });
    return window;
}

void raiseMainWindow()
{
    QWidget* const window = mainWindow();
    if (!window)
        return;
    qDebug("Another start brings the window to the front");
    showInFront(window);
}

int runUntilClosed()
{
    StartReport::reportConfigurationFaults();
    if (mainWindow())
        return QCoreApplication::exec();
    Startup::CloseSplashScreen(); // there is no main frame to do it
    StartReport::reportMissingWindow();
    return EXIT_FAILURE;
}

std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv)
{
    if (CommandLine::asksForHelpOrVersion(argc, argv))
        return std::make_unique<QCoreApplication>(argc, argv);
    return std::make_unique<QApplication>(argc, argv);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    // Nothing is drawn with OpenGL, and loading it for the first window would double the start-up time on X11.
    QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets);
    const std::unique_ptr<QCoreApplication> application = makeApplication(argc, argv);
    describeApplication();
    int exitCode = EXIT_SUCCESS;
    const auto commandLine = CommandLine::parse(*application, exitCode);
    if (!commandLine)
        return exitCode;
    configureLogging(commandLine->verbose);
    RecentLog::start();

    std::optional<SingleInstance> instance;
    if (!commandLine->several)
        instance.emplace();
    if (instance && instance->isSecond())
        return EXIT_SUCCESS;
    if (instance)
        instance->onStartOfOther(raiseMainWindow);
    const TerminationSignals terminationSignals;
    auto startup = std::make_unique<Startup>(commandLine->noSplash);
    exitCode = runUntilClosed();
    instance.reset(); // shutting down can take seconds, and this instance can no longer come to the front
    CommonUtils::SetShutDownFlag();
    CommonUtils::WaitThreadsStop(); // before the plugins are unloaded whose code they run
    startup.reset();
    return exitCode;
}
