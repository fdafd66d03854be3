// Reading of the plugin library file and the plugin configuration file, right ones and every kind of wrong
// one.
#include "CoreTest.h"
#include "PluginContainer/PluginInfo.h"

#include <QDir>
#include <QRandomGenerator>
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
    void unreadableFiles_data();
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
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("fields"); // name, clsid, url, type, and the flags that are set
    const auto row = [](const char* name, const char* children, const char* fields) {
        QTest::newRow(name) << QByteArray("<plugin>") + children + "</plugin>" << QString(fields);
    };
    row("all fields",
        "<name>N</name><clsid>C</clsid><url>u</url><active>true</active><type>3</type>"
        "<setting_title>true</setting_title><static>true</static>",
        "N|C|u|3|active static setting");
    row("other order",
        "<setting_title>true</setting_title><type>-3</type><active>false</active><url>u</url>"
        "<clsid>C</clsid><name>N</name><static>false</static>",
        "N|C|u|-3| setting");
    row("only static", "<static>true</static>", "|||0| static");
    row("after static", "<clsid>C</clsid><static>false</static><clsid>X</clsid><active>true</active>",
        "|C||0|");
    row("later child wins", "<clsid>X</clsid><clsid>C</clsid><static>false</static>", "|C||0|");
    row("unknown children", "<icon>i</icon><Name>X</Name><name>N</name><static/>", "N|||0|");
    row("flags are exact", "<active>True</active><setting_title>1</setting_title><static> true</static>",
        "|||0|");
    row("type is no number", "<type>two</type><static/>", "|||0|");
    row("type with tail", "<type>12abc</type><static/>", "|||0|");
    row("type hexadecimal", "<type>0x10</type><static/>", "|||0|");
    row("type too big", "<type>99999999999</type><static/>", "|||0|");
    row("url dot backslash and suffix", "<url>.\\Base.dll</url><static/>", "||Base|0|");
    row("url bare", "<url>Base</url><static/>", "||Base|0|");
    row("url suffix twice", "<url>Base.dll.dll</url><static/>", "||Base.dll|0|");
    row("url prefix twice", "<url>.\\.\\Base</url><static/>", "||.\\Base|0|");
    row("url anywhere", "<url>a.dllb.\\c</url><static/>", "||abc|0|");
    row("url made by the first removal", "<url>.d.\\ll</url><static/>", "|||0|");
    row("url suffix in capitals", "<url>Base.DLL</url><static/>", "||Base.DLL|0|");
    row("entities and text sections", "<name>a&amp;<![CDATA[<b>]]></name><static/>", "a&<b>|||0|");
    row("outside Latin-1", "<name>\xD0\x96\xF0\x9F\x93\xB6</name><static/>", "\xD0\x96\xF0\x9F\x93\xB6|||0|");
    QTest::newRow("runs on without static")
        << QByteArray("<l><plugin><name>N</name><clsid>C</clsid><active>true</active></plugin>"
                      "<plugin><clsid>D</clsid><url>u</url><static>true</static></plugin></l>")
        << "N|D|u|0|active static";
    QTest::newRow("never closed") << QByteArray("<l><plugin><name>N</name></plugin></l>") << "N|||0|";
}

void TestPluginFiles::record()
{
    QFETCH(QByteArray, xml);
    const auto container = makeContainer(QByteArray("<l/>"));
    QXmlStreamReader reader(xml);
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
                      "<group><plugin><name>Q</name><clsid>B</clsid><setting_title>true</"
                      "setting_title><static/></plugin></group>"
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
    QCOMPARE(container->GetClsidByName("R"), QString("A"));
    QCOMPARE(container->GetPluginClsidsByType(1), QStringList({"A", "C"}));
    QCOMPARE(container->GetSettingsPlugins(), QStringList("B"));
    QVERIFY(log().contains("Parsing " + path("pluginslib.xml") + " done... "));
}

static QByteArray validRecord(const QByteArray& clsid)
{
    return "<plugin><clsid>" + clsid + "</clsid><static/></plugin>";
}

void TestPluginFiles::libraryErrors_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("kept");
    QTest::addColumn<QString>("error"); // between "Error: " and the path, then after it
    const QByteArray good = "<l>\n" + validRecord("A") + '\n';
    QTest::newRow("empty") << QByteArray() << QStringList()
                           << "Premature end of document. at line 1,column 0";
    QTest::newRow("truncated") << good << QStringList("A") << "Premature end of document. at line 3,column 0";
    QTest::newRow("wrong end tag") << good + "</m>" + validRecord("B") << QStringList("A")
                                   << "{*} at line 3,column {n}";
    QTest::newRow("second root") << good + "</l><l>" + validRecord("B") + "</l>" << QStringList("A")
                                 << "{*} at line 3,column {n}";
    // The reader decodes ahead: nothing that stands close before such bytes is read.
    QTest::newRow("not UTF-8") << good + "<name>\xC3\x28\xFF</name></l>" << QStringList()
                               << "{*} at line {n},column {n}";
    QTest::newRow("unknown entity") << good + "&nowhere;</l>" << QStringList("A")
                                    << "{*} at line 3,column {n}";
    QTest::newRow("binary") << QByteArray("\x7F"
                                          "ELF\x02\x01\x01\x00\x00\x00\x00\x00\x00\x3C\x3E",
                                          15)
                            << QStringList() << "{*} at line 1,column {n}";
    QByteArray bomb = "<!DOCTYPE l [<!ENTITY e0 \"0123456789\">";
    for (int i = 1; i < 12; ++i) {
        const QByteArray inner = "&e" + QByteArray::number(i - 1) + ';';
        bomb += "<!ENTITY e" + QByteArray::number(i) + " \"" + inner.repeated(10) + "\">";
    }
    QTest::newRow("entities that multiply")
        << bomb + "]><l>&e11;</l>" << QStringList() << "{*} at line 1,column {n}";
}

void TestPluginFiles::libraryErrors()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, error);
    const auto container = makeContainer(content);
    QTEST(clsids(*container), "kept");
    const QString text = error.section(" at line", 0, 0);
    QCOMPARE(log().count("Error: " + text + " in file " + path("pluginslib.xml") + error.mid(text.size())),
             1);
    QCOMPARE(log().count("Error: {*}"), 1);
}

void TestPluginFiles::configuration_data()
{
    QTest::addColumn<QByteArray>("config");
    QTest::addColumn<QStringList>("enabled"); // after the rules of "Lume" are applied
    QTest::addColumn<QStringList>("groups");
    QTest::addColumn<QString>("line");
    const auto row = [](const char* name, const QByteArray& config, const QStringList& enabled,
                        const QStringList& groups = {}, const QString& line = "{*}") {
        QTest::newRow(name) << config << enabled << groups << line;
    };
    row("nothing", "", {});
    row("common", commonXml({"B", "A"}), {"A", "B"}, {},
        "readDeviceElements: common: Enabling need to enable A plugin");
    row("common twice, mixed", commonXml({"A"}) + ruleXml("device", "X", {}) + commonXml({"C"}), {"A", "C"});
    row("common, unknown", commonXml({"A", "Z"}), {"A"}, {},
        "readDeviceElements: common: have to enable Z, but not in list");
    row("common ends at its tag", commonXml({"A"}) + "<item clsid=\"B\"/>", {"A"});
    row("other elements", "<Common><item clsid=\"A\"/></Common><x/>" + commonXml({"B"}), {"B"});
    row("item without clsid", "<common><item/><item clsid=\"A\"/></common>", {"A"});
    row("device adds", ruleXml("device", "Lume", {"A", "Z"}), {"A"}, {},
        "readDeviceElements: Lume: have to enable Z, but not in list");
    row("device removes", commonXml({"A", "B"}) + ruleXml("device", "Lume", {}, {"B", "Y"}), {"A"}, {},
        "readDeviceElements: Lume: have to disable Y, but not in list");
    row("device, disabling line", ruleXml("device", "Lume", {}, {"B"}), {}, {},
        "readDeviceElements: Lume: Disabling need to enable B plugin");
    row("device, many values", ruleXml("device", "Lume", {"A"}) + ruleXml("device", "Lume", {"B", "C"}),
        {"A", "B", "C"});
    row("device reads to first closing plugin",
        "<device name=\"Lume\"><plugin><add clsid=\"A\"/></plugin><add clsid=\"B\"/>"
        "<plugin><add clsid=\"C\"/></plugin></device>",
        {"A"});
    row("operator, own", ruleXml("customize", "northtel", {"A"}), {"A"}, {},
        "readCustomizeElements: A will be enabled by default");
    row("operator removes", commonXml({"A", "B"}) + ruleXml("customize", "northtel", {}, {"A"}), {"B"}, {},
        "readCustomizeElements: A will be removed");
    row("operator removes unknown", commonXml({"A"}) + ruleXml("customize", "northtel", {}, {"Z"}), {"A"}, {},
        "readCustomizeElements: Z will be removed");
    row("operator, other", commonXml({"A"}) + ruleXml("customize", "Northtel", {"B"}, {"A"}), {"A"});
    row("operator, unnamed",
        commonXml({"A"}) + "<customize><plugin><remove clsid=\"A\"/></plugin></customize>", {"A"});
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
    QVERIFY(log().contains("Parsing " + path("PluginsConfig.xml") + " done... "));
    QVERIFY(log().contains("getDeviceName: m_strCustomizeName =>northtel<="));
}

void TestPluginFiles::configurationErrors_data()
{
    QTest::addColumn<QByteArray>("tail");
    QTest::newRow("truncated in a rule") << QByteArray("<device name=\"Lume\"><plugin><add clsid=\"B\"/>");
    QTest::newRow("truncated in common") << QByteArray("<common><item clsid=\"B\"/>");
    QTest::newRow("truncated in customize") << QByteArray("<customize name=\"\"><plugin>");
    QTest::newRow("wrong end tag") << QByteArray("</x>" + commonXml({"C"}));
    QTest::newRow("nested without end") << QByteArray("<n>").repeated(100000);
    QTest::newRow("attribute twice") << QByteArray("<device name=\"a\" name=\"b\"/>" + commonXml({"C"}));
}

void TestPluginFiles::configurationErrors()
{
    QFETCH(QByteArray, tail);
    writeFile(path("lib.xml"), pluginLibraryXml({{"A", "TestAlpha"}, {"B", "TestBeta"}, {"C", "TestGamma"}}));
    writeFile(path("config.xml"), "<config>\n" + commonXml({"A"}) + tail);
    const auto container = openContainer(path("lib.xml"), path("config.xml"));
    QVERIFY(container->enabled().contains("A"));
    QVERIFY(!container->enabled().contains("C"));
    // No blank after the first colon and one after the comma, other than in the plugin library file.
    QCOMPARE(log().count("Error:{*} in file " + path("config.xml") + " at line 2, column {n}"), 1);
    QCOMPARE(log().count("Error: {*}"), 0);
}

void TestPluginFiles::unreadableFiles_data()
{
    QTest::addColumn<bool>("isFolder");
    QTest::addColumn<QString>("line");
    QTest::newRow("missing") << false << "File %1 does not exist";
    QTest::newRow("a folder") << true << "Failed to open file %1";
}

void TestPluginFiles::unreadableFiles()
{
    QFETCH(bool, isFolder);
    QFETCH(QString, line);
    const QStringList files = {path("lib.xml"), path("config.xml")};
    for (const QString& file : files)
        QVERIFY(!isFolder || QDir().mkpath(file));
    const auto container = openContainer(files[0], files[1]);
    QVERIFY(container->GetPluginStatus().isEmpty());
    QCOMPARE(container->GetMainFramePluginName(), QString());
    for (const QString& file : files)
        QCOMPARE(log().count(line.arg(file)), 1);
    QVERIFY(!log().contains("Parsing {*}"));
}

void TestPluginFiles::hugeLibrary()
{
    QByteArray xml = "<l><junk>" + QByteArray(30000000, 'x') + "</junk>";
    const int records = 100000;
    xml.reserve(60000000);
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
