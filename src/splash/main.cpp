// XStartScreen PICTURES PLUGINS
//
// Shows the splash screen until its standard input ends or the system asks it to end.
#include "InputEnd.h"
#include "SplashWindow.h"
#include "Startup/SplashDelay.h"

#include <QGuiApplication>
#include <QLoggingCategory>
#include <QTimer>

#include <cstdlib>
#include <memory>

namespace {

constexpr unsigned long LastWait = 100; // milliseconds

void scaleForDenseScreens()
{
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
}

} // namespace

int main(int argc, char** argv)
{
    scaleForDenseScreens();
    QGuiApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        qWarning("usage: XStartScreen PICTURES PLUGINS, the folder of the pictures and the folder of the "
                 "plugins' data");
        return EXIT_FAILURE;
    }
    SplashWindow window(arguments.at(1), SplashText::read(arguments.at(2)));
    QTimer::singleShot(SplashDelay, &window, &QWindow::show);

    auto inputEnd = std::make_unique<InputEnd>();
    QObject::connect(inputEnd.get(), &QThread::finished, &application, &QCoreApplication::quit);
    inputEnd->start();
    const int exitCode = QCoreApplication::exec();
    if (!inputEnd->wait(LastWait))
        static_cast<void>(inputEnd.release()); // still reading
    return exitCode;
}
