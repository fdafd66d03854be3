// Reading of the plugin library file and the plugin configuration file, right ones and every kind of wrong
// one.
#include "CoreTest.h"
#include "PluginContainer/PluginInfo.h"

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

void TestPluginFiles::record()
{
    const auto container = makeContainer(QByteArray("<l/>"));
    // expected: name, clsid, url, type, and the flags that are set
    const std::pair<QByteArray, QString> rows[] = {
        {"<name>N</name><clsid>C</clsid><url>u</url><active>true</active><type>3</type>"
         "<setting_title>true</setting_title><static>true</static>",
         "N|C|u|3|active static setting"},
        {"<setting_title>true</setting_title><type>-3</type><active>false</active><url>u</url>"
         "<clsid>C</clsid><name>N</name><static>false</static>",
         "N|C|u|-3| setting"},
        {"<clsid>C</clsid><static>true</static><clsid>X</clsid><active>true</active>", "|C||0| static"},
        {"<clsid>X</clsid><clsid>C</clsid><static/>", "|C||0|"},
        {"<icon>i</icon><Name>X</Name><name>N</name><static/>", "N|||0|"},
        {"<active>True</active><setting_title>1</setting_title><type>12abc</type><static> true</static>",
         "|||0|"},
        {"<url>.\\Base.dll</url><static/>", "||Base|0|"},
        {"<url>.\\.\\Base.dll.dll</url><static/>", "||.\\Base.dll|0|"}, // the first of each
        {"<url>.d.\\lla</url><static/>", "||a|0|"},                     // made by the first removal
        {"<name>N</name><clsid>C</clsid><active>true</active></plugin>" // runs on without "static"
         "<plugin><clsid>D</clsid><url>u</url><static>true</static>",
         "N|D|u|0|active static"},
        {"<name>N</name></plugin>", "N|||0|"},
    };
    for (const auto& [children, fields] : rows) {
        QXmlStreamReader reader("<l><plugin>" + children + "</plugin></l>");
        while (reader.name() != QLatin1String("plugin"))
            reader.readNext();
        const std::unique_ptr<PluginInfo> info(container->readPluginElement(reader));
        const QString flags = QString(info->m_bActive ? "active" : "") + (info->m_bStatic ? " static" : "") +
                              (info->m_bSettingTitle ? " setting" : "");
        const QString type = QString::number(info->m_iType);
        QCOMPARE(QStringList({info->m_strName, info->m_strClsid, info->m_strUrl, type, flags}).join('|'),
                 fields);
        QVERIFY(!info->m_bLoaded && !info->m_bInitialized && !info->m_bEnabled);
    }
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

void TestPluginFiles::configuration()
{
    service().setSetting("customize", "operator", "northtel");
    const QString device = "readDeviceElements: ", any = "{*}";
    const QByteArray commonA = commonXml({"A"}), commonAB = commonXml({"A", "B"});
    // expected: plugins enabled once the rules of "Lume" are applied, and groups; a line
    const std::tuple<QByteArray, QString, QString> rows[] = {
        {commonXml({"B", "Z", "A"}), "A B", device + "common: have to enable Z, but not in list"},
        {commonA + ruleXml("device", "X", {}) + commonXml({"C"}), "A C",
         device + "common: Enabling need to enable C plugin"},
        {"<Common><item clsid='B'/></Common><x/><common><item/><item clsid='A'/></common><item clsid='C'/>",
         "A", any},
        {commonAB + ruleXml("device", "Lume", {}, {"B", "Y"}), "A",
         device + "Lume: have to disable Y, but not in list"},
        {ruleXml("device", "Lume", {"A"}, {"C"}) + ruleXml("device", "Lume", {"B"}), "A B",
         device + "Lume: Disabling need to enable C plugin"},
        {"<device name='Lume'><plugin><add clsid='A'/><keep clsid='A'/></plugin>" // to the first end tag
         "<add clsid='B'/><plugin><add clsid='C'/></plugin></device>",
         "A", any},
        {ruleXml("customize", "northtel", {"A", "Z"}), "A",
         "readCustomizeElements: A will be enabled by default"},
        {commonAB + ruleXml("customize", "northtel", {}, {"B", "Z"}), "A",
         "readCustomizeElements: Z will be removed"},
        {commonA + ruleXml("customize", "Northtel", {"B"}, {"A"}), "A", any},
        {"<customize name='x'>" + ruleXml("device", "Lume", {"A"}) + "</customize>" + commonXml({"B"}), "B",
         any},
        {ruleXml("GID", "G2", {"Z"}) + ruleXml("GID", "G1", {}) + ruleXml("GID", "G2", {"A"}), "G2 G1 G2",
         device + "GIDG2: Enabling need to enable A plugin"},
        {ruleXml("IMSI", "00101", {"A"}), "", device + "IMSI00101: Enabling need to enable A plugin"},
    };
    for (const auto& [config, kept, line] : rows) {
        log().clear();
        const auto container = makeContainer(
            pluginLibraryXml({{"A", "TestAlpha"}, {"B", "TestBeta"}, {"C", "TestGamma"}}), config);
        container->ApplyCustomizationForDevice("Lume");
        QCOMPARE((container->enabled() + container->GetGIDGroups()).join(' '), kept);
        VERIFY_LOGGED_IN_ORDER("getDeviceName: m_strCustomizeName =>northtel<=", line,
                               "Parsing " + configFile() + " done... ");
    }
}

void TestPluginFiles::brokenFiles()
{
    const QByteArray library = "<l>\n" + pluginLibraryXml({{"A", "TestAlpha"}}) + '\n';
    const QByteArray config = "<config>\n" + commonXml({"A"});
    // expected: which plugins remain known, or enabled, and where the reader stops
    const std::tuple<bool, QByteArray, QString, qint64> rows[] = {
        {true, "", "", 1},
        {true, library, "A", 5},
        {true, library + "</l><l>", "A", 5},
        {false, config + "<device name='Lume'><plugin><add clsid='B'/>", "A", 2},
        {false, config + "<common><item clsid='B'/>", "AB", 2},
        {false, config + "</comon>" + commonXml({"B"}), "A", 2},
    };
    for (const auto& [isLibrary, content, kept, line] : rows) {
        log().clear();
        writeFiles(pluginLibraryXml({{"A", "TestAlpha"}, {"B", "TestBeta"}}), commonXml({"A"}));
        const QString file = isLibrary ? libraryFile() : configFile();
        writeFile(file, content);
        const auto container = openContainer(libraryFile(), configFile());
        QCOMPARE((isLibrary ? container->GetPluginClsidsByType(0) : container->enabled()).join(""), kept);
        const ConfigurationFaultList faults = container->GetConfigurationFaults();
        QCOMPARE(faults.size(), 1);
        QVERIFY(faults[0].kind == ConfigurationFault::Kind::Malformed && faults[0].path == file);
        QCOMPARE(faults[0].line, line);
        QVERIFY(log().contains("Parsing " + file + " done... "));
        // Deliberately different: a space after the first colon, or one after the comma.
        const QString pattern = isLibrary ? "Error: %1 in file %2 at line %3,column %4"
                                          : "Error:%1 in file %2 at line %3, column %4";
        QCOMPARE(log().lines("Error:{*}"),
                 QStringList(pattern.arg(faults[0].message, file).arg(line).arg(faults[0].column)));
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
