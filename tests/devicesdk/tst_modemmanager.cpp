// Modems of the real ModemManager, on a bus of their own, through the C interface.

#include "AtModem.h"
#include "ServiceBus.h"
#include "backends/modemmanager/ModemManagerBackend.h"
#include "qrvl.h"

#include <QtTest>

#include <condition_variable>
#include <cstdlib>
#include <functional>
#include <memory>
#include <mutex>
#include <tuple>

using namespace std::chrono_literals;

namespace {

constexpr int Patience = 30000; // milliseconds; ModemManager needs one or two seconds to examine a modem

std::mutex seenMutex;
std::condition_variable seenMore;
QHash<uint32_t, QString> seenEnds;
QVector<int> seenEvents;

int record(int type, void* data)
{
    const std::lock_guard lock(seenMutex);
    seenEvents << type;
    if (type == QRVL_EVENT_DEV_REQUEST) {
        const auto* const end = static_cast<const QRVL_RequestEnd*>(data);
        seenEnds.insert(end->request,
                        QString("%1 %2").arg(end->result).arg(QString::fromUtf16(end->text)).trimmed());
    }
    seenMore.notify_all();
    return 1;
}

QVector<QRVL_Device> modems()
{
    QRVL_AvailableDeviceList list;
    QRVL_DevSrv_GetAvailableDeviceList(&list);
    return {list.devices, list.devices + list.count};
}

uint32_t modemId()
{
    const QVector<QRVL_Device> devices = modems();
    return devices.isEmpty() ? 0 : devices.first().id;
}

const char16_t* utf16(const QString& text)
{
    return reinterpret_cast<const char16_t*>(text.utf16());
}

/// A value; the number of the result if that is not success.
QString value(const QString& key, uint32_t device)
{
    char16_t* buffer = nullptr;
    const long result = QRVL_DevSrv_GetStatusValue(device, utf16(key), &buffer);
    const QString text = buffer ? QString::fromUtf16(buffer) : QString::number(result);
    delete[] buffer;
    return text;
}

QString values(const QStringList& keys)
{
    QStringList words;
    for (const QString& key : keys)
        words << value(key, modemId());
    return words.join(' ');
}

using Ask = std::function<long(uint32_t device, uint32_t* request)>;

/// The result of a request that was started, and its text.
QString endOf(uint32_t request)
{
    std::unique_lock lock(seenMutex);
    seenMore.wait_for(lock, std::chrono::milliseconds(Patience), [&] { return seenEnds.contains(request); });
    return seenEnds.value(request, "no end");
}

/// The same; "not started" and a number if it did not begin.
QString outcome(const Ask& ask)
{
    uint32_t number = 0;
    const long result = ask(modemId(), &number);
    return result == QRVL_OK ? endOf(number) : QString("not started %1").arg(result);
}

QString connectModem(const QRVL_AccessPoint& accessPoint)
{
    return outcome([&](uint32_t device, uint32_t* request) {
        return QRVL_DevSrv_Connect(device, &accessPoint, request);
    });
}

QString disconnectModem()
{
    return outcome(QRVL_DevSrv_Disconnect);
}

/// How NetworkManager sees the modem, with connections that somebody has set up. Its traffic is that of the
/// loopback interface.
QVariantList modemDevice(const QStringList& connections)
{
    return {"lo", "/org/freedesktop/ModemManager1/Modem/0", connections};
}

QString enterPin(const char16_t* pin)
{
    return outcome(
        [=](uint32_t device, uint32_t* request) { return QRVL_DevSrv_EnterPin(device, pin, request); });
}

QString enterPuk(const char16_t* puk)
{
    return outcome([=](uint32_t device, uint32_t* request) {
        return QRVL_DevSrv_EnterPuk(device, puk, u"4711", request);
    });
}

QString sendMessage(const QString& text)
{
    return outcome([&](uint32_t device, uint32_t* request) {
        return QRVL_DevSrv_SendMessage(device, u"+491234", utf16(text), request);
    });
}

QString deleteMessage(const QString& identifier)
{
    return outcome([&](uint32_t device, uint32_t* request) {
        return QRVL_DevSrv_DeleteMessage(device, utf16(identifier), request);
    });
}

QString sendUssd(const char16_t* code)
{
    return outcome(
        [=](uint32_t device, uint32_t* request) { return QRVL_DevSrv_SendUssd(device, code, request); });
}

AtModem::Sim lockedSim(int pinTries)
{
    AtModem::Sim sim;
    sim.pin = "1234";
    sim.pinTries = pinTries;
    return sim;
}

} // namespace

class tst_ModemManager : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void attached();
    void withoutSim();
    void unlocking();
    void blocking();
    void twoModems();
    void daemonDies();
    void receivedMessages();
    void sentMessages();
    void serviceCodes();
    void connecting();
    void connectionsOfOthers();
    void networkManagerDies();
    void withoutBus();

private:
    /// Plugs in a modem, and waits until it is shown with this state of its SIM.
    std::unique_ptr<AtModem> plug(const AtModem::Sim& sim, const QString& simState);
    std::unique_ptr<AtModem> plugReady() { return plug({}, "ready"); }

    std::unique_ptr<ServiceBus> m_bus;
    int m_count = 0;
};

void tst_ModemManager::initTestCase()
{
    m_bus = std::make_unique<ServiceBus>();
    qputenv("QRVL_BACKEND", "modemmanager");
    qputenv("QRVL_BUS", m_bus->address().toLocal8Bit());
    QCOMPARE(QRVL_DevSrv_RegisterDevMgrCallback(&record), long(QRVL_OK));
    QTRY_COMPARE(value("problem", QRVL_SERVICE), "no-modemmanager");
    QCOMPARE(value("backend", QRVL_SERVICE), "modemmanager");
}

void tst_ModemManager::init()
{
    QVERIFY(m_bus->startModemManager());
    QTRY_COMPARE_WITH_TIMEOUT(value("problem", QRVL_SERVICE), "2", Patience);
    const std::lock_guard lock(seenMutex);
    seenEvents.clear();
}

void tst_ModemManager::cleanup()
{
    if (QTest::currentTestFailed())
        qWarning("%s", m_bus->log().constData());
    m_bus->killModemManager();
    m_bus->killNetworkManager();
    QTRY_VERIFY(modems().isEmpty());
}

std::unique_ptr<AtModem> tst_ModemManager::plug(const AtModem::Sim& sim, const QString& simState)
{
    const QByteArray name =
        QByteArray::number(QCoreApplication::applicationPid()) + '-' + QByteArray::number(++m_count);
    auto modem = std::make_unique<AtModem>(name, sim);
    const int before = modems().size();
    if (!m_bus->addModem(name, modem->port()) ||
        !QTest::qWaitFor([&] { return modems().size() > before && values({"sim"}) == simState; }, Patience))
        QTest::qFail("The modem does not appear", __FILE__, __LINE__);
    return modem;
}

void tst_ModemManager::attached()
{
    const auto modem = plugReady();
    const QRVL_Device device = modems().value(0);
    QCOMPARE(QStringList({device.name, device.imsi, device.gid}).join('|'),
             "Lume AT1|262011234567890|NT-GOLD");
    QCOMPARE(values({"state", "number", "imei", "iccid", "firmware", "manufacturer", "connection", "ussd"}),
             "available +491701234567 351234567890123 89490000000000000001 1.0.7 Lume disconnected idle");
    QTRY_COMPARE_WITH_TIMEOUT(values({"registration", "network", "network-name", "technology", "signal"}),
                              "home 26201 northtel umts 64", Patience);
    QVERIFY(seenEvents.contains(QRVL_EVENT_DEV_DETECTED) && seenEvents.contains(QRVL_EVENT_DEV_STATUS));
}

void tst_ModemManager::withoutSim()
{
    AtModem::Sim sim;
    sim.isInserted = false;
    const auto modem = plug(sim, "absent");
    QCOMPARE(values({"state", "registration", "signal"}), "available idle 2");
    QCOMPARE(QByteArray(modems().value(0).imsi), "");
    QCOMPARE(sendMessage("x"), QString::number(QRVL_ERROR_NO_SIM));
    QCOMPARE(enterPin(u"1234"), QString::number(QRVL_ERROR_NOT_FOUND));
}

void tst_ModemManager::unlocking()
{
    const auto modem = plug(lockedSim(3), "pin");
    QCOMPARE(values({"state", "pin-tries"}), "available 3");
    QCOMPARE(sendMessage("x"), QString::number(QRVL_ERROR_LOCKED));
    QCOMPARE(enterPin(u"0000"), QString::number(QRVL_ERROR_WRONG_CODE));
    QCOMPARE(values({"sim", "pin-tries"}), "pin 2");
    QCOMPARE(enterPin(u"1234"), "0");
    QTRY_COMPARE_WITH_TIMEOUT(QByteArray(modems().value(0).imsi), "262011234567890", Patience);
    QTRY_COMPARE_WITH_TIMEOUT(values({"sim", "registration"}), "ready home", Patience);
    QCOMPARE(enterPin(u"1234"), QString::number(QRVL_ERROR_NOT_FOUND));
}

void tst_ModemManager::blocking()
{
    const auto modem = plug(lockedSim(1), "pin");
    QCOMPARE(enterPin(u"0000"), QString::number(QRVL_ERROR_BLOCKED));
    // ModemManager discards the modem then and examines it again.
    QTRY_COMPARE_WITH_TIMEOUT(values({"sim", "pin-tries", "puk-tries"}), "puk 0 10", Patience);
    QCOMPARE(enterPin(u"1234"), QString::number(QRVL_ERROR_BLOCKED));
    QVERIFY(enterPuk(u"00000000") != "0");
    QCOMPARE(values({"sim", "puk-tries"}), "puk 9");
    QCOMPARE(enterPuk(u"12345678"), "0");
    QTRY_COMPARE_WITH_TIMEOUT(values({"sim", "registration"}), "ready home", Patience);
}

/// Two of the same model, with the same serial number.
void tst_ModemManager::twoModems()
{
    const auto first = plugReady();
    AtModem::Sim sim;
    sim.imsi = "262019999999999";
    const auto second = plug(sim, "ready");
    const QVector<QRVL_Device> both = modems();
    QCOMPARE(both.size(), 2);
    QVERIFY(both[0].id != both[1].id);
    QCOMPARE(QByteArray(both[1].imsi), sim.imsi);
}

/// The modem is known by its serial number: paths begin anew.
void tst_ModemManager::daemonDies()
{
    auto modem = plugReady();
    const uint32_t id = modemId();
    modem->hang();
    uint32_t request = 0;
    QCOMPARE(QRVL_DevSrv_SendMessage(id, u"1", u"x", &request), long(QRVL_OK));
    seenEvents.clear();
    m_bus->killModemManager();
    QTRY_VERIFY(modems().isEmpty());
    QTRY_COMPARE(value("problem", QRVL_SERVICE), "no-modemmanager");
    QTRY_COMPARE(seenEnds.value(request), QString::number(QRVL_ERROR_NO_DEVICE));
    QCOMPARE(seenEvents.mid(0, 2), QVector<int>({QRVL_EVENT_DEV_DEVICE_INVALID, QRVL_EVENT_DEV_DETECTED}));
    QVERIFY(m_bus->startModemManager());
    modem = plugReady();
    QCOMPARE(modemId(), id);
    QCOMPARE(value("problem", QRVL_SERVICE), "2");
}

/// A message of two parts in another alphabet, and one in the usual one.
void tst_ModemManager::receivedMessages()
{
    const auto modem = plugReady();
    QTRY_COMPARE_WITH_TIMEOUT(values({"messages"}), "", Patience);
    modem->receive("0791947106004034040B919471103254F6000042209271050080"
                   "0AE8329BFD4697D9EC37");
    QTRY_VERIFY_WITH_TIMEOUT(!values({"messages"}).isEmpty(), Patience);
    const QString identifier = values({"messages"});
    const QString prefix = "message." + identifier + '.';
    QCOMPARE(values({prefix + "text", prefix + "state"}), "hellohello received");
    QVERIFY(QDateTime::fromString(values({prefix + "time"}), "yyyy-MM-ddTHH:mm:ss").isValid());
    QCOMPARE(deleteMessage(identifier), "0");
    QCOMPARE(values({"messages"}), "");
    QCOMPARE(deleteMessage(identifier), QString::number(QRVL_ERROR_NOT_FOUND));
}

/// Ten parts in two alphabets.
void tst_ModemManager::sentMessages()
{
    const auto modem = plugReady();
    QTRY_COMPARE_WITH_TIMEOUT(values({"registration"}), "home", Patience);
    const QString text =
        (QString("Hello ") + QString::fromUtf8("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d ")).repeated(56);
    const QStringList words = sendMessage(text).split(' ');
    QCOMPARE(words.value(0), "0");
    const QString prefix = "message." + words.value(1) + '.';
    QCOMPARE(modem->sent().size(), 10);
    QCOMPARE(values({"sent-messages", prefix + "state", prefix + "recipient"}),
             words.value(1) + " sent +491234");
    QCOMPARE(values({prefix + "text"}), text);
    modem->setReply("AT+CMGS", "+CMS ERROR: 38");
    const QString refused = sendMessage("x");
    QVERIFY2(refused.startsWith(QString::number(QRVL_ERROR_REFUSED) + ' '), qPrintable(refused));
    QCOMPARE(values({"message." + refused.mid(3) + ".state"}), "failed");
}

void tst_ModemManager::serviceCodes()
{
    const auto modem = plugReady();
    QTRY_COMPARE_WITH_TIMEOUT(values({"registration"}), "home", Patience);
    modem->setReply("+CUSD", "1,\"0031003A00200061\",72");
    QCOMPARE(sendUssd(u"*100#"), "0 1: a");
    QCOMPARE(values({"ussd"}), "reply");
    modem->setReply("+CUSD", "0,\"00620079\",72");
    QCOMPARE(sendUssd(u"1"), "0 by");
    QCOMPARE(values({"ussd"}), "idle");
}

/// NetworkManager follows the modem with the state that the row says, or refuses.
void tst_ModemManager::connecting()
{
    const auto modem = plugReady();
    QCOMPARE(value("connection-problem", QRVL_SERVICE), "no-networkmanager");
    QCOMPARE(connectModem({}), QString::number(QRVL_ERROR_SERVICE));
    QVERIFY(m_bus->startNetworkManager());
    QTRY_COMPARE(value("connection-problem", QRVL_SERVICE), "2");
    QCOMPARE(connectModem({}), QString::number(QRVL_ERROR_UNSUPPORTED));
    m_bus->controlNetwork("AddModem", modemDevice({}));
    // Removes the error of the attempts above.
    QTRY_COMPARE(values({"connection", "connection.error"}), "disconnected 2");

    const auto after = [this](const QRVL_AccessPoint& accessPoint, uint state, uint reason) {
        uint32_t request = 0;
        m_bus->controlNetwork("ForgetConnection");
        if (QRVL_DevSrv_Connect(modemId(), &accessPoint, &request) != QRVL_OK ||
            !QTest::qWaitFor([this] { return !m_bus->controlNetwork("LastConnection").isEmpty(); }))
            return QString("not started");
        m_bus->controlNetwork("SetModemState", {state, reason});
        m_bus->controlNetwork("SetModemState", {state == 100 ? 100U : 30U, 0U});
        return endOf(request);
    };
    const QRVL_AccessPoint named = {u"internet", u"me", u"secret", QRVL_CONNECT_HOME_ONLY, 0};
    const std::tuple<QRVL_AccessPoint, uint, uint, int, QString> rows[] = {
        {{}, 120, 29, QRVL_ERROR_ACCESS_POINT, "disconnected 13"},
        {{}, 120, 31, QRVL_ERROR_REFUSED, "disconnected 12"},
        {{}, 120, 32, QRVL_ERROR_NO_COVERAGE, "disconnected 11"},
        {{}, 120, 46, QRVL_ERROR_LOCKED, "disconnected 8"},
        {{}, 120, 1, QRVL_ERROR_FAILED, "disconnected 21"},
        {named, 100, 0, QRVL_OK, "connected 2"},
    };
    for (const auto& [accessPoint, state, reason, result, shown] : rows) {
        QCOMPARE(after(accessPoint, state, reason), QString::number(result));
        QCOMPARE(values({"connection", "connection.error"}), shown);
    }
    QCOMPARE(m_bus->controlNetwork("LastConnection"),
             "connection.autoconnect=0 connection.id=Skylume connection.type=gsm gsm.apn=internet "
             "gsm.home-only=1 gsm.password=secret gsm.username=me");
    QCOMPARE(values({"connection.address", "connection.name"}), "10.0.0.7 Mobile");
    QVERIFY(std::abs(values({"connection.since"}).toLongLong() - QDateTime::currentSecsSinceEpoch()) < 60);
    QVERIFY(values({"received", "sent"}) != "2 2"); // the counters of the loopback interface
    QCOMPARE(connectModem({}), "0");
    QCOMPARE(disconnectModem(), "0");
    QCOMPARE(values({"connection", "connection.error", "received"}), "disconnected 2 2");
    QCOMPARE(disconnectModem(), "0");
}

/// A connection that the user has set up is used unless an access point is given; one that another program makes
/// is shown.
void tst_ModemManager::connectionsOfOthers()
{
    QVERIFY(m_bus->startNetworkManager());
    const auto modem = plugReady();
    m_bus->controlNetwork("AddModem", modemDevice({"/org/freedesktop/NetworkManager/Settings/1"}));
    m_bus->controlNetwork("SetModemState", {100U, 0U});
    QTRY_COMPARE(values({"connection"}), "connected");
    m_bus->controlNetwork("SetModemState", {30U, 40U});
    QTRY_COMPARE(values({"connection", "connection.error"}),
                 "disconnected " + QString::number(QRVL_ERROR_NO_COVERAGE));
    uint32_t request = 0;
    QCOMPARE(QRVL_DevSrv_Connect(modemId(), nullptr, &request), long(QRVL_OK));
    QTRY_COMPARE(m_bus->controlNetwork("LastConnection"), "existing");
    QTRY_COMPARE(values({"connection", "connection.error"}), "connecting 2");
    QCOMPARE(disconnectModem(), "0");
    QCOMPARE(endOf(request), QString::number(QRVL_ERROR_CANCELLED));
    QCOMPARE(values({"connection", "connection.error"}), "disconnected 2");
}

void tst_ModemManager::networkManagerDies()
{
    QVERIFY(m_bus->startNetworkManager());
    const auto modem = plugReady();
    m_bus->controlNetwork("AddModem", modemDevice({}));
    uint32_t request = 0;
    QTRY_COMPARE(values({"connection.error"}), "2");
    QCOMPARE(QRVL_DevSrv_Connect(modemId(), nullptr, &request), long(QRVL_OK));
    QTRY_COMPARE(values({"connection"}), "connecting");
    m_bus->killNetworkManager();
    QCOMPARE(endOf(request), QString::number(QRVL_ERROR_SERVICE));
    QCOMPARE(value("connection-problem", QRVL_SERVICE), "no-networkmanager");
}

void tst_ModemManager::withoutBus()
{
    qputenv("QRVL_BUS", "unix:path=/nowhere");
    ModemManagerBackend backend({});
    QVERIFY(backend.wait(Backend::Clock::now() + 30s));
    QCOMPARE(backend.look().service.value("problem"), "no-bus");
    Request request;
    request.number = 7;
    backend.start(std::move(request));
    const QVector<RequestEnd> ends = backend.takeEnds();
    QCOMPARE(ends.size(), 1);
    QCOMPARE(ends.first().result, long(QRVL_ERROR_SERVICE));
}

QTEST_GUILESS_MAIN(tst_ModemManager)
#include "tst_modemmanager.moc"
