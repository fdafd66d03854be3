#include "LogCapture.h"
#include "devices/DeviceRecord.h"
#include "devices/DeviceService.h"
#include "qrvl.h"

#include <QSaveFile>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <tuple>
#include <utility>

using namespace std::chrono_literals;

namespace {

std::mutex seenMutex;
QStringList seenEvents; // as "event:count of modems at that moment"
std::thread::id seenThread;
std::atomic<int> calls{0};
std::atomic<bool> isInside{false};
long unregisterResult = -1;

uint32_t availableCount()
{
    QRVL_AvailableDeviceList list;
    std::memset(&list, 0xff, sizeof list);
    return QRVL_DevSrv_GetAvailableDeviceList(&list) == QRVL_OK ? list.count : ~0u;
}

uint32_t firstId()
{
    QRVL_AvailableDeviceList list;
    return QRVL_DevSrv_GetAvailableDeviceList(&list) == QRVL_OK ? list.devices[0].id : 0;
}

int record(int type, void*)
{
    const std::lock_guard lock(seenMutex);
    seenEvents << QString("%1:%2").arg(type).arg(availableCount());
    seenThread = std::this_thread::get_id();
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

int removeItselfAndFail(int, void*)
{
    ++calls;
    unregisterResult = QRVL_DevSrv_UnRegisterDevInitEventCallback(&removeItselfAndFail);
    throw std::runtime_error("oops");
}

QStringList takeSeen()
{
    const std::lock_guard lock(seenMutex);
    return std::exchange(seenEvents, {});
}

/// The events that come until the service has looked once more.
QStringList eventsUntil(const QString& last)
{
    QStringList events;
    for (int i = 0; i < 500 && !events.contains(last); ++i) {
        QTest::qWait(10);
        events << takeSeen();
    }
    return events;
}

/// A value as the caller gets it; the result's number when that is no success.
QString value(uint32_t device, const char16_t* key)
{
    char16_t* buffer = nullptr;
    const long result = QRVL_DevSrv_GetStatusValue(device, key, &buffer);
    const std::unique_ptr<char16_t[]> owned(buffer);
    return result == QRVL_OK ? QString::fromUtf16(buffer) : QString::number(result) + (buffer ? "!" : "");
}

Modem modem(quint32 id, Modem::State state = Modem::Attached, const QString& gid = {},
            const ModemValues& status = {}, const ModemValues& messages = {})
{
    return {id, "name", "model", {}, gid, {}, {}, state, status, messages, {}, 0};
}

} // namespace

class tst_DeviceService : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void eventsOfChange();
    void liveChanges();
    void brokenFileKeepsModems();
    void tooManyModems();
    void detection();
    void recordHoldsModem();
    void statusValues();
    void transferredBytes();
    void textsAreCut();
    void unregisterWaitsForCallback();
    void callbackMayUnregisterItselfAndThrow();
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

void tst_DeviceService::eventsOfChange()
{
    constexpr int invalid = QRVL_EVENT_DEV_DEVICE_INVALID;
    constexpr int reject = QRVL_EVENT_DEV_REJECT;
    constexpr int detected = QRVL_EVENT_DEV_DETECTED;
    const Modem one = modem(1), oneOff = modem(1, Modem::Detached), oneRejected = modem(1, Modem::Rejected);
    const Modem two = modem(2), twoRejected = modem(2, Modem::Rejected);
    const Modem working = modem(1, Modem::Attached, {}, {{"signal", "1"}}, {{"messages", "1"}});
    const std::tuple<const char*, Modems, Modems, QVector<int>> rows[] = {
        {"nothing", {one}, {one}, {}},
        {"attach", {oneOff}, {one}, {detected}},
        {"second", {one}, {one, two}, {detected}},
        {"detach", {one}, {oneOff}, {invalid, detected}},
        {"no longer there", {one, two}, {}, {invalid, detected}},
        {"exchange", {one}, {two}, {invalid, detected}},
        {"another SIM", {one}, {modem(1, Modem::Attached, "b")}, {detected}},
        {"reject attached", {one}, {oneRejected}, {reject, detected}},
        {"reject detached", {oneOff}, {oneRejected}, {reject}},
        {"reject new beside another", {one}, {one, twoRejected}, {reject}},
        {"reject one, other gone", {one, two}, {oneRejected}, {invalid, reject, detected}},
        {"rejected goes", {oneRejected}, {}, {}},
        {"detached changes", {oneOff}, {modem(1, Modem::Detached, "b")}, {}},
        {"status", {working}, {modem(1, {}, {}, {}, working.messages)}, {QRVL_EVENT_DEV_STATUS}},
        {"message of the second",
         {two, one},
         {two, modem(1, {}, {}, {}, {{"messages", "1"}})},
         {QRVL_EVENT_DEV_MESSAGES}},
        {"attached with values", {oneOff}, {working}, {detected}},
    };
    for (const auto& [name, before, after, events] : rows) {
        QVERIFY2(eventsBetween(before, after, false) == events, name);
        // When somebody has asked, there is an answer in any case, in its place.
        QVector<int> answer = events;
        const auto place = std::find_if(answer.begin(), answer.end(), [](int e) { return e >= detected; });
        if (!events.contains(detected))
            answer.insert(place, detected);
        QVERIFY2(eventsBetween(before, after, true) == answer, name);
    }
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
    for (const char* content : {"[modem One]\nmodel=One\nsta", "[modem One]\nstate=attached\n",
                                "[modem One]\nmodel=One\nstate=attached\n[message a b]\n"}) {
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
    QCOMPARE(eventsUntil("6606:0"), QStringList("6606:0"));
    QVERIFY(timer.elapsed() >= 250);
    QVERIFY(seenThread != std::this_thread::get_id());
    for (int i = 0; i < 10000; ++i)
        QRVL_DevSrv_StartDetect();
    QTest::qWait(1500);
    QCOMPARE(takeSeen().size(), 2);
}

void tst_DeviceService::recordHoldsModem()
{
    describe("[modem 1]\nmodel = Lume, \"V2\"\nimsi=262011234567890\ngid=NT-GOLD\ncustomize=north\xc3\xa9\n"
             "port=sim2\nstate=attached\n[modem 2]\nmodel=Other\nimsi=1\nstate=attached\n");
    QCOMPARE(eventsUntil("6606:2"), QStringList("6606:2"));
    std::vector<char> bytes(QRVL_AVAILABLE_DEVICE_LIST_SIZE, '\x7f');
    auto* const list = reinterpret_cast<QRVL_AvailableDeviceList*>(bytes.data());
    QCOMPARE(QRVL_DevSrv_GetAvailableDeviceList(list), long(QRVL_OK));
    QCOMPARE(list->count, 2u);
    QCOMPARE(bytes.data() + 12, "Lume, \"V2\""); // other programs know the places
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
    const uint32_t id = firstId();
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
    const QString file = "[modem T]\nmodel=T\nstate=%1\nreceived=5\nreceive-rate=%2\n";
    const auto describeRate = [&](const char* state, const char* rate) {
        describe(file.arg(state, rate).toUtf8());
    };
    describeRate("attached", "1000");
    QTRY_COMPARE(availableCount(), 1u);
    const auto received = [id = firstId()] {
        return value(id, u"received").toInt();
    };
    QTRY_VERIFY(received() >= 2005);
    QCOMPARE(received() % 1000, 5);
    describeRate("attached", "0");
    QTRY_COMPARE(value(firstId(), u"receive-rate"), "0");
    QVERIFY(received() >= 2005);
    describeRate("detached", "0");
    QTRY_COMPARE(availableCount(), 0u);
    describeRate("attached", "0");
    QTRY_COMPARE(availableCount(), 1u);
    QCOMPARE(received(), 5);
}

void tst_DeviceService::textsAreCut()
{
    const std::tuple<const char*, QByteArray> rows[] = {
        {"1234567", "1234567"},
        {"12345678", "1234567"},
        {"123456\xc3\xa4", "123456"},     // two bytes
        {"1234\xf0\x9f\x93\xb6", "1234"}, // surrogates
        {"123\xf0\x9f\x93\xb6", "123\xf0\x9f\x93\xb6"},
        {"1234567\xf0\x9f\x93\xb6", "1234567"},
    };
    for (const auto& [text, expected] : rows) {
        char buffer[8];
        std::memset(buffer, 'x', sizeof buffer);
        DeviceRecord::fillText(QString::fromUtf8(text), &DeviceRecord::inUtf8, buffer, sizeof buffer);
        QCOMPARE(QByteArray(buffer, 8), expected.leftJustified(8, '\0'));
    }
}

void tst_DeviceService::unregisterWaitsForCallback()
{
    QRVL_DevSrv_RegisterDevInitEventCallback(&linger);
    QRVL_DevSrv_StartDetect();
    QTRY_VERIFY(isInside);
    QCOMPARE(QRVL_DevSrv_UnRegisterDevInitEventCallback(&linger), long(QRVL_OK));
    QVERIFY(!isInside);
    QCOMPARE(calls.load(), 1);
}

void tst_DeviceService::callbackMayUnregisterItselfAndThrow()
{
    LogCapture log;
    QRVL_DevSrv_RegisterDevInitEventCallback(&removeItselfAndFail);
    for (int i = 0; i < 2; ++i) {
        QRVL_DevSrv_StartDetect();
        QCOMPARE(eventsUntil("6606:0"), QStringList("6606:0"));
        QCOMPARE(calls.load(), 1);
    }
    QCOMPARE(unregisterResult, long(QRVL_OK));
    QCOMPARE(log.count("A callback threw at event 6606: oops"), 1);
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

    // Nothing is called: there is no event meanwhile.
    for (quintptr i = 1; i <= 33; ++i)
        QCOMPARE(QRVL_DevSrv_RegisterDevInitEventCallback(reinterpret_cast<QRVL_DevCallback>(i)),
                 long(i <= 32 ? QRVL_OK : QRVL_ERROR_LIMIT));
    for (quintptr i = 1; i <= 33; ++i)
        QCOMPARE(QRVL_DevSrv_UnRegisterDevInitEventCallback(reinterpret_cast<QRVL_DevCallback>(i)),
                 long(i <= 32 ? QRVL_OK : QRVL_ERROR_NOT_FOUND));
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
