// Which plugins are enabled for the operator, the modem, the SIM and its group, and what a switch does to the
// set.
#include "CoreTest.h"
#include "DataTable.h"
#include "LogOrder.h"
#include "PluginContainer/PluginIds.h"
#include "XFramePlugin/CustomisationKey.h"

class TestCustomisation : public CoreTest
{
    Q_OBJECT

private slots:
    void strongestRuleOfTheShippedFile();
    void rules_data();
    void rules();
    void wouldChange_data();
    void wouldChange();
    void deviceSwitch();
    void removedByOperator();

private:
    std::unique_ptr<TestContainer> make(const QByteArray& config);
};

namespace {

/// A and B for everybody; rules for two modems, SIMs and a group.
QByteArray mixedRules()
{
    return commonXml({"A", "B"}) + ruleXml("customize", "northtel", {"M"}, {"D"}) +
           ruleXml("device", "Lume", {"C", "B"}, {"B"}) + ruleXml("device", "Other", {"C"}) +
           ruleXml("device", "Removes", {}, {"C"}) + ruleXml("IMSI", "001", {"C"}) +
           ruleXml("IMSI", "00101", {}, {"A"}) + ruleXml("GID", "Gold", {"C"}, {"A"});
}

} // namespace

/// A container over the plugins A to D and the main frame M.
std::unique_ptr<TestContainer> TestCustomisation::make(const QByteArray& config)
{
    const QVector<PluginEntry> entries = {{"A", "A"}, {"B", "B"}, {"C", "C"}, {"D", "D"}, {"M", "M"}};
    return makeContainer(pluginLibraryXml(entries, "M"), config);
}

/// The IMSI rule changes nothing for this operator. It is preferred to the rule of the group all the same.
void TestCustomisation::strongestRuleOfTheShippedFile()
{
    const QString files = SHIPPED_CONFIG;
    service().setSetting("customize", "operator", "bluewave");
    const auto container = openContainer(files + "/pluginslib.xml", files + "/PluginsConfig.xml");
    QVERIFY(container->GetConfigurationFaults().isEmpty());
    const auto keyOf = [&](const char* imsi, const char* gid) {
        return customisationKey(*container, {Modem{1, "Lume X5", imsi, gid, {}, {}}});
    };
    QCOMPARE(keyOf("310260123456789", "BW-BIZ"), QString("IMSI310260123456789"));
    QVERIFY(!container->IsCustomizationForDevice("IMSI310260123456789"));
    QCOMPARE(keyOf("001010123456789", "BW-BIZ"), QString("GIDBW-BIZ"));
    QCOMPARE(keyOf("001010123456789", "none"), QString("Lume X5"));
    QCOMPARE(customisationKey(*container, {}), QString());
    QCOMPARE(container->applied(), 0);
}

void TestCustomisation::rules_data()
{
    const auto row = dataTable<QString, QString>("key", "enabled");
    const QString base = "A B M";
    row("no key: common and operator", "", base);
    row("removes what is not there", "Removes", base);
    row("unknown modem", "Nobody", base);
    row("remove beats add and common", "Lume", "A C M");
    row("modem in other case", "lume", base);
    row("modem name contained only", "Lume V2", base);
    row("group", "GIDGold", "B C M");
    row("longer group", "GIDGolden", base);
    row("one SIM prefix fits", "IMSI001020123456789", "A B C M");
    row("two SIM prefixes fit", "IMSI001010123456789", "B C M");
    row("SIM with the digits inside", "IMSI260010123456789", base);
}

void TestCustomisation::rules()
{
    QFETCH(QString, key);
    QFETCH(QString, enabled);
    service().setSetting("customize", "operator", "northtel");
    const auto container = make(mixedRules());
    const QString base = "A B M"; // what every start begins with
    QCOMPARE(container->enabled().join(' '), base);
    QCOMPARE(container->HasRulesFor(key), enabled != base || key == "Removes");

    container->ApplyCustomizationForDevice("Other"); // leaves nothing behind
    log().clear();
    container->ApplyCustomizationForDevice(key);
    QCOMPARE(container->enabled().join(' '), enabled);
    VERIFY_LOGGED_IN_ORDER("{file}: ApplyCustomizationForDevice: applying customization for device " + key,
                           "{time}: {file}: {func}: enabling based on common and operator",
                           "{time}: {file}: {func}: enabling from set",
                           "updatePluginInfo: Enabling {*} plugin");
    QCOMPARE(log().count("{time}: {file}: {func}: for device " + key + "!!!"), key.isEmpty() ? 0 : 1);
    QCOMPARE(log().contains("updatePluginInfo: Disabling A plugin"), !enabled.contains("A"));
}

void TestCustomisation::wouldChange_data()
{
    const auto row = dataTable<QByteArray, QString, QString, QString>("rule", "inForce", "key", "change");
    const QString enableRule = "enable pPluginInfo->Clsid ()";
    const QString disableRule = "disable pPluginInfo->Clsid ()";
    const QByteArray enables = ruleXml("device", "Lume", {"B"});
    const QByteArray disables = ruleXml("device", "Lume", {}, {"A"});
    row("own rule, applied already", enables, "Lume", "Lume", "");
    row("rule enables", enables, "", "Lume", enableRule);
    row("rule disables", disables, "", "Lume", disableRule);
    row("enabling is found first", ruleXml("device", "Lume", {"B"}, {"A"}), "", "Lume", enableRule);
    row("common comes back", disables, "Lume", "Other", "enable A");
    row("common stays off", disables, "Lume", "Lume", "");
    row("no rule holds it any more", enables, "Lume", "", "disable B");
    row("containment is for SIMs only", enables, "", "Lume V2", "");
    row("SIM prefix enables", ruleXml("IMSI", "001", {"B"}), "", "IMSI00101", enableRule);
    row("prefix does not hold it", ruleXml("IMSI", "001", {"B"}), "IMSI00101", "IMSI00101", "disable B");
    row("prefix keeps nothing off", ruleXml("IMSI", "001", {}, {"A"}), "IMSI00101", "IMSI00101", "enable A");
    row("exact prefix holds", ruleXml("IMSI", "001", {"B"}, {"A"}), "IMSI001", "IMSI001", "");
    row("add and remove", ruleXml("device", "Lume", {"B"}, {"B"}), "Lume", "Lume", enableRule);
}

void TestCustomisation::wouldChange()
{
    QFETCH(QByteArray, rule);
    QFETCH(QString, inForce);
    QFETCH(QString, key);
    QFETCH(QString, change); // the first one; empty when there is none
    const auto container = make(commonXml({"A"}) + rule);
    container->ApplyCustomizationForDevice(inForce);
    const QStringList before = container->enabled();
    log().clear();

    QCOMPARE(container->IsCustomizationForDevice(key), !change.isEmpty());
    QCOMPARE(container->enabled(), before);
    const QString place = "{file}: IsCustomizationForDevice: ";
    QCOMPARE(log().firstMissingInOrder({place + "entered,,,", place + "need to " + change}),
             change.isEmpty() ? place + "need to " : QString());
}

void TestCustomisation::deviceSwitch()
{
    service().setSetting("customize", "operator", "northtel");
    const auto container = make(mixedRules());
    container->ApplyCustomizationForDevice("Lume");
    const int applied = container->applied();
    QStringList enabledNow;
    QStringList disabledNow;
    container->HandleDeviceSwitched("Lume", enabledNow, disabledNow); // no change
    container->HandleDeviceSwitched("GIDGold", enabledNow, disabledNow);
    container->HandleDeviceSwitched("", enabledNow, disabledNow);
    QCOMPARE(enabledNow.join(' '), QString("B A")); // what the lists hold already stays in them
    QCOMPARE(disabledNow.join(' '), QString("A C"));
    QCOMPARE(container->applied(), applied + 3); // a derived container's own version is used
    QVERIFY(container->GetLoadedPluginClsids().isEmpty());
    QVERIFY(!make(ruleXml("device", "", {"C"}))->HasRulesFor("")); // never applied
}

/// No other rule brings back a plugin that the operator's rules remove; the status still names the operator.
void TestCustomisation::removedByOperator()
{
    service().setSetting("customize", "operator", "northtel");
    const auto container = make(mixedRules() + ruleXml("GID", "Gold", {"D"}));
    QVERIFY(log().contains("removed D"));
    container->ApplyCustomizationForDevice("GIDGold");
    QVERIFY(!container->GetPlugin("D", 0) && !container->isPluginInList("D") &&
            container->isPluginInList("A"));
    QCOMPARE(container->GetClsidByName("DPlugin"), QString());
    QCOMPARE(container->GetPluginClsidsByType(0), QStringList({"A", "B", "C", "M"}));

    const QStringList rules = {"None", "Common", "OperatorAdd", "OperatorRemove", "KeyAdd", "KeyRemove"};
    QStringList decisions;
    for (const PluginStatus& status : container->GetPluginStatus())
        decisions.append(status.clsid + ' ' + rules[int(status.rule)] + ' ' + status.key);
    QCOMPARE(decisions.join("; "), QString("A KeyRemove GIDGold; B Common ; C KeyAdd GIDGold; M OperatorAdd "
                                           "northtel; D OperatorRemove northtel"));
}

QTEST_GUILESS_MAIN(TestCustomisation)
#include "tst_customisation.moc"
