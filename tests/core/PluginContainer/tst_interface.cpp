// What plugins are compiled against: the order of virtual operations, identifiers, numbers.
#include "CoreTest.h"
#include "PluginContainer/BasePlugin.h"
#include "PluginContainer/interfaces/ICallUIPlugin.h"
#include "PluginContainer/interfaces/IDeviceMgr.h"
#include "PluginContainer/interfaces/ILayout.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "PluginContainer/interfaces/INotifyService.h"
#include "PluginContainer/interfaces/IUIPlugin.h"
#include "common/Log.h"

#include <cstring>
#include <numeric>

namespace {

/// Positions in the table of virtual operations, as the C++ ABI of gcc and clang keeps them in pointers to
/// members: one more than the offset. The two destructor entries come first.
template <typename... Members>
QVector<int> slotsOf(Members... members)
{
    const auto slotOf = [](auto member) {
        std::uintptr_t representation = 0;
        std::memcpy(&representation, &member, sizeof representation);
        return int(representation / sizeof(void*));
    };
    return {slotOf(members)...};
}

template <typename... Interfaces>
QStringList identifiersOf()
{
    return {qobject_interface_iid<Interfaces*>()...};
}

} // namespace

class TestInterface : public CoreTest
{
    Q_OBJECT

private slots:
    void slotOrder();
    void identifiers();
    void basePluginAnswersPublishedNumbers();
    void lineThatIsOffEvaluatesNothing();
};

void TestInterface::slotOrder()
{
    using Host = IPluginContainer;
    const QVector<int> positions = slotsOf(
        &Host::Release, &Host::GetLastError, &Host::IsPluginAvailable, &Host::IsPluginLoaded,
        &Host::GetLoadedPluginClsids, &Host::GetPluginClsidsByType, &Host::GetSettingsPlugins,
        &Host::GetPlugin, &Host::GetPluginType, &Host::GetMainFramePluginName,
        &Host::LoadAllStaticOrActivePlugin, &Host::IsCustomizationForDevice, &Host::UnloadPlugin,
        &Host::UnloadAllPlugins, &Host::ApplyCustomizationForDevice, &Host::GetPluginNameByClsid,
        &Host::GetClsidByName, &Host::HandleDeviceSwitched, &Host::DestroyPlugin,
        &Host::IsPluginsConfigInitialized, &Host::StartInitPluginsConfig,
        &Host::UpdateAllStaticOrActivePlugins, &Host::GetGIDGroups, &Host::UnRegisterFormPluginContainer);
    QVector<int> expected(positions.size());
    std::iota(expected.begin(), expected.end(), 2);
    QCOMPARE(positions, expected);
}

void TestInterface::identifiers()
{
    QStringList identifiers = identifiersOf<IBasePlugin, IDeviceMgr, IUIPlugin, IMainFrameUIService, ILayout,
                                            INotifyService, ICallUIPlugin>();
    identifiers.replaceInStrings(QRegularExpression(R"(^com\.velquor\.skylume\.plugin\.)"), "");
    QCOMPARE(
        identifiers.join(' '),
        QString("IBasePlugin IDeviceMgr IUIPlugin IMainFrameUIService ILayout INotifyService ICallUIPlugin"));
}

void TestInterface::basePluginAnswersPublishedNumbers()
{
    struct : BasePlugin
    {
        using BasePlugin::publish;
    } plugin;
    QObject service;
    plugin.publish(0x1001, &service);
    void* out = &out;
    QVERIFY(!plugin.QueryInterface(0x1011, &out) && out == &out);
    QVERIFY(plugin.QueryInterface(0x1001, &out) && out == &service);
    QVERIFY(plugin.QueryInterface(0, &out) && out == static_cast<QObject*>(&plugin));
    QVERIFY(!plugin.QueryInterface(0, nullptr));
    QVERIFY(plugin.Init() != 0);
}

void TestInterface::lineThatIsOffEvaluatesNothing()
{
    int evaluated = 0;
    for (const char* rules : {"default.debug=false", ""}) {
        QLoggingCategory::setFilterRules(rules);
        LOG_DEBUG("line %d", ++evaluated);
    }
    QCOMPARE(log().lines(QtDebugMsg, "line {n}"), QStringList("line 1"));
}

QTEST_GUILESS_MAIN(TestInterface)
#include "tst_interface.moc"
