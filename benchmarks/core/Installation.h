#pragma once

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>

/// The environment of every benchmark of the core: temporary settings, debug lines and warnings disabled,
/// other log lines formatted but not written.
class Installation
{
public:
    Installation()
    {
        qputenv("QRVL_USER_DIR", m_folder.path().toLocal8Bit());
        qputenv("QRVL_DEFAULTS_FILE", path("defaults.ini").toLocal8Bit());
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false\ndefault.warning=false"));
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    }

    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }

    QString write(const char* name, const QByteArray& content) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("Cannot write %s", name);
        return file.fileName();
    }

private:
    QTemporaryDir m_folder;
};

/// The main() of a benchmark: runs all registered benchmarks in a temporary installation.
/// @param prepare called with the installation before the benchmarks run
template <typename Prepare>
int runBenchmarks(int argc, char** argv, Prepare prepare)
{
    const QCoreApplication application(argc, argv);
    const Installation installation;
    prepare(installation);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

inline int runBenchmarks(int argc, char** argv)
{
    return runBenchmarks(argc, argv, [](const Installation&) {});
}
