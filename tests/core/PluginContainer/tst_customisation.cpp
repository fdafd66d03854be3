// Which plugins are enabled for the operator, the modem, the SIM and its group, and what a switch does to the
// set.
#include "CoreTest.h"

#include <tuple>

class TestCustomisation : public CoreTest
{
    Q_OBJECT

private slots:
    void rules_data();
    void rules();
    void wouldChange_data();
    void wouldChange();
    void deviceSwitch_data();
    void deviceSwitch();
    void removedByOperator();
    void ownersAreNamed();
    void liveUpdate();
    void lateEmbeddedPluginsAreUpdatedToo();

private:
    /// A container over the plugins A to D and the main frame M.
    std::unique_ptr<TestContainer> make(const QByteArray& config)
    {
        return makeContainer(pluginLibraryXml({{"A", "TestAlpha", true},
                                               {"B", "TestBeta", true},
                                               {"C", "TestGamma", false, true},
                                               {"D", "TestDelta"},
                                               {"M", "TestMainFrame", true}},
                                              "M"),
                             config);
    }
};

/// A and B for everybody; rules for two modems, SIMs and a group.
static QByteArray mixedRules()
{
    return commonXml({"A", "B"}) + ruleXml("customize", "northtel", {"M"}, {"D"}) +
           ruleXml("device", "Lume", {"C", "B"}, {"B"}) + ruleXml("device", "Other", {"C"}) +
           ruleXml("IMSI", "001", {"C"}) + ruleXml("IMSI", "00101", {}, {"A"}) +
           ruleXml("GID", "Gold", {"C"}, {"A"});
}

void TestCustomisation::rules_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QStringList>("enabled");
    const QStringList base = {"A", "B", "M"};
    QTest::newRow("no key: common and operator") << "" << base;
    QTest::newRow("unknown modem") << "Nobody" << base;
    QTest::newRow("remove beats add and common") << "Lume" << QStringList({"A", "C", "M"});
    QTest::newRow("modem in other case") << "lume" << base;
    QTest::newRow("modem name contained only") << "Lume V2" << base;
    QTest::newRow("group") << "GIDGold" << QStringList({"B", "C", "M"});
    QTest::newRow("group without its prefix") << "Gold" << base;
    QTest::newRow("longer group") << "GIDGolden" << base;
    QTest::newRow("one SIM prefix fits") << "IMSI001020123456789" << QStringList({"A", "B", "C", "M"});
    QTest::newRow("two SIM prefixes fit") << "IMSI001010123456789" << QStringList({"B", "C", "M"});
    QTest::newRow("the prefix itself") << "IMSI00101" << QStringList({"B", "C", "M"});
    QTest::newRow("SIM with the digits inside") << "IMSI260010123456789" << base;
    QTest::newRow("shorter SIM number") << "IMSI00" << base;
    QTest::newRow("SIM prefix in other case") << "imsi00101" << base;
    QTest::newRow("the common key") << "common" << base;
}

void TestCustomisation::rules()
{
    QFETCH(QString, key);
    QFETCH(QStringList, enabled);
    service().setSetting("customize", "operator", "northtel");
    const auto container = make(mixedRules());
    QCOMPARE(container->enabled(), QStringList({"A", "B", "M"})); // what every start begins with

    container->ApplyCustomizationForDevice("Other"); // leaves nothing behind
    log().clear();
    container->ApplyCustomizationForDevice(key);
    QCOMPARE(container->enabled(), enabled);
    QCOMPARE(log().firstMissingInOrder(
                 {"{file}: ApplyCustomizationForDevice: applying customization for device " + key,
                  "{time}: {file}: {func}: enabling based on common and operator",
                  "{time}: {file}: {func}: enabling from set", "updatePluginInfo: Enabling {*} plugin"}),
             QString());
    QCOMPARE(log().count("{time}: {file}: {func}: for device " + key + "!!!"), key.isEmpty() ? 0 : 1);
    for (const char* clsid : {"A", "B"})
        QCOMPARE(log().contains(QString("updatePluginInfo: Disabling %1 plugin").arg(clsid)),
                 !enabled.contains(clsid));
}

void TestCustomisation::wouldChange_data()
{
    QTest::addColumn<QByteArray>("config");
    QTest::addColumn<QString>("inForce");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("line"); // that tells of the first change; empty when there is none
    const QString enableRule = "{file}: {func}: need to enable pPluginInfo->Clsid ()";
    const QString disableRule = "{file}: {func}: need to disable pPluginInfo->Clsid ()";
    const QString enable = "{file}: {func}: need to enable %1";
    const QString disable = "{file}: {func}: need to disable %1";
    const auto row = [](const char* name, const QByteArray& config, const QString& inForce,
                        const QString& key, const QString& line) {
        QTest::newRow(name) << config << inForce << key << line;
    };

    const QByteArray common = commonXml({"A"});
    row("no rules", common, "", "Lume", "");
    row("own rule, applied already", common + ruleXml("device", "Lume", {"B"}), "Lume", "Lume", "");
    row("rule enables", common + ruleXml("device", "Lume", {"B"}), "", "Lume", enableRule);
    row("rule of another modem", common + ruleXml("device", "Other", {"B"}), "", "Lume", "");
    row("rule disables", common + ruleXml("device", "Lume", {}, {"A"}), "", "Lume", disableRule);
    row("enabling is found before disabling", common + ruleXml("device", "Lume", {"B"}, {"A"}), "", "Lume",
        enableRule);
    row("common comes back", common + ruleXml("device", "Lume", {}, {"A"}), "Lume", "Other", enable.arg("A"));
    row("common stays off", common + ruleXml("device", "Lume", {}, {"A"}), "Lume", "Lume", "");
    row("no rule holds it any more", common + ruleXml("device", "Lume", {"B"}), "Lume", "", disable.arg("B"));
    row("SIM prefix enables", common + ruleXml("IMSI", "001", {"B"}), "", "IMSI00101", enableRule);
    row("SIM prefix disables", common + ruleXml("IMSI", "001", {}, {"A"}), "", "IMSI00101", disableRule);
    row("containment is for SIMs only", common + ruleXml("device", "Lume", {"B"}), "", "Lume V2", "");
    row("a prefix does not hold what it enabled", common + ruleXml("IMSI", "001", {"B"}), "IMSI00101",
        "IMSI00101", disable.arg("B"));
    row("a prefix does not keep common off", common + ruleXml("IMSI", "001", {}, {"A"}), "IMSI00101",
        "IMSI00101", enable.arg("A"));
    row("the exact prefix holds", common + ruleXml("IMSI", "001", {"B"}, {"A"}), "IMSI001", "IMSI001", "");
    row("add and remove of one plugin", common + ruleXml("device", "Lume", {"B"}, {"B"}), "Lume", "Lume",
        enableRule);
}

void TestCustomisation::wouldChange()
{
    QFETCH(QByteArray, config);
    QFETCH(QString, inForce);
    QFETCH(QString, key);
    QFETCH(QString, line);
    const auto container = make(config);
    container->ApplyCustomizationForDevice(inForce);
    const QStringList before = container->enabled();
    log().clear();

    QCOMPARE(container->IsCustomizationForDevice(key), !line.isEmpty());
    QCOMPARE(container->enabled(), before);
    QCOMPARE(log().count("{file}: IsCustomizationForDevice: entered,,,"), 1);
    const QStringList told = log().lines("{*}need to {*}");
    QCOMPARE(told.size(), line.isEmpty() ? 0 : 1);
    QVERIFY2(line.isEmpty() || log().contains(line), qUtf8Printable(told.join('\n')));
}

void TestCustomisation::deviceSwitch_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QStringList>("enabledNow");
    QTest::addColumn<QStringList>("disabledNow");
    QTest::newRow("same") << "Lume"
                          << "Lume" << QStringList() << QStringList();
    QTest::newRow("no rules to no rules") << ""
                                          << "Nobody" << QStringList() << QStringList();
    QTest::newRow("both ways") << "Lume"
                               << "GIDGold" << QStringList("B") << QStringList("A");
    QTest::newRow("back to common") << "IMSI001010123456789"
                                    << "" << QStringList("A") << QStringList("C");
    QTest::newRow("only on") << ""
                             << "Other" << QStringList("C") << QStringList();
}

void TestCustomisation::deviceSwitch()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    service().setSetting("customize", "operator", "northtel");
    const auto container = make(mixedRules());
    container->ApplyCustomizationForDevice(from);
    const int applied = container->applied();

    QStringList enabledNow = {"kept"};
    QStringList disabledNow = {"kept"};
    container->HandleDeviceSwitched(to, enabledNow, disabledNow);
    QCOMPARE(container->applied(), applied + 1); // a derived container's own version is used
    QTEST(QStringList(enabledNow.mid(1)), "enabledNow");
    QTEST(QStringList(disabledNow.mid(1)), "disabledNow");
    QVERIFY(container->GetLoadedPluginClsids().isEmpty());

    QStringList none;
    container->HandleDeviceSwitched(to, none, none);
    QVERIFY(none.isEmpty());
}

void TestCustomisation::removedByOperator()
{
    service().setSetting("customize", "operator", "northtel");
    const auto container = make(mixedRules() + ruleXml("device", "Lume", {"D"}));
    QVERIFY(log().contains("removed D"));
    container->ApplyCustomizationForDevice("Lume");
    QCOMPARE(container->GetPluginType("D"), -1);
    QVERIFY(!container->GetPlugin("D", 0));
    QVERIFY(!container->isPluginInList("D"));
    QCOMPARE(container->GetClsidByName("DeltaPlugin"), QString());
    QCOMPARE(container->GetPluginNameByClsid("D"), QString());
    QCOMPARE(container->GetPluginClsidsByType(0), QStringList({"A", "B", "C", "M"}));
}

void TestCustomisation::ownersAreNamed()
{
    service().setSetting("customize", "operator", "northtel");
    const auto container = make(mixedRules());
    container->ApplyCustomizationForDevice("GIDGold");
    using Rule = PluginStatus::Rule;
    const QVector<std::tuple<QString, Rule, QString>> expected = {{"A", Rule::KeyRemove, "GIDGold"},
                                                                  {"B", Rule::Common, ""},
                                                                  {"C", Rule::KeyAdd, "GIDGold"},
                                                                  {"M", Rule::OperatorAdd, "northtel"},
                                                                  {"D", Rule::OperatorRemove, "northtel"}};
    QVector<std::tuple<QString, Rule, QString>> actual;
    for (const PluginStatus& status : container->GetPluginStatus())
        actual.append({status.clsid, status.rule, status.key});
    QCOMPARE(actual, expected);
}

void TestCustomisation::liveUpdate()
{
    const auto container =
        make(commonXml({"A", "B", "D", "M"}) + ruleXml("device", "Lume", {"C"}, {"A", "M"}));
    container->LoadAllStaticOrActivePlugin();
    QVERIFY(container->IsPluginAvailable("A"));
    recorder().reset();
    log().clear();

    container->ApplyCustomizationForDevice("Lume");
    QVERIFY(recorder().names().isEmpty()); // flags only
    container->UpdateAllStaticOrActivePlugins();
    QCOMPARE(recorder().names(), QStringList({"TestAlpha.Destroy", "TestAlpha.destructed",
                                              "TestGamma.constructed", "TestGamma.Init"}));
    QCOMPARE(container->GetLoadedPluginClsids(), QStringList({"B", "C", "M"})); // the main frame stays
    QCOMPARE(log().firstMissingInOrder(
                 {"{file}: UpdateAllStaticOrActivePlugins: Unload plugin AlphaPlugin bUnloaded 1",
                  "{file}: UpdateAllStaticOrActivePlugins: TestGamma to be loaded...",
                  "{file}: UpdateAllStaticOrActivePlugins: Loaded plugin: GammaPlugin.",
                  "{file}: UpdateAllStaticOrActivePlugins: GammaPlugin calling initPlugin"}),
             QString());

    recorder().reset();
    container->ApplyCustomizationForDevice("");
    container->UpdateAllStaticOrActivePlugins();
    container->UpdateAllStaticOrActivePlugins(); // nothing is left to do
    // One pass in file order, so the plugin that comes back is loaded before the other goes.
    QCOMPARE(recorder().names(), QStringList({"TestAlpha.constructed", "TestGamma.Destroy",
                                              "TestGamma.destructed", "TestAlpha.Init"}));
    QVERIFY(!container->IsPluginLoaded("D")); // neither active nor static
}

void TestCustomisation::lateEmbeddedPluginsAreUpdatedToo()
{
    const QString late = "FCDC307E-06DC-4dfa-AC83-834D0E306D48";
    const QString later = "D2AB6727-AF80-4ef7-B37E-F217803B85A4";
    const auto container = makeContainer(QVector<PluginEntry>{
        {late, "TestAlpha", true}, {later, "TestBeta", false, true}, {"C", "TestGamma", true}});
    container->LoadAllStaticOrActivePlugin();
    QCOMPARE(container->GetLoadedPluginClsids(), QStringList("C"));
    QCOMPARE(log().count("{file}: {func}: {*} is not going to be loaded at first..."), 2);
    container->UpdateAllStaticOrActivePlugins();
    QCOMPARE(container->GetLoadedPluginClsids(), QStringList({late, later, "C"}));
}

QTEST_GUILESS_MAIN(TestCustomisation)
#include "tst_customisation.moc"
