// How the container learns from the device service which modem is attached.
#include "CoreTest.h"
#include "DataTable.h"
#include "LogOrder.h"
#include "PluginContainer/PluginIds.h"

#include <QElapsedTimer>

#include <atomic>
#include <thread>

class TestDeviceLink : public CoreTest
{
    Q_OBJECT

private slots:
    void deviceName_data();
    void deviceName();
    void earlyEventIsFoundAfterTheLimit();
    void linkOfOneRun();
    void withoutDeviceManager_data();
    void withoutDeviceManager();
    void eventsThatAreIgnored();
    void closing_data();
    void closing();
    void eventsWhileClosing();

private:
    /// The files with the device manager. A is enabled for the modem "Lume", B for the last used one.
    void writeDeviceFiles();

    /// Deleting a derived container at once would race with its configuration thread, hence the plain one.
    template <typename Container = TestContainer>
    std::unique_ptr<Container> make()
    {
        writeDeviceFiles();
        return std::make_unique<Container>(libraryFile(), configFile(), false);
    }
};

namespace {

const QString ManagerId = PluginIds::DeviceManager;

} // namespace

void TestDeviceLink::writeDeviceFiles()
{
    recorder().setAnswer("TestDeviceMgr.GetLastUsedDevice", "Last");
    writeFiles(pluginLibraryXml({{ManagerId, "TestDeviceMgr"}, {"A", "TestAlpha"}, {"B", "TestBeta"}}),
               commonXml({ManagerId}) + ruleXml("device", "Lume", {"A"}) + ruleXml("device", "Last", {"B"}));
}

void TestDeviceLink::deviceName_data()
{
    // early: event during the start of detection, 0 for none; event: that ends the wait
    const auto row =
        dataTable<QStringList, int, int, int, QString>("devices", "early", "event", "listResult", "enabled");
    const int detected = 6606;
    row("one modem", {"Lume"}, 0, detected, 0, "A");
    row("modem without rules", {"Other"}, 0, detected, 0, "");
    row("no modem", {}, 0, detected, 0, "B");
    row("modem without a name", {""}, 0, detected, 0, "B");
    row("two modems", {"Lume", "Lume"}, 0, detected, 0, "B");
    row("detected, then rejected", {"Lume"}, detected, 6016, 0, "B");
    row("detected, then invalid", {"Lume"}, detected, 6601, 0, "B");
    row("rejected, then detected", {"Lume"}, 6016, detected, 0, "A");
    row("list fails", {"Lume"}, 0, detected, 5, "B");
}

void TestDeviceLink::deviceName()
{
    QFETCH(int, early);
    QFETCH(int, event);
    QFETCH(int, listResult);
    QFETCH(QStringList, devices);
    service().setDevices(devices);
    service().setResult("QRVL_DevSrv_GetAvailableDeviceList", listResult);
    recorder().setHook("TestDeviceMgr.StartDetection", [&] { service().fire({early}); });

    const auto container = make();
    QVERIFY(!container->IsPluginsConfigInitialized());
    QVERIFY(wakeDeviceWait({event}));
    QTRY_VERIFY(container->IsPluginsConfigInitialized());
    QFETCH(QString, enabled); // besides the device manager
    QCOMPARE(container->enabled().mid(1).join(' '), enabled);
    const bool isListed = listResult == 0 && (event == 6606 || early == 6606);
    const QString place = "{file}: OnDevMgrEvent: ";
    QCOMPARE(log().contains(place + "strDeviceName = " + devices.value(0)), isListed && devices.size() == 1);
    QCOMPARE(log().contains(place + "QRVL_DevSrv_GetAvailableDeviceList returned device count: " +
                            QString::number(devices.size())),
             isListed && devices.size() != 1);
    QVERIFY(log().contains(place + "entered, enNotifyType = " + QString::number(event)));
    QCOMPARE(
        log().contains(place + "entered, QRVL_EVENT_DEV_REJECT || QRVL_EVENT_DEV_DEVICE_INVALID, wake all"),
        event != 6606 || early == 6016);
    QCOMPARE(log().count("{*} : {file} : getDeviceName : There is no device or more than one device. No "
                         "available device. Get last used "
                         "device: Last"),
             enabled == "B" ? 1 : 0);
}

/// The one test that waits for the limit.
void TestDeviceLink::earlyEventIsFoundAfterTheLimit()
{
    service().setDevices({"Lume"});
    recorder().setHook("TestDeviceMgr.StartDetection", [] { service().fire({6606}); });
    const auto container = make();
    QVERIFY2(!container->IsPluginsConfigInitialized(), "the start must not wait for the modem");
    QVERIFY(log().waitFor("{*}waiting for sdk finished enter"));
    QElapsedTimer timer;
    timer.start();
    QTRY_VERIFY_WITH_TIMEOUT(container->IsPluginsConfigInitialized(), 15000);
    QVERIFY2(timer.elapsed() > 9000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(container->enabled(), QStringList({ManagerId, "A"}));
}

void TestDeviceLink::linkOfOneRun()
{
    for (const QString list : {"DevInitEvent", "DevMgr"}) { // registering for these fails
        recorder().reset();
        service().reset();
        service().setDevices({"Lume"});
        service().setResult("QRVL_DevSrv_Register" + list + "Callback", 5);
        log().clear();
        const auto container = make();
        QVERIFY(log().waitFor("{*}waiting for sdk finished enter"));
        QCOMPARE(service().registrations(), 1);
        QVERIFY2(!container->UnloadPlugin(ManagerId), "it is about to be called");
        QVERIFY(log().contains("{file}: unloadPlugin: plugin DeviceMgrPlugin NOT UNLOADED; in use"));
        QVERIFY(wakeDeviceWait({6606})); // through the other list
        QTRY_VERIFY(container->IsPluginsConfigInitialized());
        QCOMPARE(service().registrations(), 0);
        QCOMPARE(service().calls().filter("QRVL_DevSrv_UnRegister").size(), 2);
        QVERIFY(PluginContainer::m_strDeviceName.isEmpty()); // used once
        QVERIFY(container->UnloadPlugin(ManagerId));

        const QVector<RecordedCall> starts = recorder().calls("TestDeviceMgr.StartDetection");
        QVERIFY(starts.size() == 1 && starts[0].thread != QThread::currentThreadId());
        const QString prefix = "{time}: {file}: getDeviceName ";
        VERIFY_LOGGED_IN_ORDER(
            prefix + "calling registration functions",
            prefix + "register callback failed . " + list + "Error = 5",
            prefix + "calling registration finished", prefix + "waiting for sdk finished enter",
            "{time}: {file}: OnDevMgrEvent called QRVL_DevSrv_GetAvailableDeviceList, 0",
            "{file}: OnDevMgrEvent: entered, QRVL_EVENT_DEV_DETECTED wake all",
            prefix + "waiting for sdk finished exit", prefix + "calling unregistration functions");
        QCOMPARE(log().count("{*}register callback failed{*}"), 1);
    }
}

void TestDeviceLink::withoutDeviceManager_data()
{
    // what the device manager does not answer well
    const auto row = dataTable<QString, QVariant, QString, int>("call", "answer", "warning", "registrations");
    const QString query = "TestDeviceMgr.QueryInterface(0x1001)";
    row("failed to start", "TestDeviceMgr.Init", 0, "init deviceMgr failed", 0);
    row("has no service", query, QVariant::fromValue<QObject*>(nullptr), "get deviceMgr failed", 2);
    row("has another service", query, QVariant::fromValue<QObject*>(this), "get deviceMgr failed", 2);
}

void TestDeviceLink::withoutDeviceManager()
{
    QFETCH(QString, call);
    QFETCH(QVariant, answer);
    QFETCH(QString, warning);
    const QString line = "{file}: getDeviceName: " + warning;
    log().allow(line);
    recorder().setAnswer(call, answer);
    const auto container = make();
    QTRY_VERIFY_WITH_TIMEOUT(container->IsPluginsConfigInitialized(), 3000);
    QCOMPARE(log().lines(QtWarningMsg, line).size(), 1);
    QCOMPARE(container->enabled(), QStringList(ManagerId));
    QTEST(service().calls().filter("QRVL_DevSrv_Register").size(), "registrations");
    QCOMPARE(service().calls().filter("QRVL_DevSrv_UnRegister").size(), 2);
    QVERIFY(recorder().calls("TestDeviceMgr.StartDetection").isEmpty());
}

void TestDeviceLink::eventsThatAreIgnored()
{
    PluginContainer::m_strDeviceName = "kept";
    for (const int type : {0, 6605, 6607, 6600, 6602, 6015, 6017})
        QCOMPARE(PluginContainer::OnDevMgrEvent(type, nullptr), 1);
    service().setResult("QRVL_DevSrv_GetAvailableDeviceList", 4);
    QCOMPARE(PluginContainer::OnDevMgrEvent(6606, this), 1);
    QCOMPARE(PluginContainer::m_strDeviceName, QString("kept"));
    QCOMPARE(log().count("{*}wake all"), 1);

    service().setResult("QRVL_DevSrv_GetAvailableDeviceList", 0);
    const QString accented = QString::fromUtf8("Lum\xC3\xA9 V2");
    service().setDevices({accented});
    PluginContainer::OnDevMgrEvent(6606, nullptr);
    QCOMPARE(PluginContainer::m_strDeviceName, accented);
}

void TestDeviceLink::closing_data()
{
    const auto row = dataTable<QString>("moment"); // the line that is waited for before closing
    row("at once", "{*}");
    row("while registering", "{*}calling registration functions");
    row("while detection starts", "detection starts");
    row("in the wait", "{*}waiting for sdk finished enter");
}

/// Closing does not sit out the limit, and the configuration thread comes to its own end.
void TestDeviceLink::closing()
{
    QFETCH(QString, moment);
    recorder().setHook("TestDeviceMgr.StartDetection", [] {
        qDebug("detection starts");
        QTest::qSleep(50);
    });
    auto container = make<PluginContainer>();
    QVERIFY(log().waitFor(moment));
    QElapsedTimer timer;
    timer.start();
    container.reset();
    QVERIFY2(timer.elapsed() < 2500, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(log().count("{*}calling unregistration functions"), 1);
    QCOMPARE(service().registrations(), 0);
    QCOMPARE(recorder().names({"Destroy", "destructed"}),
             QStringList({"TestDeviceMgr.Destroy", "TestDeviceMgr.destructed"}));
}

void TestDeviceLink::eventsWhileClosing()
{
    service().setDevices({"Lume"});
    std::atomic<bool> isOver{false};
    std::thread modem([&] {
        while (!isOver)
            service().fire({6606, 6016});
    });
    for (int i = 0; i < 5; ++i)
        make<PluginContainer>().reset();
    isOver = true;
    modem.join();
    QCOMPARE(service().registrations(), 0);
    QCOMPARE(recorder().names({"destructed"}).size(), 5);
}

QTEST_GUILESS_MAIN(TestDeviceLink)
#include "tst_devicelink.moc"
