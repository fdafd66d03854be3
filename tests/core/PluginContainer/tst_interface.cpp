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

/// Position in the table of virtual operations, as the C++ ABI of gcc and clang keeps it in a pointer to a
/// member: one more than the offset. The two destructor entries come first.
template <typename Member>
int slotOf(Member member)
{
    std::uintptr_t representation = 0;
    std::memcpy(&representation, &member, sizeof representation);
    return representation & 1 ? int(representation / sizeof(void*)) : -1;
}

template <typename... Members>
QVector<int> slotsOf(Members... members)
{
    return {slotOf(members)...};
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
    QCOMPARE(qobject_interface_iid<IBasePlugin*>(), "com.velquor.skylume.plugin.IBasePlugin");
    QCOMPARE(qobject_interface_iid<IDeviceMgr*>(), "com.velquor.skylume.plugin.IDeviceMgr");
    QCOMPARE(qobject_interface_iid<IUIPlugin*>(), "com.velquor.skylume.plugin.IUIPlugin");
    QCOMPARE(qobject_interface_iid<IMainFrameUIService*>(), "com.velquor.skylume.plugin.IMainFrameUIService");
    QCOMPARE(qobject_interface_iid<ILayout*>(), "com.velquor.skylume.plugin.ILayout");
    QCOMPARE(qobject_interface_iid<INotifyService*>(), "com.velquor.skylume.plugin.INotifyService");
    QCOMPARE(qobject_interface_iid<ICallUIPlugin*>(), "com.velquor.skylume.plugin.ICallUIPlugin");
}

namespace {

class PublishingPlugin : public BasePlugin
{
public:
    using BasePlugin::publish;
};

} // namespace

void TestInterface::basePluginAnswersPublishedNumbers()
{
    QObject service;
    PublishingPlugin plugin;
    plugin.publish(0x1001, &service);
    void* out = &out;
    QVERIFY(!plugin.QueryInterface(0x1011, &out));
    QCOMPARE(out, static_cast<void*>(&out));
    QVERIFY(plugin.QueryInterface(0x1001, &out));
    QCOMPARE(static_cast<QObject*>(out), &service);
    QVERIFY(plugin.QueryInterface(0, &out));
    QCOMPARE(static_cast<QObject*>(out), static_cast<QObject*>(&plugin));
    QVERIFY(plugin.Init() != 0);
}

void TestInterface::lineThatIsOffEvaluatesNothing()
{
    int evaluated = 0;
    const auto argument = [&evaluated] {
        return ++evaluated;
    };
    QLoggingCategory::setFilterRules("default.debug=false");
    LOG_DEBUG("%d", argument());
    const int whileOff = evaluated;
    QLoggingCategory::setFilterRules(QString());
    LOG_DEBUG("line %d", argument());
    QCOMPARE(whileOff, 0);
    QCOMPARE(evaluated, 1);
    QCOMPARE(log().lines(QtDebugMsg, "line {n}"), QStringList("line 1"));
}

QTEST_GUILESS_MAIN(TestInterface)
#include "tst_interface.moc"
