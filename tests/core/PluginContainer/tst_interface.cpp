// What plugins are compiled against: the order of virtual operations, identifiers, numbers.
#include "CoreTest.h"
#include "PluginContainer/BasePlugin.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/PluginInfo.h"
#include "PluginContainer/interfaces/ICallUIPlugin.h"
#include "PluginContainer/interfaces/IDeviceMgr.h"
#include "PluginContainer/interfaces/ILayout.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "PluginContainer/interfaces/INotifyService.h"
#include "PluginContainer/interfaces/IUIPlugin.h"
#include "common/Log.h"

#include <cstring>

/// Position in the table of virtual operations, as the C++ ABI of gcc and clang keeps it in a pointer to a
/// member: one more than the offset. The two destructor entries come first.
template <typename Member>
static int slotOf(Member member)
{
    std::uintptr_t representation = 0;
    std::memcpy(&representation, &member, sizeof representation);
    return representation & 1 ? int(representation / sizeof(void*)) : -1;
}

class TestInterface : public CoreTest
{
    Q_OBJECT

private slots:
    void slotOrder();
    void identifiers();
    void recordDefaults();
    void fixedAnswers();
    void basePluginAnswersPublishedNumbers();
    void lineThatIsOffEvaluatesNothing();
};

#define OPERATION(name) #name, slotOf(&IPluginContainer::name), slotOf(&PluginContainer::name)

void TestInterface::slotOrder()
{
    struct Row
    {
        const char* name;
        int inInterface;
        int inContainer;
    };
    const Row rows[] = {
        {OPERATION(Release)},
        {OPERATION(GetLastError)},
        {OPERATION(IsPluginAvailable)},
        {OPERATION(IsPluginLoaded)},
        {OPERATION(GetLoadedPluginClsids)},
        {OPERATION(GetPluginClsidsByType)},
        {OPERATION(GetSettingsPlugins)},
        {OPERATION(GetPlugin)},
        {OPERATION(GetPluginType)},
        {OPERATION(GetMainFramePluginName)},
        {OPERATION(LoadAllStaticOrActivePlugin)},
        {OPERATION(IsCustomizationForDevice)},
        {OPERATION(UnloadPlugin)},
        {OPERATION(UnloadAllPlugins)},
        {OPERATION(ApplyCustomizationForDevice)},
        {OPERATION(GetPluginNameByClsid)},
        {OPERATION(GetClsidByName)},
        {OPERATION(HandleDeviceSwitched)},
        {OPERATION(DestroyPlugin)},
        {OPERATION(IsPluginsConfigInitialized)},
        {OPERATION(StartInitPluginsConfig)},
        {OPERATION(UpdateAllStaticOrActivePlugins)},
        {OPERATION(GetGIDGroups)},
        {OPERATION(UnRegisterFormPluginContainer)},
    };
    int expected = 2;
    for (const Row& row : rows) {
        QVERIFY2(row.inInterface == expected && row.inContainer == expected, row.name);
        ++expected;
    }
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

    QCOMPARE(PluginIds::DeviceManager, QLatin1String("8772F2BF-3227-4203-AFDD-DBAD1E9D1F98"));
    QCOMPARE(PluginIds::MainFrame, QLatin1String("D754AE84-535F-4c18-85F8-F154CFE34DDF"));
    QCOMPARE(PluginIds::NotifyService, QLatin1String("C986A689-A5F6-4215-84BD-39BA626F1F57"));
    QCOMPARE(PluginIds::CallUI, QLatin1String("58A0343A-93DB-4ea2-92B4-C51589629381"));
}

void TestInterface::recordDefaults()
{
    const PluginInfo info("Name", "C", "url", 7, true, false, true, true);
    QCOMPARE(QStringList({info.m_strName, info.m_strClsid, info.m_strUrl}),
             QStringList({"Name", "C", "url"}));
    QCOMPARE(info.m_iType, 7);
    QVERIFY(info.m_bActive && !info.m_bStatic && info.m_bSettingTitle && info.m_bLoaded);
    QVERIFY(!info.m_bInitialized && !info.m_bEnabled && !info.m_pPlugin && !info.m_pLoader);
}

void TestInterface::fixedAnswers()
{
    const auto container = makeContainer(QVector<PluginEntry>{{"A", "TestAlpha"}}, "M");
    IPluginContainer& host = *container;
    host.Release();
    QCOMPARE(host.GetLastError(), 0);
    QCOMPARE(host.GetMainFramePluginName(), QString("M"));
}

namespace {

class PublishingPlugin : public BasePlugin
{
public:
    explicit PublishingPlugin(QObject* service) { publish(0x1001, service); }
};

} // namespace

void TestInterface::basePluginAnswersPublishedNumbers()
{
    QObject service;
    PublishingPlugin plugin(&service);
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
