#include "LogCapture.h"
#include "devices/DeviceRecord.h"
#include "devices/DeviceService.h"
#include "qrvl.h"

#include <QSaveFile>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <utility>

using namespace std::chrono_literals;

namespace {

struct Seen
{
    int event;
    uint32_t count; // in the list at that moment
    std::thread::id thread;
};

std::mutex seenMutex;
std::vector<Seen> seenEvents;
std::atomic<int> calls{0};
std::atomic<bool> isInside{false};
long unregisterResult = -1;

uint32_t availableCount()
{
    QRVL_AvailableDeviceList list;
    std::memset(&list, 0xff, sizeof list);
    return QRVL_DevSrv_GetAvailableDeviceList(&list) == QRVL_OK ? list.count : ~0u;
}

int record(int type, void*)
{
    const std::lock_guard lock(seenMutex);
    seenEvents.push_back({type, availableCount(), std::this_thread::get_id()});
    return 1;
}

int linger(int, void*)
{
    isInside = true;
    std::this_thread::sleep_for(300ms);
    ++calls;
    isInside = false;
    return 1;
}

int removeItself(int, void*)
{
    ++calls;
    unregisterResult = QRVL_DevSrv_UnRegisterDevInitEventCallback(&removeItself);
    return 1;
}

int fail(int, void*)
{
    throw std::runtime_error("oops");
}

template <int>
int distinct(int, void*)
{
    static volatile int keepsThemApart = 0; // or a linker may fold equal functions
    return ++keepsThemApart;
}

template <int... numbers>
std::vector<QRVL_DevCallback> makeCallbacks(std::integer_sequence<int, numbers...>)
{
    return {&distinct<numbers>...};
}

std::vector<Seen> takeSeen()
{
    const std::lock_guard lock(seenMutex);
    return std::exchange(seenEvents, {});
}

/// The events that come until the service has looked once more, as "event:count".
QStringList eventsUntil(const QString& last)
{
    QStringList events;
    for (int i = 0; i < 500 && !events.contains(last); ++i) {
        QTest::qWait(10);
        for (const Seen& seen : takeSeen())
            events << QString("%1:%2").arg(seen.event).arg(seen.count);
    }
    return events;
}

Modem working(quint32 id, const ModemValues& status, const ModemValues& messages = {})
{
    Modem modem;
    modem.id = id;
    modem.state = Modem::Attached;
    modem.status = status;
    modem.messages = messages;
    return modem;
}

/// A value as the caller gets it; the result's number when that is no success.
QString value(uint32_t device, const char16_t* key)
{
    char16_t* buffer = nullptr;
    const long result = QRVL_DevSrv_GetStatusValue(device, key, &buffer);
    const std::unique_ptr<char16_t[]> owned(buffer);
    return result == QRVL_OK ? QString::fromUtf16(buffer) : QString::number(result) + (buffer ? "!" : "");
}

Modem modem(quint32 id, Modem::State state, const QString& gid = {})
{
    Modem modem;
    modem.id = id;
    modem.gid = gid;
    modem.state = state;
    return modem;
}

} // namespace

Q_DECLARE_METATYPE(Modem)

class tst_DeviceService : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void eventsOfChange_data();
    void eventsOfChange();
    void liveChanges();
    void brokenFileKeepsModems();
    void tooManyModems();
    void detection();
    void recordHoldsModem();
    void statusValues();
    void transferredBytes();
    void textsAreCut_data();
    void textsAreCut();
    void unregisterWaitsForCallback();
    void callbackMayUnregisterItself();
    void throwingCallback();
    void placesForCallbacks();
    void arguments();

private:
    void describe(const QByteArray& content) const;
    void attach(const QStringList& models) const;

    QTemporaryDir m_folder;
};

void tst_DeviceService::initTestCase()
{
    qputenv("QRVL_SIMULATOR_FILE", m_folder.filePath("simulator.ini").toUtf8());
    QCOMPARE(availableCount(), 0u);
}

void tst_DeviceService::init()
{
    attach({});
    calls = 0;
    QTRY_COMPARE(availableCount(), 0u);
    QCOMPARE(QRVL_DevSrv_RegisterDevMgrCallback(&record), long(QRVL_OK));
    takeSeen();
}

void tst_DeviceService::cleanup()
{
    QRVL_DevSrv_UnRegisterDevMgrCallback(&record);
}

void tst_DeviceService::describe(const QByteArray& content) const
{
    QSaveFile file(m_folder.filePath("simulator.ini"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    QVERIFY(file.commit());
}

void tst_DeviceService::attach(const QStringList& models) const
{
    QByteArray content = "# modems\n";
    for (const QString& model : models)
        content += QString("[modem %1]\nmodel=%1\nstate=attached\n").arg(model).toUtf8();
    describe(content);
}

void tst_DeviceService::eventsOfChange_data()
{
    constexpr auto attached = Modem::Attached, detached = Modem::Detached, rejected = Modem::Rejected;
    constexpr int invalid = QRVL_EVENT_DEV_DEVICE_INVALID;
    constexpr int reject = QRVL_EVENT_DEV_REJECT;
    constexpr int detected = QRVL_EVENT_DEV_DETECTED;
    QTest::addColumn<Modems>("before");
    QTest::addColumn<Modems>("after");
    QTest::addColumn<QVector<int>>("events");
    const auto row = [](const char* name, const Modems& before, const Modems& after,
                        const QVector<int>& events) {
        QTest::newRow(name) << before << after << events;
    };
    row("nothing", {modem(1, attached)}, {modem(1, attached)}, {});
    row("attach", {modem(1, detached)}, {modem(1, attached)}, {detected});
    row("second", {modem(1, attached)}, {modem(1, attached), modem(2, attached)}, {detected});
    row("detach", {modem(1, attached)}, {modem(1, detached)}, {invalid, detected});
    row("no longer there", {modem(1, attached)}, {}, {invalid, detected});
    row("both gone", {modem(1, attached), modem(2, attached)}, {}, {invalid, detected});
    row("exchange", {modem(1, attached)}, {modem(2, attached)}, {invalid, detected});
    row("another SIM", {modem(1, attached, "a")}, {modem(1, attached, "b")}, {detected});
    row("reject attached", {modem(1, attached)}, {modem(1, rejected)}, {reject, detected});
    row("reject detached", {modem(1, detached)}, {modem(1, rejected)}, {reject});
    row("reject new beside another", {modem(1, attached)}, {modem(1, attached), modem(2, rejected)},
        {reject});
    row("reject one, other gone", {modem(1, attached), modem(2, attached)}, {modem(1, rejected)},
        {invalid, reject, detected});
    row("rejected goes", {modem(1, rejected)}, {}, {});
    row("accepted again", {modem(1, rejected)}, {modem(1, attached)}, {detected});
    row("detached changes", {modem(1, detached, "a")}, {modem(1, detached, "b")}, {});
    row("status", {working(1, {{"signal", "1"}})}, {working(1, {{"signal", "2"}})}, {QRVL_EVENT_DEV_STATUS});
    row("message of the second", {modem(1, attached), working(2, {})},
        {modem(1, attached), working(2, {}, {{"messages", "1"}})}, {QRVL_EVENT_DEV_MESSAGES});
    row("attached with values", {modem(1, detached)}, {working(1, {{"signal", "1"}}, {{"messages", "1"}})},
        {detected});
}

void tst_DeviceService::eventsOfChange()
{
    QFETCH(Modems, before);
    QFETCH(Modems, after);
    QFETCH(QVector<int>, events);
    QCOMPARE(eventsBetween(before, after, false), events);
    if (!events.contains(QRVL_EVENT_DEV_DETECTED)) {
        const bool isLast = events.isEmpty() || events.last() < QRVL_EVENT_DEV_STATUS;
        events.insert(isLast ? events.size() : events.size() - 1, QRVL_EVENT_DEV_DETECTED);
    }
    QCOMPARE(eventsBetween(before, after, true), events);
}

/// Each event finds the set that it tells of.
void tst_DeviceService::liveChanges()
{
    attach({"One", "Two"});
    QCOMPARE(eventsUntil("6606:2"), QStringList("6606:2"));
    attach({"Two"});
    QCOMPARE(eventsUntil("6606:1"), QStringList({"6601:1", "6606:1"}));
    describe("[modem Two]\nmodel=Two\nstate=rejected\n");
    QCOMPARE(eventsUntil("6606:0"), QStringList({"6016:0", "6606:0"}));
    attach({"Two"});
    QCOMPARE(eventsUntil("6606:1"), QStringList("6606:1"));
    QVERIFY(QFile::remove(m_folder.filePath("simulator.ini")));
    QCOMPARE(eventsUntil("6606:0"), QStringList({"6601:0", "6606:0"}));
}

void tst_DeviceService::brokenFileKeepsModems()
{
    LogCapture log;
    attach({"One"});
    QCOMPARE(eventsUntil("6606:1"), QStringList("6606:1"));
    for (const char* content :
         {"[modem One]\nmodel=One\nsta", "[modem One]\nstate=attached\n",
          "[modem One]\nmodel=One\nstate=on\n", "[modem One]\nmodel=One\nstate=attached\nsignal=101\n",
          "[modem One]\nmodel=One\nstate=attached\n[message a b]\n",
          "[modem One]\nmodel=\xff\nstate=detached\n"}) {
        log.clear();
        describe(content);
        QVERIFY(log.waitFor("Simulator file {*} is ignored while {*}"));
        QCOMPARE(availableCount(), 1u);
    }
    QVERIFY(takeSeen().empty());
}

void tst_DeviceService::tooManyModems()
{
    LogCapture log;
    QStringList models;
    for (int i = 0; i < 20; ++i)
        models << QString("Model %1").arg(i);
    attach(models);
    QCOMPARE(eventsUntil("6606:16"), QStringList("6606:16"));
    QVERIFY(log.contains("Simulator file {*} attaches 20 modems; the first 16 are available"));
    QRVL_AvailableDeviceList list;
    QCOMPARE(QRVL_DevSrv_GetAvailableDeviceList(&list), long(QRVL_OK));
    QCOMPARE(list.devices[15].name, "Model 15");
}

/// The caller has time to get ready; the answer comes on another thread, also when nothing is there.
void tst_DeviceService::detection()
{
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(QRVL_DevSrv_StartDetect(), long(QRVL_OK));
    const auto hasSeen = [] {
        const std::lock_guard lock(seenMutex);
        return !seenEvents.empty();
    };
    QTRY_VERIFY_WITH_TIMEOUT(hasSeen(), 5000);
    const std::vector<Seen> seen = takeSeen();
    QVERIFY(timer.elapsed() >= 250);
    QCOMPARE(seen[0].event, int(QRVL_EVENT_DEV_DETECTED));
    QCOMPARE(seen[0].count, 0u);
    QVERIFY(seen[0].thread != std::this_thread::get_id());
    for (int i = 0; i < 10000; ++i)
        QRVL_DevSrv_StartDetect();
    QTest::qWait(1500);
    QCOMPARE(int(takeSeen().size()), 2);
}

void tst_DeviceService::recordHoldsModem()
{
    describe("[modem 1]\nmodel = Lume, \"V2\"\nimsi=262011234567890\ngid=NT-GOLD\ncustomize=north\xc3\xa9\n"
             "port=sim2\nstate=attached\n[modem 2]\nmodel=Other\nimsi=1\nstate=attached\n");
    QCOMPARE(eventsUntil("6606:2"), QStringList("6606:2"));
    std::vector<char> bytes(QRVL_AVAILABLE_DEVICE_LIST_SIZE, '\x7f');
    auto* const list = reinterpret_cast<QRVL_AvailableDeviceList*>(bytes.data());
    QCOMPARE(QRVL_DevSrv_GetAvailableDeviceList(list), long(QRVL_OK));
    uint32_t count = 0;
    std::memcpy(&count, bytes.data(), sizeof count);
    QCOMPARE(count, 2u);
    QCOMPARE(bytes.data() + 12, "Lume, \"V2\"");
    QCOMPARE(list->devices[0].imsi, "262011234567890");
    QCOMPARE(list->devices[0].gid, "NT-GOLD");
    QCOMPARE(list->devices[0].port, "sim2");
    QVERIFY(list->devices[0].id != list->devices[1].id);
    QVERIFY(
        std::all_of(bytes.begin() + 4 + 2 * sizeof(QRVL_Device), bytes.end(), [](char c) { return c == 0; }));

    char customize[QRVL_CUSTOMIZE_NAME_SIZE];
    QCOMPARE(QRVL_DevSrv_GetCustomizeName(customize), long(QRVL_OK));
    QCOMPARE(customize, "north\xc3\xa9");
    char imsi[QRVL_IMSI_SIZE];
    QCOMPARE(QRVL_DevSrv_GetImsiInfo(imsi), long(QRVL_OK));
    QCOMPARE(imsi, "262011234567890");

    attach({"Without SIM"});
    QTRY_COMPARE(QRVL_DevSrv_GetImsiInfo(imsi), long(QRVL_ERROR_NO_DEVICE));
    QCOMPARE(QRVL_DevSrv_GetCustomizeName(customize), long(QRVL_OK));
    QCOMPARE(customize, "");
    attach({});
    QTRY_COMPARE(QRVL_DevSrv_GetCustomizeName(customize), long(QRVL_ERROR_NO_DEVICE));
}

void tst_DeviceService::statusValues()
{
    describe(
        "[modem A]\nmodel=X\nstate=attached\nsignal=7\n[message b]\nmodem=A\nsender=+1\ntext=1\\n\xc3\xa9\n"
        "[message a]\nmodem=A\n[message c]\nmodem=B\n[modem B]\nmodel=Y\nstate=detached\nsignal=8\n");
    QCOMPARE(eventsUntil("6606:1"), QStringList("6606:1"));
    QRVL_AvailableDeviceList list;
    QCOMPARE(QRVL_DevSrv_GetAvailableDeviceList(&list), long(QRVL_OK));
    const uint32_t id = list.devices[0].id;
    const QString notFound = QString::number(QRVL_ERROR_NOT_FOUND);
    QCOMPARE(value(id, u"signal"), "7");
    QCOMPARE(value(id, u"network"), notFound);
    QCOMPARE(value(id, u"messages"), "b a");
    QCOMPARE(value(id, u"message.b.sender"), "+1");
    QCOMPARE(value(id, u"message.b.text"), QString::fromUtf8("1\n\xc3\xa9"));
    QCOMPARE(value(id, u"message.a.text"), "");
    QCOMPARE(value(id, u"message.c.text"), notFound);
    QCOMPARE(value(id + 1000, u"signal"), QString::number(QRVL_ERROR_NO_DEVICE));

    describe("[modem A]\nmodel=X\nstate=attached\nsignal=9\n[message b]\nmodem=A\ntext=1\n");
    QCOMPARE(eventsUntil("6612:1"), QStringList({"6611:1", "6612:1"}));
    QCOMPARE(value(id, u"signal"), "9");
    QCOMPARE(value(id, u"messages"), "b");
}

/// They grow while the modem is attached, whatever else changes, and begin anew when it is attached again.
void tst_DeviceService::transferredBytes()
{
    const QByteArray file = "[modem T]\nmodel=T\nstate=%1\nreceived=5\nreceive-rate=%2\n";
    const auto describeRate = [&](const char* state, const char* rate) {
        describe(QByteArray(file).replace("%1", state).replace("%2", rate));
    };
    describeRate("attached", "1000");
    QTRY_COMPARE(availableCount(), 1u);
    QRVL_AvailableDeviceList list;
    QRVL_DevSrv_GetAvailableDeviceList(&list);
    const uint32_t id = list.devices[0].id;
    const auto received = [id] {
        return value(id, u"received").toInt();
    };
    QTRY_VERIFY(received() >= 2005);
    QCOMPARE(received() % 1000, 5);
    describeRate("attached", "0");
    QTRY_COMPARE(value(id, u"receive-rate"), "0");
    QVERIFY(received() >= 2005);
    describeRate("detached", "0");
    QTRY_COMPARE(availableCount(), 0u);
    describeRate("attached", "0");
    QTRY_COMPARE(availableCount(), 1u);
    QCOMPARE(received(), 5);
}

void tst_DeviceService::textsAreCut_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("empty") << "" << QByteArray();
    QTest::newRow("fits") << "1234567" << QByteArray("1234567");
    QTest::newRow("one more") << "12345678" << QByteArray("1234567");
    QTest::newRow("two bytes") << QString::fromUtf8("123456\xc3\xa4") << QByteArray("123456");
    QTest::newRow("surrogates") << QString::fromUtf8("1234\xf0\x9f\x93\xb6") << QByteArray("1234");
    QTest::newRow("surrogates fit") << QString::fromUtf8("123\xf0\x9f\x93\xb6")
                                    << QByteArray("123\xf0\x9f\x93\xb6");
    QTest::newRow("surrogate at the size")
        << QString::fromUtf8("1234567\xf0\x9f\x93\xb6") << QByteArray("1234567");
}

void tst_DeviceService::textsAreCut()
{
    QFETCH(QString, text);
    char buffer[8];
    std::memset(buffer, 'x', sizeof buffer);
    DeviceRecord::fillText(text, &DeviceRecord::inUtf8, buffer, sizeof buffer);
    QFETCH(QByteArray, expected);
    QCOMPARE(QByteArray(buffer, 8), expected.leftJustified(8, '\0'));
}

void tst_DeviceService::unregisterWaitsForCallback()
{
    QRVL_DevSrv_RegisterDevInitEventCallback(&linger);
    QRVL_DevSrv_StartDetect();
    QTRY_VERIFY(isInside);
    QCOMPARE(QRVL_DevSrv_UnRegisterDevInitEventCallback(&linger), long(QRVL_OK));
    QVERIFY(!isInside);
    QCOMPARE(calls.load(), 1);
    takeSeen();
    QRVL_DevSrv_StartDetect();
    QCOMPARE(eventsUntil("6606:0"), QStringList("6606:0"));
    QCOMPARE(calls.load(), 1);
}

void tst_DeviceService::callbackMayUnregisterItself()
{
    QRVL_DevSrv_RegisterDevInitEventCallback(&removeItself);
    QRVL_DevSrv_StartDetect();
    QCOMPARE(eventsUntil("6606:0"), QStringList("6606:0"));
    QRVL_DevSrv_StartDetect();
    QCOMPARE(eventsUntil("6606:0"), QStringList("6606:0"));
    QCOMPARE(calls.load(), 1);
    QCOMPARE(unregisterResult, long(QRVL_OK));
}

void tst_DeviceService::throwingCallback()
{
    LogCapture log;
    QRVL_DevSrv_RegisterDevInitEventCallback(&fail);
    QRVL_DevSrv_StartDetect();
    QCOMPARE(eventsUntil("6606:0"), QStringList("6606:0"));
    QVERIFY(log.contains("A callback threw at event 6606: oops"));
    QCOMPARE(QRVL_DevSrv_UnRegisterDevInitEventCallback(&fail), long(QRVL_OK));
}

void tst_DeviceService::placesForCallbacks()
{
    // In both lists, and twice in one: still one call for each event.
    QCOMPARE(QRVL_DevSrv_RegisterDevInitEventCallback(&record), long(QRVL_OK));
    QCOMPARE(QRVL_DevSrv_RegisterDevInitEventCallback(&record), long(QRVL_OK));
    attach({"One"});
    QCOMPARE(eventsUntil("6606:1"), QStringList("6606:1"));
    QCOMPARE(QRVL_DevSrv_UnRegisterDevInitEventCallback(&record), long(QRVL_OK));
    QCOMPARE(QRVL_DevSrv_UnRegisterDevInitEventCallback(&record), long(QRVL_ERROR_NOT_FOUND));

    const auto callbacks = makeCallbacks(std::make_integer_sequence<int, 33>());
    for (std::size_t i = 0; i < callbacks.size(); ++i)
        QCOMPARE(QRVL_DevSrv_RegisterDevInitEventCallback(callbacks[i]),
                 long(i < 32 ? QRVL_OK : QRVL_ERROR_LIMIT));
    for (std::size_t i = 0; i < callbacks.size(); ++i)
        QCOMPARE(QRVL_DevSrv_UnRegisterDevInitEventCallback(callbacks[i]),
                 long(i < 32 ? QRVL_OK : QRVL_ERROR_NOT_FOUND));
}

void tst_DeviceService::arguments()
{
    QCOMPARE(QRVL_DevSrv_RegisterDevMgrCallback(nullptr), long(QRVL_ERROR_ARGUMENT));
    QCOMPARE(QRVL_DevSrv_UnRegisterDevMgrCallback(nullptr), long(QRVL_ERROR_ARGUMENT));
    QCOMPARE(QRVL_DevSrv_GetAvailableDeviceList(nullptr), long(QRVL_ERROR_ARGUMENT));
    QCOMPARE(QRVL_DevSrv_GetCustomizeName(nullptr), long(QRVL_ERROR_ARGUMENT));
    QCOMPARE(QRVL_DevSrv_GetImsiInfo(nullptr), long(QRVL_ERROR_ARGUMENT));
    QCOMPARE(QRVL_DevSrv_GetStatusValue(1, u"signal", nullptr), long(QRVL_ERROR_ARGUMENT));
    QCOMPARE(value(1, nullptr), QString::number(QRVL_ERROR_ARGUMENT));
}

QTEST_GUILESS_MAIN(tst_DeviceService)
#include "tst_deviceservice.moc"
