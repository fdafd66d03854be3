// XStartScreen PICTURES PLUGINS
//
// Shows the splash screen until its standard input ends or the system asks it to end.
#include "InputEnd.h"
#include "SplashWindow.h"

#include <QGuiApplication>
#include <QLoggingCategory>

#include <cstdlib>

static void scaleForDenseScreens()
{
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
}

int main(int argc, char** argv)
{
    scaleForDenseScreens();
    QGuiApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        qWarning(
            "usage: XStartScreen PICTURES PLUGINS, the folder of the pictures and that of the plugins' data");
        return EXIT_FAILURE;
    }
    SplashWindow window(arguments.at(1), SplashText::read(arguments.at(2)));
    window.show();

    // Never deleted: it may still be reading when the process ends.
    auto* inputEnd = new InputEnd;
    QObject::connect(inputEnd, &InputEnd::reached, &application, &QCoreApplication::quit);
    inputEnd->start();
    return QCoreApplication::exec();
}
