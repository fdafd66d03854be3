// How the container learns from the device service which modem is attached.
#include "CoreTest.h"
#include "PluginContainer/CInitConfigThread.h"
#include "PluginContainer/PluginIds.h"
#include "Samples.h"

#include <QElapsedTimer>
#include <QSemaphore>

#include <atomic>
#include <thread>

using PluginIds::DeviceManager;

class TestDeviceLink : public CoreTest
{
    Q_OBJECT

private slots:
    void init();
    void deviceName_data();
    void deviceName();
    void earlyEventIsFoundAfterTheLimit();
    void failingRegistrations();
    void withoutDeviceManager();
    void eventsThatAreIgnored();
    void closing();
    void closingDuringLongDetection();
    void closingDuringEndlessDetection();
    void eventsWhileClosing();
};

/// A is enabled for the modem "Lume", B for the last used one.
void TestDeviceLink::init()
{
    CoreTest::init();
    recorder().setAnswer("TestDeviceMgr.Init", -1); // anything but 0 is success
    recorder().setAnswer("TestDeviceMgr.GetLastUsedDevice", "Last");
    recorder().setHook("TestDeviceMgr.GetLastUsedDevice",
                       [] { QVERIFY(!PluginContainer::m_LockStrDevName.tryLock()); });
    writeFiles(pluginLibraryXml({{DeviceManager, "TestDeviceMgr"}, {"A", "TestAlpha"}, {"B", "TestBeta"}}),
               commonXml({DeviceManager}) + ruleXml("device", "Lume", {"A"}) +
                   ruleXml("device", "Last", {"B"}));
}

void TestDeviceLink::deviceName_data()
{
    // early: event during the start of detection; event: that ends the wait; line: logged for it
    const auto row =
        dataTable<QStringList, int, int, QString, QString>("device", "early", "event", "enabled", "line");
    for (const Sample& sample : samplesIn(EVENTS)) {
        const auto text = [&](const char* mark) {
            return sample.marked(mark).value(0);
        };
        row(sample.name, sample.marked("device="), text("early=").toInt(), text("event=").toInt(),
            text("enabled="), text("line="));
    }
}

void TestDeviceLink::deviceName()
{
    QFETCH(QStringList, device);
    QFETCH(int, early);
    QFETCH(int, event);
    QFETCH(QString, enabled); // besides the device manager
    QFETCH(QString, line);
    service().setDevices(device);
    recorder().setHook("TestDeviceMgr.StartDetection", [&] { service().fire({early}); });
    const auto container = openContainer(libraryFile(), configFile());
    QVERIFY(log().waitFor("{*}waiting for sdk finished enter"));
    QCOMPARE(service().registrations(), 2);
    QVERIFY(!container->UnloadPlugin(DeviceManager)); // it is about to be called
    QVERIFY(log().contains("{file}: unloadPlugin: plugin DeviceMgrPlugin NOT UNLOADED; in use"));
    // An event that comes a moment too early is not noticed.
    QTRY_VERIFY(container->IsPluginsConfigInitialized() || (service().fire({event}), false));
    QCOMPARE(service().registrations(), 0);
    QCOMPARE(container->enabled().mid(1).join(' '), enabled);
    QVERIFY(container->UnloadPlugin(DeviceManager));
    QVERIFY(recorder().calls("TestDeviceMgr.StartDetection").value(0).thread != QThread::currentThreadId());
    VERIFY_LOGGED_IN_ORDER("{file}: OnDevMgrEvent: entered, enNotifyType = " + QString::number(event),
                           "{file}: OnDevMgrEvent: " + line);
    const QString lastUsed = "{*} : {file} : getDeviceName : There is no device or more than one device. No "
                             "available device. Get last used device: Last";
    QCOMPARE(log().contains(lastUsed), enabled == "B");
}

/// The one test that waits for the limit.
void TestDeviceLink::earlyEventIsFoundAfterTheLimit()
{
    service().setDevices({"Lume"});
    recorder().setHook("TestDeviceMgr.StartDetection", [] { service().fire({6606}); });
    QElapsedTimer timer;
    timer.start();
    const auto container = openContainer(libraryFile(), configFile());
    QTRY_VERIFY_WITH_TIMEOUT(container->IsPluginsConfigInitialized(), 60000);
    QVERIFY(timer.elapsed() > 9900);
    QCOMPARE(container->enabled().mid(1), QStringList("A"));
    QVERIFY(PluginContainer::m_strDeviceName.isEmpty()); // used once
}

void TestDeviceLink::failingRegistrations()
{
    service().setDevices({"Lume"});
    service().setResult("QRVL_DevSrv_RegisterDevInitEventCallback", 5);
    service().setResult("QRVL_DevSrv_RegisterDevMgrCallback", 6);
    const auto container = openContainer(libraryFile(), configFile());
    QTRY_VERIFY((PluginContainer::OnDevMgrEvent(6606, nullptr), container->IsPluginsConfigInitialized()));
    QCOMPARE(service().calls().filter("QRVL_DevSrv_UnRegister").size(), 2);
    const QString prefix = "{time}: {file}: getDeviceName ";
    VERIFY_LOGGED_IN_ORDER(prefix + "register callback failed . DevInitEventError = 5",
                           prefix + "register callback failed . DevMgrError = 6",
                           prefix + "calling registration finished",
                           "{time}: {file}: OnDevMgrEvent called QRVL_DevSrv_GetAvailableDeviceList, 0",
                           "{file}: OnDevMgrEvent: entered, QRVL_EVENT_DEV_DETECTED wake all",
                           prefix + "waiting for sdk finished exit");
}

void TestDeviceLink::withoutDeviceManager()
{
    // what the device manager does not answer well
    const std::tuple<QString, QVariant, QString, int> rows[] = {
        {"TestDeviceMgr.Init", 0, "init deviceMgr failed", 0},
        {"TestDeviceMgr.QueryInterface(0x1001)", QVariant::fromValue<QObject*>(this), "get deviceMgr failed",
         2}};
    for (const auto& [call, answer, warning, registrations] : rows) {
        const QString line = "{file}: getDeviceName: " + warning;
        log().allow(line);
        recorder().reset();
        recorder().setAnswer(call, answer);
        service().reset();
        const auto container = openContainer(libraryFile(), configFile());
        QTRY_VERIFY_WITH_TIMEOUT(container->IsPluginsConfigInitialized(), 9000);
        QCOMPARE(log().lines(QtWarningMsg, line).size(), 1);
        QCOMPARE(container->enabled(), QStringList(DeviceManager));
        QCOMPARE(service().calls().filter("QRVL_DevSrv_Register").size(), registrations);
        QCOMPARE(service().calls().filter("QRVL_DevSrv_UnRegister").size(), 2);
        QVERIFY(recorder().calls("TestDeviceMgr.StartDetection").isEmpty());
    }
    CInitConfigThread idle; // has no container
    QVERIFY(idle.Init(nullptr));
    idle.start();
    QVERIFY(idle.wait());
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
}

/// Closing does not sit out the limit: the configuration thread comes to its own end.
void TestDeviceLink::closing()
{
    for (const char* moment : {"{*}", "{*}calling registration functions", "detection starts",
                               "{*}waiting for sdk finished enter"}) { // what is waited for before closing
        log().clear();
        QSemaphore closing;
        const int permits = qstrcmp(moment, "{*}waiting for sdk finished enter") == 0 ? 0 : 1;
        recorder().setHook("TestDeviceMgr.StartDetection", [&] {
            qDebug("detection starts");
            closing.tryAcquire(permits, 15000);
        });
        // Not a derived container: deleting that at once would race with its configuration thread.
        auto container = std::make_unique<PluginContainer>(libraryFile(), configFile(), false);
        QVERIFY(log().waitFor(moment));
        closing.release(permits);
        container.reset();
        QCOMPARE(log().count("{*}calling unregistration functions"), 1);
        QCOMPARE(service().registrations(), 0);
    }
    const QString calls = recorder().names({"Destroy", "destructed"}).join(' ');
    QCOMPARE(calls.count("TestDeviceMgr.Destroy TestDeviceMgr.destructed"), 4);
}

/// The detection outlasts the first wait of the destructor, which goes on waiting with its lock held.
void TestDeviceLink::closingDuringLongDetection()
{
    const QString secondWait = "{*}WaitForThreadToStop: Enter. unMaxWait: 5";
    recorder().setHook("TestDeviceMgr.StartDetection", [&] {
        qDebug("detection starts");
        log().waitFor(secondWait);
    });
    auto container = std::make_unique<PluginContainer>(libraryFile(), configFile(), false);
    QVERIFY(log().waitFor("detection starts"));
    container.reset();
    VERIFY_LOGGED_IN_ORDER(secondWait, "{*}calling unregistration functions",
                           "{*}WaitForThreadToStop: Leave ", "{*}: plugin DeviceMgrPlugin unloaded");
}

/// The configuration thread is terminated; the device manager that it called is still unloaded.
void TestDeviceLink::closingDuringEndlessDetection()
{
    recorder().setHook("TestDeviceMgr.StartDetection", [] {
        qDebug("detection starts");
        QThread::sleep(60);
    });
    auto container = std::make_unique<PluginContainer>(libraryFile(), configFile(), false);
    QVERIFY(log().waitFor("detection starts"));
    container.reset();
    VERIFY_LOGGED_IN_ORDER("{*}WaitForThreadToStop: Leave ", "{*}: plugin DeviceMgrPlugin unloaded");
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
        PluginContainer(libraryFile(), configFile(), false);
    isOver = true;
    modem.join();
    QCOMPARE(service().registrations(), 0);
    QCOMPARE(recorder().names({"destructed"}).size(), 5);
}

QTEST_GUILESS_MAIN(TestDeviceLink)
#include "tst_devicelink.moc"
