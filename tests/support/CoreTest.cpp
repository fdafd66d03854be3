#include "CoreTest.h"

#include "PluginContainer/PluginIds.h"
#include "Startup/Startup.h"
#include "common/CommonUtils.h"

namespace {

/// Where the library looks for the plugin host.
struct PublishedHost : private Startup
{
    static void set(IPluginContainer* host) { m_pPluginContainer = host; }
};

} // namespace

void CoreTest::init()
{
    recorder().reset();
    service().reset();
    PluginContainer::m_strDeviceName.clear();
    CommonUtils::ResetShutDownFlag();
    CommonUtils::ResetMiniModeFlag();
    CommonUtils::setCloseValue(false);
    CommonUtils::SetFrameStyle(1);
    CommonUtils::SetSMSSeperatorConfigValue(true);
    m_folder = std::make_unique<QTemporaryDir>();
    m_log = std::make_unique<LogCapture>();
    // What every start says: plugins report their initialisation at critical level, most settings are absent,
    // and most tests do without a device manager and a screen.
    m_log->allow("{file}: {func}: base IBasePlugin load success, {*}");
    m_log->allow("{time}: {file}: {func}: QRVL_GetSettings returned 2");
    m_log->allow("{file}: getDeviceName: init deviceMgr failed");
    m_log->allow("This plugin does not support {*}");
}

void CoreTest::cleanup()
{
    recorder().reset();
    publish(nullptr);
    const QStringList lines = m_log->lines(), unexpected = m_log->unexpected();
    m_log.reset();
    if (!QTest::currentTestFailed())
        QVERIFY2(unexpected.isEmpty(), qUtf8Printable(unexpected.join('\n')));
    else
        for (const QString& line : lines.mid(qMax(0, lines.size() - 60)))
            qInfo("log | %s", qUtf8Printable(line));
}

void CoreTest::publish(std::unique_ptr<TestContainer> host)
{
    PublishedHost::set(host.get());
    m_host = std::move(host);
}

QString CoreTest::installed(const QString& fileName)
{
    return QCoreApplication::applicationDirPath() + '/' + fileName;
}

std::unique_ptr<TestContainer> CoreTest::openContainer(const QString& libraryFile, const QString& configFile)
{
    auto container = std::make_unique<TestContainer>(libraryFile, configFile, false);
    const bool mayWaitForDevice = container->GetPluginType(PluginIds::DeviceManager) >= 0;
    if (!mayWaitForDevice && !QTest::qWaitFor([&] { return container->IsPluginsConfigInitialized(); }))
        qFatal("the background configuration does not end");
    return container;
}

void CoreTest::writeFiles(const QByteArray& libraryXml, const QByteArray& configXml) const
{
    writeFile(libraryFile(), libraryXml);
    writeFile(configFile(), "<config>" + configXml + "</config>");
}

std::unique_ptr<TestContainer> CoreTest::makeContainer(const QByteArray& libraryXml,
                                                       const QByteArray& configXml)
{
    writeFiles(libraryXml, configXml);
    return openContainer(libraryFile(), configFile());
}

std::unique_ptr<TestContainer> CoreTest::makeContainer(const QVector<PluginEntry>& entries,
                                                       const QString& mainPlugin)
{
    QStringList clsids;
    for (const PluginEntry& entry : entries)
        clsids += entry.clsid;
    return makeContainer(pluginLibraryXml(entries, mainPlugin), commonXml(clsids));
}
