#pragma once

#include "CallRecorder.h"
#include "DataTable.h"
#include "LogCapture.h"
#include "PluginFiles.h"
#include "ScriptedDeviceService.h"
#include "TestContainer.h"
#include "TestFiles.h"

#include <QTemporaryDir>
#include <QtTest>

#include <memory>

/// Fails, showing the first pattern that no log line matches after those of the previous ones.
#define VERIFY_LOGGED_IN_ORDER(...) QCOMPARE(log().firstMissingInOrder({__VA_ARGS__}), QString())

/// Base of the tests of the core library. Every test function begins with fresh stand-ins and an empty log,
/// and fails when a warning or critical line came that it did not allow.
class CoreTest : public QObject
{
    Q_OBJECT

protected:
    /// A container over the files of these paths. Its background configuration is over on return, unless the
    /// library file names a device manager: then it may be waiting for a device event.
    std::unique_ptr<TestContainer> openContainer(const QString& libraryFile, const QString& configFile);

    /// Writes libraryFile() and configFile(); the second text is put into a root element.
    void writeFiles(const QByteArray& libraryXml, const QByteArray& configXml) const;
    QString libraryFile() const { return path("pluginslib.xml"); }
    QString configFile() const { return path("PluginsConfig.xml"); }

    /// openContainer() over files of this content.
    std::unique_ptr<TestContainer> makeContainer(const QByteArray& libraryXml,
                                                 const QByteArray& configXml = {});

    /// makeContainer() with all plugins enabled.
    std::unique_ptr<TestContainer> makeContainer(const QVector<PluginEntry>& entries,
                                                 const QString& mainPlugin = {});

    /// Makes a container the plugin host that the library uses, until the test ends.
    void publish(std::unique_ptr<TestContainer> host);

    static CallRecorder& recorder() { return CallRecorder::instance(); }
    static ScriptedDeviceService& service() { return ScriptedDeviceService::instance(); }
    LogCapture& log() { return *m_log; }
    QString path(const QString& fileName) const { return m_folder->filePath(fileName); }

    /// A file of the installation, the folder of the test program.
    static QString installed(const QString& fileName);

    std::unique_ptr<TestContainer> m_host; ///< ends with the test

protected slots:
    void init(); ///< a test that has more to prepare calls it first
    /// Fails if an unexpected line came; shows the latest lines if the test has failed. A test that has more to
    /// clean up calls it last.
    void cleanup();

private:
    std::unique_ptr<LogCapture> m_log;
    std::unique_ptr<QTemporaryDir> m_folder;
};
