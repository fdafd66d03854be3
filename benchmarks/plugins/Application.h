#pragma once

#include "Startup/Startup.h"

#include <QApplication>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>

/// The real application in the process of a benchmark, with an empty home and simulated modems.
class Application
{
public:
    /// @param modems content of the simulator's file; if empty, the modems of the installation
    Application(int& argc, char** argv, const QByteArray& modems = {})
        : m_home(modems)
        , m_application(argc, argv)
        , m_startup(true)
    {
    }

private:
    struct Home
    {
        explicit Home(const QByteArray& modems)
        {
            qputenv("QRVL_USER_DIR", folder.path().toLocal8Bit());
            qputenv("QRVL_BACKEND", "simulator");
            QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false")); // as the launcher does
            QFile file(folder.filePath(QStringLiteral("simulator.ini")));
            if (!modems.isEmpty() &&
                !(file.open(QIODevice::WriteOnly) && file.write(modems) > 0 && file.flush()))
                qFatal("%s cannot be written", qUtf8Printable(file.fileName()));
        }

        const QTemporaryDir folder;
    };

    const Home m_home;
    const QApplication m_application;
    const Startup m_startup;
};
