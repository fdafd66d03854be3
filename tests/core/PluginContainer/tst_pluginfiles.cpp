// Reading of the plugin library file and the plugin configuration file, right ones and every kind of wrong
// one.
#include "CoreTest.h"
#include "DataTable.h"
#include "LogOrder.h"
#include "PluginContainer/PluginInfo.h"

#include <QDir>
#include <QXmlStreamReader>

class TestPluginFiles : public CoreTest
{
    Q_OBJECT

private slots:
    void record_data();
    void record();
    void library();
    void configuration_data();
    void configuration();
    void brokenFiles_data();
    void brokenFiles();
    void unreadableFiles();
};

void TestPluginFiles::record_data()
{
    // name, clsid, url, type, and the flags that are set
    const auto row = dataTable<QByteArray, QString>("children", "fields");
    row("all fields",
        "<name>N</name><clsid>C</clsid><url>u</url><active>true</active><type>3</type>"
        "<setting_title>true</setting_title><static>true</static>",
        "N|C|u|3|active static setting");
    row("other order, negative type",
        "<setting_title>true</setting_title><type>-3</type><active>false</active><url>u</url>"
        "<clsid>C</clsid><name>N</name><static>false</static>",
        "N|C|u|-3| setting");
    row("after static", "<clsid>C</clsid><static>true</static><clsid>X</clsid><active>true</active>",
        "|C||0| static");
    row("later child wins", "<clsid>X</clsid><clsid>C</clsid><static/>", "|C||0|");
    row("unknown children", "<icon>i</icon><Name>X</Name><name>N</name><static/>", "N|||0|");
    row("flags are exact, type with tail",
        "<active>True</active><setting_title>1</setting_title><type>12abc</type><static> true</static>",
        "|||0|");
    row("url dot backslash and suffix", "<url>.\\Base.dll</url><static/>", "||Base|0|");
    row("url only the first of each", "<url>.\\.\\Base.dll.dll</url><static/>", "||.\\Base.dll|0|");
    row("url anywhere", "<url>a.dllb.\\c</url><static/>", "||abc|0|");
    row("url made by the first removal", "<url>.d.\\ll</url><static/>", "|||0|");
    row("runs on without static",
        "<name>N</name><clsid>C</clsid><active>true</active></plugin>"
        "<plugin><clsid>D</clsid><url>u</url><static>true</static>",
        "N|D|u|0|active static");
    row("never closed", "<name>N</name></plugin>", "N|||0|");
}

void TestPluginFiles::record()
{
    QFETCH(QByteArray, children);
    const auto container = makeContainer(QByteArray("<l/>"));
    QXmlStreamReader reader("<l><plugin>" + children + "</plugin></l>");
    while (reader.name() != QLatin1String("plugin"))
        reader.readNext();
    const std::unique_ptr<PluginInfo> info(container->readPluginElement(reader));
    const QString flags = QString(info->m_bActive ? "active" : "") + (info->m_bStatic ? " static" : "") +
                          (info->m_bSettingTitle ? " setting" : "");
    const QString type = QString::number(info->m_iType);
    QTEST(QStringList({info->m_strName, info->m_strClsid, info->m_strUrl, type, flags}).join('|'), "fields");
    QVERIFY(!info->m_bLoaded && !info->m_bInitialized && !info->m_bEnabled);
}

void TestPluginFiles::library()
{
    const auto container =
        makeContainer("<anything><mainplugin>X</mainplugin>"
                      "<plugin><name>P</name><clsid>A</clsid><type>1</type><static/></plugin>"
                      "<group><plugin><name>Q</name><clsid>B</clsid><setting_title>true</setting_title>"
                      "<static/></plugin></group>"
                      "<plugin><name>P</name><clsid>C</clsid><type>1</type><static/></plugin>"
                      "<plugin><name>R</name><clsid>A</clsid><type>5</type><static/></plugin>"
                      "<Plugin><clsid>Z</clsid><static/></Plugin>"
                      "<mainplugin>M</mainplugin></anything>");
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

void TestPluginFiles::configuration_data()
{
    // kept: plugins enabled once the rules of "Lume" are applied, and groups
    const auto row = dataTable<QByteArray, QString, QString>("config", "kept", "line");
    const QByteArray commonA = commonXml({"A"});
    row("common", commonXml({"B", "Z", "A"}), "A B",
        "readDeviceElements: common: have to enable Z, but not in list");
    row("common twice", commonA + ruleXml("device", "X", {}) + commonXml({"C"}), "A C",
        "readDeviceElements: common: Enabling need to enable C plugin");
    row("other elements",
        "<Common><item clsid=\"B\"/></Common><x/><common><item/><item clsid=\"A\"/></common><item "
        "clsid=\"C\"/>",
        "A", "{*}");
    row("device removes", commonXml({"A", "B"}) + ruleXml("device", "Lume", {}, {"B", "Y"}), "A",
        "readDeviceElements: Lume: have to disable Y, but not in list");
    row("device, many values", ruleXml("device", "Lume", {"A"}, {"C"}) + ruleXml("device", "Lume", {"B"}),
        "A B", "readDeviceElements: Lume: Disabling need to enable C plugin");
    row("device reads to first closing plugin",
        "<device name=\"Lume\"><plugin><add clsid=\"A\"/></plugin><add clsid=\"B\"/>"
        "<plugin><add clsid=\"C\"/></plugin></device>",
        "A", "{*}");
    row("operator, own", ruleXml("customize", "northtel", {"A", "Z"}), "A",
        "readCustomizeElements: A will be enabled by default");
    row("operator removes", commonXml({"A", "B"}) + ruleXml("customize", "northtel", {}, {"B", "Z"}), "A",
        "readCustomizeElements: Z will be removed");
    row("operator, other", commonA + ruleXml("customize", "Northtel", {"B"}, {"A"}), "A", "{*}");
    row("other operator's elements are skipped",
        "<customize name=\"x\">" + ruleXml("device", "Lume", {"A"}) + "</customize>" + commonXml({"B"}), "B",
        "{*}");
    row("groups", ruleXml("GID", "G2", {"Z"}) + ruleXml("GID", "G1", {}) + ruleXml("GID", "G2", {"A"}),
        "G2 G1 G2", "readDeviceElements: GIDG2: Enabling need to enable A plugin");
    row("IMSI", ruleXml("IMSI", "00101", {"A"}), "",
        "readDeviceElements: IMSI00101: Enabling need to enable A plugin");
}

void TestPluginFiles::configuration()
{
    QFETCH(QByteArray, config);
    QFETCH(QString, line);
    service().setSetting("customize", "operator", "northtel");
    const auto container =
        makeContainer(pluginLibraryXml({{"A", "TestAlpha"}, {"B", "TestBeta"}, {"C", "TestGamma"}}), config);
    container->ApplyCustomizationForDevice("Lume");
    QTEST((container->enabled() + container->GetGIDGroups()).join(' '), "kept");
    VERIFY_LOGGED_IN_ORDER("getDeviceName: m_strCustomizeName =>northtel<=", line,
                           "Parsing " + configFile() + " done... ");
}

void TestPluginFiles::brokenFiles_data()
{
    // Which plugins remain known, or enabled, and where the reader stops.
    const auto row = dataTable<bool, QByteArray, QString, qint64>("isLibrary", "content", "kept", "line");
    const QByteArray library = "<l>\n" + pluginLibraryXml({{"A", "TestAlpha"}}) + '\n';
    row("empty library", true, "", "", 1);
    row("library cut off", true, library, "A", 5);
    row("library with second root", true, library + "</l><l>", "A", 5);
    const QByteArray config = "<config>\n" + commonXml({"A"});
    row("rule cut off", false, config + R"(<device name="Lume"><plugin><add clsid="B"/>)", "A", 2);
    row("common cut off", false, config + R"(<common><item clsid="B"/>)", "AB", 2);
    row("wrong closing tag", false, config + "</comon>" + commonXml({"B"}), "A", 2);
}

void TestPluginFiles::brokenFiles()
{
    QFETCH(bool, isLibrary);
    QFETCH(QByteArray, content);
    QFETCH(qint64, line);
    writeFiles(pluginLibraryXml({{"A", "TestAlpha"}, {"B", "TestBeta"}}), commonXml({"A"}));
    const QString file = isLibrary ? libraryFile() : configFile();
    writeFile(file, content);
    const auto container = openContainer(libraryFile(), configFile());
    QTEST((isLibrary ? container->GetPluginClsidsByType(0) : container->enabled()).join(QString()), "kept");

    const ConfigurationFaultList faults = container->GetConfigurationFaults();
    QCOMPARE(faults.size(), 1);
    QVERIFY(faults[0].kind == ConfigurationFault::Kind::Malformed && faults[0].path == file);
    QCOMPARE(faults[0].line, line);
    QVERIFY(log().contains("Parsing " + file + " done... "));
    // Deliberately different: a space after the first colon, or one after the comma.
    const QString pattern =
        isLibrary ? "Error: %1 in file %2 at line %3,column %4" : "Error:%1 in file %2 at line %3, column %4";
    QCOMPARE(log().lines("Error:{*}"),
             QStringList(pattern.arg(faults[0].message, file).arg(line).arg(faults[0].column)));
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
