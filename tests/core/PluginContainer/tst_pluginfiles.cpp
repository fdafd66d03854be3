// Reading of the plugin library file and the plugin configuration file, right ones and every kind of wrong
// one.
#include "CoreTest.h"
#include "DataTable.h"
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

private:
    static QStringList clsids(const TestContainer& container);
};

QStringList TestPluginFiles::clsids(const TestContainer& container)
{
    QStringList clsids;
    for (const PluginStatus& status : container.GetPluginStatus())
        clsids.append(status.clsid);
    return clsids;
}

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
    row("flags are exact", "<active>True</active><setting_title>1</setting_title><static> true</static>",
        "|||0|");
    row("type with tail", "<type>12abc</type><static/>", "|||0|");
    row("type too big", "<type>99999999999</type><static/>", "|||0|");
    row("url dot backslash and suffix", "<url>.\\Base.dll</url><static/>", "||Base|0|");
    row("url only the first of each", "<url>.\\.\\Base.dll.dll</url><static/>", "||.\\Base.dll|0|");
    row("url anywhere", "<url>a.dllb.\\c</url><static/>", "||abc|0|");
    row("url made by the first removal", "<url>.d.\\ll</url><static/>", "|||0|");
    row("url suffix in capitals", "<url>Base.DLL</url><static/>", "||Base.DLL|0|");
    row("entities, text sections, beyond Latin-1", "<name>a&amp;<![CDATA[<b>]]>\xD0\x96</name><static/>",
        "a&<b>\xD0\x96|||0|");
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
    QTEST(QStringList(
              {info->m_strName, info->m_strClsid, info->m_strUrl, QString::number(info->m_iType), flags})
              .join('|'),
          "fields");
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
    QCOMPARE(clsids(*container), QStringList({"A", "B", "C", "A"}));
    QCOMPARE(container->GetMainFramePluginName(), QString("M"));
    QCOMPARE(log().lines("{file}: {func}: m_strMainPlugin = {*}").size(), 2);
    QCOMPARE(container->GetPluginType("A"), 5); // the hash holds the later record
    QCOMPARE(container->GetPluginNameByClsid("A"), QString("R"));
    QCOMPARE(container->GetClsidByName("P"), QString("C")); // the last of that name
    QCOMPARE(container->GetPluginClsidsByType(1), QStringList({"A", "C"}));
    QCOMPARE(container->GetSettingsPlugins(), QStringList("B"));
    QVERIFY(log().contains("Parsing " + libraryFile() + " done... "));
}

void TestPluginFiles::configuration_data()
{
    // enabled: after the rules of "Lume" are applied
    const auto row =
        dataTable<QByteArray, QStringList, QStringList, QString>("config", "enabled", "groups", "line");
    const QByteArray commonA = commonXml({"A"});
    row("nothing", "", {}, {}, "{*}");
    row("common", commonXml({"B", "A"}), {"A", "B"}, {},
        "readDeviceElements: common: Enabling need to enable A plugin");
    row("common twice, mixed", commonA + ruleXml("device", "X", {}) + commonXml({"C"}), {"A", "C"}, {},
        "{*}");
    row("common, unknown", commonXml({"A", "Z"}), {"A"}, {},
        "readDeviceElements: common: have to enable Z, but not in list");
    row("other elements", "<Common><item clsid=\"B\"/></Common><x/>" + commonA + "<item clsid=\"C\"/>", {"A"},
        {}, "{*}");
    row("item without clsid", "<common><item/><item clsid=\"A\"/></common>", {"A"}, {}, "{*}");
    row("device removes", commonXml({"A", "B"}) + ruleXml("device", "Lume", {}, {"B", "Y"}), {"A"}, {},
        "readDeviceElements: Lume: have to disable Y, but not in list");
    row("device, disabling line", ruleXml("device", "Lume", {}, {"B"}), {}, {},
        "readDeviceElements: Lume: Disabling need to enable B plugin");
    row("device, many values", ruleXml("device", "Lume", {"A"}) + ruleXml("device", "Lume", {"B", "C"}),
        {"A", "B", "C"}, {}, "{*}");
    row("device reads to first closing plugin",
        "<device name=\"Lume\"><plugin><add clsid=\"A\"/></plugin><add clsid=\"B\"/>"
        "<plugin><add clsid=\"C\"/></plugin></device>",
        {"A"}, {}, "{*}");
    row("operator, own", ruleXml("customize", "northtel", {"A"}), {"A"}, {},
        "readCustomizeElements: A will be enabled by default");
    row("operator removes", commonXml({"A", "B"}) + ruleXml("customize", "northtel", {}, {"B", "Z"}), {"A"},
        {}, "readCustomizeElements: Z will be removed");
    row("operator, other", commonA + ruleXml("customize", "Northtel", {"B"}, {"A"}), {"A"}, {}, "{*}");
    row("groups", ruleXml("GID", "G2", {"Z"}) + ruleXml("GID", "G1", {}) + ruleXml("GID", "G2", {"A"}), {},
        {"G2", "G1", "G2"}, "readDeviceElements: GIDG2: Enabling need to enable A plugin");
    row("IMSI", ruleXml("IMSI", "00101", {"A"}), {}, {},
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
    QTEST(container->enabled(), "enabled");
    QTEST(container->GetGIDGroups(), "groups");
    QVERIFY(log().contains(line));
    QVERIFY(log().contains("getDeviceName: m_strCustomizeName =>northtel<="));
    QVERIFY(log().contains("Parsing " + configFile() + " done... "));
}

void TestPluginFiles::brokenFiles_data()
{
    // Which plugins remain known, and enabled; the reader's text and place.
    const auto row =
        dataTable<bool, QByteArray, QString, QString, qint64>("isLibrary", "content", "kept", "text", "line");
    const QByteArray library = "<l>\n" + pluginLibraryXml({{"A", "TestAlpha"}}) + '\n';
    const QString cut = "Premature end of document.";
    row("empty library", true, "", "", cut, 1);
    row("library cut off", true, library, "A", cut, 5);
    row("library with second root", true, library + "</l><l>", "A", "{*}", 5);
    // The reader decodes ahead: nothing that stands shortly before such bytes is read.
    row("library that is not UTF-8", true, "<l><name>\xC3\x28\xFF</name></l>", "", "{*}", 1);
    QByteArray bomb = "<!DOCTYPE l [<!ENTITY e0 \"0123456789\">";
    for (int i = 1; i < 12; ++i)
        bomb += "<!ENTITY e" + QByteArray::number(i) + " \"" +
                QByteArray("&e" + QByteArray::number(i - 1) + ';').repeated(10) + "\">";
    row("entities that multiply", true, bomb + "]><l>&e11;</l>", "", "{*}", 1);
    const QByteArray config = "<config>\n" + commonXml({"A"});
    row("rule cut off", false, config + R"(<device name="Lume"><plugin><add clsid="B"/>)", "A", cut, 2);
    row("common cut off", false, config + R"(<common><item clsid="B"/>)", "AB", cut, 2);
    row("customize cut off", false, config + "<customize name=\"\"><plugin>", "A", cut, 2);
    row("nested without end", false, config + QByteArray("<n>").repeated(100000), "A", "{*}", 2);
    row("attribute twice", false, config + R"(<device name="a" name="b"/>)" + commonXml({"B"}), "A", "{*}",
        2);
    row("wrong closing tag", false, config + "</comon>" + commonXml({"B"}), "A", "{*}", 2);
}

void TestPluginFiles::brokenFiles()
{
    QFETCH(bool, isLibrary);
    QFETCH(QByteArray, content);
    QFETCH(QString, text);
    QFETCH(qint64, line);
    writeFiles(pluginLibraryXml({{"A", "TestAlpha"}, {"B", "TestBeta"}}), commonXml({"A"}));
    const QString file = isLibrary ? libraryFile() : configFile();
    writeFile(file, content);
    const auto container = openContainer(libraryFile(), configFile());
    QTEST((isLibrary ? clsids(*container) : container->enabled()).join(QString()), "kept");

    const ConfigurationFaultList faults = container->GetConfigurationFaults();
    QCOMPARE(faults.size(), 1);
    QVERIFY(faults[0].kind == ConfigurationFault::Kind::Malformed && faults[0].path == file);
    QCOMPARE(faults[0].line, line);
    const QString place = QString(" in file %1 at line %2").arg(file).arg(line);
    const QString column = QString::number(faults[0].column);
    // Deliberately different: a space after the first colon, or one after the comma.
    if (isLibrary)
        QCOMPARE(log().lines("Error: " + text + place + ",column " + column).size(), 1);
    else
        QCOMPARE(log().lines("Error:" + text + place + ", column " + column).size(), 1);
    QVERIFY(log().contains("Error:{*}" + faults[0].message + place + "{*}"));
    QCOMPARE(log().count("Error:{*}"), 1);
    QVERIFY(log().contains("Parsing " + file + " done... "));
}

void TestPluginFiles::unreadableFiles()
{
    using Kind = ConfigurationFault::Kind;
    for (const Kind kind : {Kind::Missing, Kind::Unreadable}) {
        const auto container = openContainer(libraryFile(), configFile());
        QVERIFY(container->GetPluginStatus().isEmpty());
        QCOMPARE(container->GetMainFramePluginName(), QString());
        const ConfigurationFaultList faults = container->GetConfigurationFaults();
        QCOMPARE(faults.size(), 2);
        for (const ConfigurationFault& fault : faults) {
            const bool isMissing = kind == Kind::Missing;
            QVERIFY(fault.kind == kind && fault.line == 0 && fault.column == 0);
            QCOMPARE(fault.message.isEmpty(), isMissing);
            QCOMPARE(fault.path, &fault == &faults[0] ? libraryFile() : configFile());
            const QString line = isMissing ? "File %1 does not exist" : "Failed to open file %1";
            QCOMPARE(log().count(line.arg(fault.path)), 1);
            QVERIFY(QDir().mkpath(fault.path)); // a folder in place of the file
        }
    }
    QVERIFY(!log().contains("Parsing {*}"));
}

QTEST_GUILESS_MAIN(TestPluginFiles)
#include "tst_pluginfiles.moc"
