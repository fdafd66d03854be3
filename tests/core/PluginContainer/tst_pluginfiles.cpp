// Reading of the plugin library file and the plugin configuration file, right ones and every kind of wrong
// one.
#include "CoreTest.h"
#include "PluginContainer/PluginInfo.h"
#include "Samples.h"

#include <QDir>
#include <QXmlStreamReader>

class TestPluginFiles : public CoreTest
{
    Q_OBJECT

private slots:
    void record();
    void library();
    void configuration();
    void brokenFiles();
    void unreadableFiles();
};

/// Samples give name, clsid, url, type and the flags that are set, and the elements of the record.
void TestPluginFiles::record()
{
    const auto container = makeContainer(QByteArray("<l/>"));
    for (const Sample& sample : samplesIn(SAMPLES "/records.txt")) {
        QXmlStreamReader reader("<l><plugin>" + sample.body() + "</plugin></l>");
        while (reader.name() != QLatin1String("plugin"))
            reader.readNext();
        const std::unique_ptr<PluginInfo> info(container->readPluginElement(reader));
        const QString flags = QString(info->m_bActive ? "active" : "") + (info->m_bStatic ? " static" : "") +
                              (info->m_bSettingTitle ? " setting" : "");
        const QStringList fields{info->m_strName, info->m_strClsid, info->m_strUrl,
                                 QString::number(info->m_iType), flags};
        QVERIFY2(sample.firstLine() == "= " + fields.join('|').toUtf8(), sample.name);
        QVERIFY(!info->m_bLoaded && !info->m_bInitialized && !info->m_bEnabled);
    }
}

void TestPluginFiles::library()
{
    const auto container = makeContainer(contentOf(SAMPLES "/library.xml"));
    QCOMPARE(container->GetMainFramePluginName(), QString("M"));
    QCOMPARE(log().lines("{file}: {func}: m_strMainPlugin = {*}").size(), 2);
    QCOMPARE(container->GetPluginNameByClsid("A") + QString::number(container->GetPluginType("A")),
             QString("R5"));                                // the later one
    QCOMPARE(container->GetClsidByName("P"), QString("C")); // the last of that name
    QCOMPARE(container->GetPluginClsidsByType(1).join(' '), QString("A C"));
    QCOMPARE(container->GetPluginClsidsByType(5).join(' '), QString("A"));
    QCOMPARE(container->GetSettingsPlugins().join(' '), QString("B"));
    VERIFY_LOGGED_IN_ORDER("{file}: GetPluginClsidsByType: A type is 1",
                           "{file}: GetSettingsPlugins: B is setting enabled");
    QVERIFY(log().contains("Parsing " + libraryFile() + " done... "));
}

/// Samples give the plugins that are enabled once the rules of "Lume" are applied, the groups, and a line.
void TestPluginFiles::configuration()
{
    service().setSetting("customize", "operator", "northtel");
    const QByteArray library = pluginLibraryXml({{"A", "TestAlpha"}, {"B", "TestBeta"}, {"C", "TestGamma"}});
    for (const Sample& sample : samplesIn(SAMPLES "/rules.txt")) {
        log().clear();
        const auto container = makeContainer(library, sample.body());
        container->ApplyCustomizationForDevice("Lume");
        const QString result = sample.firstLine(), line = result.section("; ", 1),
                      kept = (container->enabled() + container->GetGIDGroups()).join(' ');
        QVERIFY2(result.section("; ", 0, 0) == "= " + kept, sample.name + ": " + kept.toUtf8());
        VERIFY_LOGGED_IN_ORDER("getDeviceName: m_strCustomizeName =>northtel<=",
                               line.isEmpty() ? "{*}" : line, "Parsing " + configFile() + " done... ");
    }
}

/// Samples give the file, which plugins remain known or enabled, and the line where the reader stops.
void TestPluginFiles::brokenFiles()
{
    for (const Sample& sample : samplesIn(SAMPLES "/broken.txt")) {
        const QStringList result = QString(sample.firstLine().mid(2)).split(", ");
        const bool isLibrary = result[0] == "library";
        log().clear();
        writeFiles(pluginLibraryXml({{"A", "TestAlpha"}, {"B", "TestBeta"}}), commonXml({"A"}));
        const QString file = isLibrary ? libraryFile() : configFile();
        writeFile(file, sample.body());
        const auto container = openContainer(libraryFile(), configFile());
        QCOMPARE((isLibrary ? container->GetPluginClsidsByType(0) : container->enabled()).join(""),
                 result[1]);
        const ConfigurationFaultList faults = container->GetConfigurationFaults();
        QCOMPARE(faults.size(), 1);
        QVERIFY(faults[0].kind == ConfigurationFault::Kind::Malformed && faults[0].path == file);
        QCOMPARE(QString::number(faults[0].line), result[2]);
        QVERIFY(log().contains("Parsing " + file + " done... "));
        // Deliberately different: a space after the first colon, or one after the comma.
        const QString pattern = isLibrary ? "Error: %1 in file %2 at line %3,column %4"
                                          : "Error:%1 in file %2 at line %3, column %4";
        QCOMPARE(log().lines("Error:{*}"),
                 QStringList(pattern.arg(faults[0].message, file, result[2]).arg(faults[0].column)));
    }
}

void TestPluginFiles::unreadableFiles()
{
    using Kind = ConfigurationFault::Kind;
    for (const Kind kind : {Kind::Missing, Kind::Unreadable}) {
        const auto container = openContainer(libraryFile(), configFile());
        QVERIFY(container->GetPluginStatus().isEmpty() && container->GetMainFramePluginName().isEmpty());
        QStringList paths;
        for (const ConfigurationFault& fault : container->GetConfigurationFaults()) {
            paths.append(fault.path);
            const bool isMissing = kind == Kind::Missing;
            QVERIFY(fault.kind == kind && fault.line == 0 && fault.column == 0);
            QCOMPARE(fault.message.isEmpty(), isMissing);
            const QString line = isMissing ? "File %1 does not exist" : "Failed to open file %1";
            QCOMPARE(log().count(line.arg(fault.path)), 1);
            QVERIFY(QDir().mkpath(fault.path)); // a folder in place of the file
        }
        QCOMPARE(paths, QStringList({libraryFile(), configFile()}));
    }
    QVERIFY(!log().contains("Parsing {*}"));
}

QTEST_GUILESS_MAIN(TestPluginFiles)
#include "tst_pluginfiles.moc"
