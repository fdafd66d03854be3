// Which plugins are enabled for the operator, the modem, the SIM and its group, and what a switch does to the
// set.
#include "CoreTest.h"
#include "PluginContainer/PluginIds.h"
#include "Samples.h"
#include "XFramePlugin/CustomisationKey.h"

class TestCustomisation : public CoreTest
{
    Q_OBJECT

private slots:
    void strongestRuleOfTheShippedFile();
    void rules();
    void wouldChange();
    void deviceSwitch();
    void removedByOperator();

private:
    /// A container over the plugins A to D and the main frame M.
    std::unique_ptr<TestContainer> make(const QByteArray& config)
    {
        const QVector<PluginEntry> entries = {
            {"A", "A", true}, {"B", "B"}, {"C", "C"}, {"D", "D"}, {"M", "M"}};
        return makeContainer(pluginLibraryXml(entries, "M"), config);
    }

    const QVector<Sample> m_samples = samplesIn(SAMPLES "/keys.txt");
};

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

/// The samples are rules, then keys and what they enable.
void TestCustomisation::rules()
{
    service().setSetting("customize", "operator", "northtel");
    const auto container = make(m_samples[0].text);
    const QString base = "A B M"; // what every start begins with
    QCOMPARE(container->enabled().join(' '), base);
    for (const Sample& sample : m_samples.mid(1)) {
        const QString key = QString(sample.firstLine()).section(": ", 0, 0),
                      enabled = QString(sample.firstLine()).section(": ", 1);
        QCOMPARE(container->HasRulesFor(key), enabled != base || key == "Removes");
        container->ApplyCustomizationForDevice("Other"); // leaves nothing behind
        log().clear();
        container->ApplyCustomizationForDevice(key);
        QVERIFY2(container->enabled().join(' ') == enabled, sample.name);
        VERIFY_LOGGED_IN_ORDER(
            "{file}: ApplyCustomizationForDevice: applying customization for device " + key,
            "{time}: {file}: {func}: enabling based on common and operator",
            "{time}: {file}: {func}: enabling from set", "updatePluginInfo: Enabling {*} plugin");
        QCOMPARE(log().count("{time}: {file}: {func}: for device " + key + "!!!"), key.isEmpty() ? 0 : 1);
        QCOMPARE(log().contains("updatePluginInfo: Disabling A plugin"), !enabled.contains("A"));
    }
}

/// Samples give the key in force, the new key, the first change, and a rule; "-" stands for nothing. A is for
/// everyone.
void TestCustomisation::wouldChange()
{
    const QString place = "{file}: IsCustomizationForDevice: ";
    for (const Sample& sample : samplesIn(SAMPLES "/changes.txt")) {
        const QStringList words = QString(sample.firstLine().mid(2)).split(", ");
        const QString none("-"), change = words[2];
        const auto container = make(commonXml({"A"}) + sample.body());
        container->ApplyCustomizationForDevice(words[0] == none ? "" : words[0]);
        const QStringList before = container->enabled();
        log().clear();
        const bool changes = container->IsCustomizationForDevice(words[1] == none ? "" : words[1]);
        QVERIFY2(changes == (change != none) && container->enabled() == before, sample.name);
        const QString missing =
            log().firstMissingInOrder({place + "entered,,,", place + "need to " + change});
        QVERIFY2(missing.isEmpty() == changes && log().count(place + "need to {*}") == changes, sample.name);
    }
}

void TestCustomisation::deviceSwitch()
{
    service().setSetting("customize", "operator", "northtel");
    const auto container = make(m_samples[0].text);
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
    QVERIFY(!log().contains("{file}: loadPlugin: {*}"));
    QVERIFY(!make(ruleXml("device", "", {"C"}))->HasRulesFor("")); // never applied
}

/// No other rule brings back a plugin that the operator's rules remove; the status still names the operator.
void TestCustomisation::removedByOperator()
{
    service().setSetting("customize", "operator", "northtel");
    const auto container = make(m_samples[0].text + ruleXml("GID", "Gold", {"D"}));
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
