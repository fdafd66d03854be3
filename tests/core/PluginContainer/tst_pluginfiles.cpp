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
    void libraryErrors_data();
    void libraryErrors();
    void configuration_data();
    void configuration();
    void configurationErrors_data();
    void configurationErrors();
    void unreadableFiles();
    void hugeLibrary();

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

namespace {

QByteArray validRecord(const QByteArray& clsid)
{
    return "<plugin><clsid>" + clsid + "</clsid><static/></plugin>";
}

} // namespace

void TestPluginFiles::libraryErrors_data()
{
    // the fault's text and place
    const auto row = dataTable<QByteArray, QStringList, QString, QString>("content", "kept", "text", "place");
    const QByteArray good = "<l>\n" + validRecord("A") + '\n';
    row("empty", "", {}, "Premature end of document.", "line 1,column 0");
    row("truncated", good, {"A"}, "Premature end of document.", "line 3,column 0");
    row("second root", good + "</l><l>" + validRecord("B") + "</l>", {"A"}, "{*}", "line 3,column {n}");
    // The reader decodes ahead: nothing that stands close before such bytes is read.
    row("not UTF-8", good + "<name>\xC3\x28\xFF</name></l>", {}, "{*}", "line {n},column {n}");
    QByteArray bomb = "<!DOCTYPE l [<!ENTITY e0 \"0123456789\">";
    for (int i = 1; i < 12; ++i) {
        const QByteArray inner = "&e" + QByteArray::number(i - 1) + ';';
        bomb += "<!ENTITY e" + QByteArray::number(i) + " \"" + inner.repeated(10) + "\">";
    }
    row("entities that multiply", bomb + "]><l>&e11;</l>", {}, "{*}", "line 1,column {n}");
}

void TestPluginFiles::libraryErrors()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, text);
    QFETCH(QString, place);
    const auto container = makeContainer(content);
    QTEST(clsids(*container), "kept");
    QCOMPARE(log().count("Error: " + text + " in file " + libraryFile() + " at " + place), 1);
    QCOMPARE(log().count("Error: {*}"), 1);
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

void TestPluginFiles::configurationErrors_data()
{
    const auto row = dataTable<QByteArray>("tail");
    row("truncated in a rule", R"(<device name="Lume"><plugin><add clsid="B"/>)");
    row("truncated in common", "<common><item clsid=\"B\"/>");
    row("truncated in customize", "<customize name=\"\"><plugin>");
    row("nested without end", QByteArray("<n>").repeated(100000));
    row("attribute twice", R"(<device name="a" name="b"/>)" + commonXml({"C"}));
}

void TestPluginFiles::configurationErrors()
{
    QFETCH(QByteArray, tail);
    writeFiles(pluginLibraryXml({{"A", "TestAlpha"}, {"B", "TestBeta"}, {"C", "TestGamma"}}), {});
    writeFile(configFile(), "<config>\n" + commonXml({"A"}) + tail);
    const auto container = openContainer(libraryFile(), configFile());
    QVERIFY(container->enabled().contains("A"));
    QVERIFY(!container->enabled().contains("C"));
    // No blank after the first colon and one after the comma, other than in the plugin library file.
    QCOMPARE(log().count("Error:{*} in file " + configFile() + " at line 2, column {n}"), 1);
    QCOMPARE(log().count("Error: {*}"), 0);
}

void TestPluginFiles::unreadableFiles()
{
    for (const char* line : {"File %1 does not exist", "Failed to open file %1"}) {
        const auto container = openContainer(libraryFile(), configFile());
        QVERIFY(container->GetPluginStatus().isEmpty());
        QCOMPARE(container->GetMainFramePluginName(), QString());
        for (const QString& file : {libraryFile(), configFile()}) {
            QCOMPARE(log().count(QString(line).arg(file)), 1);
            QVERIFY(QDir().mkpath(file)); // a folder in place of the file
        }
    }
    QVERIFY(!log().contains("Parsing {*}"));
}

void TestPluginFiles::hugeLibrary()
{
    QByteArray xml = "<l><junk>" + QByteArray(30000000, 'x') + "</junk>";
    const int records = 100000;
    for (int i = 0; i < records; ++i)
        xml += "<plugin><name>Name</name><clsid>" + QByteArray::number(i) + "</clsid><url>u" +
               QByteArray(120, 'x') + "</url><static>false</static></plugin>";
    const auto container = makeContainer(xml + "</l>", commonXml({"99999"}));
    QCOMPARE(container->GetPluginStatus().size(), records);
    QCOMPARE(container->GetClsidByName("Name"), QString::number(records - 1));
    QCOMPARE(container->enabled(), QStringList("99999"));
}

QTEST_GUILESS_MAIN(TestPluginFiles)
#include "tst_pluginfiles.moc"
