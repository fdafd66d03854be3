#include "LogCapture.h"
#include "devices/CounterReport.h"
#include "devices/DeviceRecord.h"
#include "devices/DeviceService.h"
#include "files/FileAccess.h"
#include "qrvl.h"

#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <future>
#include <memory>
#include <stdexcept>
#include <tuple>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto LongestWait = 10s;

std::mutex seenMutex;
std::condition_variable seenMore;
QStringList seenEvents; // as "event:number of modems at that moment"
std::thread::id seenThread;
std::atomic<int> calls{0};
std::atomic<long> unregisterResult{-1};
std::promise<void> isInside;
std::promise<void> mayReturn;

QRVL_AvailableDeviceList available()
{
    QRVL_AvailableDeviceList list;
    std::memset(&list, 0x7f, sizeof list);
    return QRVL_DevSrv_GetAvailableDeviceList(&list) == QRVL_OK ? list : QRVL_AvailableDeviceList{~0u, {}};
}

int record(int type, void*)
{
    const std::lock_guard lock(seenMutex);
    seenEvents << QString("%1:%2").arg(type).arg(available().count);
    seenThread = std::this_thread::get_id();
    seenMore.notify_all();
    return 1;
}

int linger(int, void*)
{
    if (calls++ == 0) {
        isInside.set_value();
        mayReturn.get_future().wait();
    }
    return 1;
}

int removeItselfAndFail(int, void*)
{
    ++calls;
    unregisterResult = QRVL_DevSrv_UnRegisterDevInitEventCallback(&removeItselfAndFail);
    throw std::runtime_error("oops");
}

/// The events up to this one, which it waits for.
QStringList eventsUntil(const QString& last)
{
    std::unique_lock lock(seenMutex);
    seenMore.wait_for(lock, LongestWait, [&] { return seenEvents.contains(last); });
    return std::exchange(seenEvents, {});
}

/// A value as the caller gets it; the number of the result if that is not success.
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
    void initTestCase() { qputenv("QRVL_SIMULATOR_FILE", m_folder.filePath("simulator.ini").toUtf8()); }
    void init();
    void cleanup() { QRVL_DevSrv_UnRegisterDevMgrCallback(&record); }

    void eventsOfChange();
    void liveChanges();
    void brokenFileKeepsModems();
    void tooManyModems();
    void detection();
    void recordHoldsModem();
    void statusValues();
    void counters();
    void transferredBytes();
    void textsAreCut();
    void unregisterWaitsForCallback();
    void callbackMayUnregisterItselfAndThrow();
    void placesForCallbacks();
    void arguments();

private:
    QStringList describe(const QByteArray& content, const QString& last) const;
    QStringList attach(const QStringList& models) const;

    QTemporaryDir m_folder;
};

/// Writes the simulator's file and returns the events up to `last`.
QStringList tst_DeviceService::describe(const QByteArray& content, const QString& last) const
{
    QString error;
    const bool isWritten = FileAccess::replace(m_folder.filePath("simulator.ini"), content, error);
    return isWritten && !last.isEmpty() ? eventsUntil(last) : QStringList();
}

QStringList tst_DeviceService::attach(const QStringList& models) const
{
    QByteArray content;
    for (const QString& model : models)
        content += QString("[modem %1]\nmodel=%1\nstate=attached\n").arg(model).toUtf8();
    return describe(content, QString("6606:%1").arg(std::min(models.size(), 16)));
}

void tst_DeviceService::init()
{
    calls = 0;
    QCOMPARE(QRVL_DevSrv_RegisterDevMgrCallback(&record), long(QRVL_OK));
    if (available().count > 0)
        QVERIFY(attach({}).contains("6606:0"));
    seenEvents.clear();
}

void tst_DeviceService::eventsOfChange()
{
    constexpr int invalid = QRVL_EVENT_DEV_DEVICE_INVALID;
    constexpr int reject = QRVL_EVENT_DEV_REJECT;
    constexpr int detected = QRVL_EVENT_DEV_DETECTED;
    const Modem one = modem(1), oneOff = modem(1, Modem::Detached), oneRejected = modem(1, Modem::Rejected);
    const Modem two = modem(2), twoRejected = modem(2, Modem::Rejected);
    const Modem working = modem(1, Modem::Attached, {}, {{"signal", "1"}}, {{"messages", "1"}});
    Modem counting = working;
    counting.counters["sent"].rate = 1;
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
        {"rejected is removed", {oneRejected}, {}, {}},
        {"detached changes", {oneOff}, {modem(1, Modem::Detached, "b")}, {}},
        {"status", {working}, {modem(1, {}, {}, {}, working.messages)}, {QRVL_EVENT_DEV_STATUS}},
        {"message of the second",
         {two, one},
         {two, modem(1, {}, {}, {}, {{"messages", "1"}})},
         {QRVL_EVENT_DEV_MESSAGES}},
        {"attached with values", {oneOff}, {working}, {detected}},
        {"counters", {working}, {counting}, {}},
    };
    for (const auto& [name, before, after, events] : rows) {
        QVERIFY2(eventsBetween(before, after, false) == events, name);
        // A request is answered in any case, in the same order.
        QVector<int> answer = events;
        const auto place = std::find_if(answer.begin(), answer.end(), [](int e) { return e >= detected; });
        if (!events.contains(detected))
            answer.insert(place, detected);
        QVERIFY2(eventsBetween(before, after, true) == answer, name);
    }
}

/// During each event the list of modems is already the new one.
void tst_DeviceService::liveChanges()
{
    QCOMPARE(attach({"One", "Two"}), QStringList("6606:2"));
    QCOMPARE(attach({"Two"}), QStringList({"6601:1", "6606:1"}));
    QCOMPARE(describe("[modem Two]\nmodel=Two\nstate=rejected\n", "6606:0"),
             QStringList({"6016:0", "6606:0"}));
    QCOMPARE(attach({"Two"}), QStringList("6606:1"));
    QVERIFY(QFile::remove(m_folder.filePath("simulator.ini")));
    QCOMPARE(eventsUntil("6606:0"), QStringList({"6601:0", "6606:0"}));
}

void tst_DeviceService::brokenFileKeepsModems()
{
    LogCapture log;
    attach({"One"});
    const QByteArray modem = "[modem One]\nmodel=One\nstate=attached\n";
    for (const char* rest :
         {"sta", "[modem Two]\nstate=attached\n", "[message a b]\n", "imsi=1x\n", "signal=101\n",
          "network=1234\n", "sent=1e3\n", "answer-time=5000\n", "state=on\n"}) {
        log.clear();
        describe(modem + rest, {});
        QVERIFY2(log.waitFor("Simulator file {*} is ignored while {*}"), rest);
        QCOMPARE(available().count, 1u);
    }
}

void tst_DeviceService::tooManyModems()
{
    LogCapture log;
    QStringList models;
    for (int i = 0; i < 20; ++i)
        models << QString("Model %1").arg(i);
    QCOMPARE(attach(models), QStringList("6606:16"));
    QVERIFY(log.contains("Simulator file {*} attaches 20 modems; the first 16 are available"));
    QCOMPARE(available().devices[15].name, "Model 15");
}

/// The caller has time to wait for the answer, which comes on another thread.
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
    QStringList events = eventsUntil("6606:0");
    events << eventsUntil("6606:0") << attach({"One"});
    QCOMPARE(events, QStringList({"6606:0", "6606:0", "6606:1"}));
}

void tst_DeviceService::recordHoldsModem()
{
    describe("[modem 1]\nmodel = Lume, \"V2\"\nimsi=262011234567890\ngid=NT-GOLD\ncustomize=north\xc3\xa9\n"
             "port=sim2\nstate=attached\n[modem 2]\nmodel=Other\nimsi=1\nstate=attached\n",
             "6606:2");
    const QRVL_AvailableDeviceList list = available();
    const auto* const bytes = reinterpret_cast<const char*>(&list);
    QCOMPARE(list.count, 2u);
    QCOMPARE(bytes + 12, "Lume, \"V2\""); // other programs rely on the offset
    QCOMPARE(list.devices[0].imsi, "262011234567890");
    QCOMPARE(list.devices[0].gid, "NT-GOLD");
    QCOMPARE(QString::fromLocal8Bit(list.devices[0].customizeName), QString::fromUtf8("north\xc3\xa9"));
    QCOMPARE(list.devices[0].port, "sim2");
    QVERIFY(list.devices[0].id != list.devices[1].id);
    QVERIFY(
        std::all_of(bytes + 4 + 2 * sizeof(QRVL_Device), bytes + sizeof list, [](char c) { return c == 0; }));

    char text[QRVL_CUSTOMIZE_NAME_SIZE];
    QCOMPARE(QRVL_DevSrv_GetCustomizeName(text), long(QRVL_OK));
    QCOMPARE(text, "north\xc3\xa9");
    QCOMPARE(QRVL_DevSrv_GetImsiInfo(text), long(QRVL_OK));
    QCOMPARE(text, "262011234567890");
    attach({"Without SIM"});
    QCOMPARE(QRVL_DevSrv_GetImsiInfo(text), long(QRVL_ERROR_NO_DEVICE));
    QCOMPARE(QRVL_DevSrv_GetCustomizeName(text), long(QRVL_OK));
    QCOMPARE(text, "");
    attach({});
    QCOMPARE(QRVL_DevSrv_GetCustomizeName(text), long(QRVL_ERROR_NO_DEVICE));
}

void tst_DeviceService::statusValues()
{
    describe(
        "[modem A]\nmodel=X\nstate=attached\nsignal=7\nsent=5\nanswer-time=40\n[message "
        "b]\nmodem=A\nsender=+1\n"
        "text=1\\n\xc3\xa9\n[message a]\nmodem=A\n[message c]\nmodem=B\n[modem B]\nmodel=Y\nstate=detached\n",
        "6606:1");
    const uint32_t id = available().devices[0].id;
    const QString notFound = QString::number(QRVL_ERROR_NOT_FOUND);
    const std::tuple<const char16_t*, QString> rows[] = {
        {u"signal", "7"},
        {u"network", notFound},
        {u"sent", "5"},
        {u"received", notFound},
        {u"messages", "b a"},
        {u"message.b.sender", "+1"},
        {u"message.a.text", ""},
        {u"message.c.text", notFound},
        {u"message.b.text", QString::fromUtf8("1\n\xc3\xa9")},
    };
    for (const auto& [key, expected] : rows) {
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(value(id, key), expected);
        QVERIFY(expected == notFound || key[0] != u'm' || timer.elapsed() >= 39);
    }
    QCOMPARE(value(id + 1000, u"signal"), QString::number(QRVL_ERROR_NO_DEVICE));
    QCOMPARE(
        describe("[modem A]\nmodel=X\nstate=attached\nsignal=9\n[message b]\nmodem=A\ntext=1\n", "6612:1"),
        QStringList({"6611:1", "6612:1"}));
    QCOMPARE(value(id, u"signal"), "9");
    QCOMPARE(value(id, u"messages"), "b");
}

void tst_DeviceService::counters()
{
    const Counter::Clock::time_point start = Counter::Clock::now();
    Counter counter{5, 1000, 0, start};
    QCOMPARE(counter.valueAt(start + 1999ms), quint64(1005));
    Counter next{7, 10, 0, start};
    next.resume(counter, start + 2500ms);
    QCOMPARE(next.valueAt(start + 2500ms), quint64(2007));
    QCOMPARE(next.valueAt(start + 3s), quint64(2017)); // full seconds stay the same

    CounterReport report;
    QVERIFY(report.next() == Counter::Clock::time_point::max());
    QVERIFY(report.noteReading(start) && !report.noteReading(start));
    QVERIFY(report.next() == start + 1s && !report.take(start + 999ms));
    QVERIFY(report.take(start + 1s) && report.next() == start + 2s);
    QVERIFY(!report.take(start + 2s)); // nobody has read it since
    QVERIFY(report.next() == Counter::Clock::time_point::max());
}

/// They grow while the modem is attached, whatever else changes, and start anew when it is attached again.
void tst_DeviceService::transferredBytes()
{
    const QByteArray file = "[modem T]\nmodel=T\nstate=attached\nreceived=5\nreceive-rate=";
    describe(file + "1000\n", "6606:1");
    const auto received = [id = available().devices[0].id] {
        return value(id, u"received").toInt();
    };
    QVERIFY(received() % 1000 == 5);
    QCOMPARE(eventsUntil("6611:1"), QStringList("6611:1")); // because somebody reads it
    QVERIFY(received() >= 1005);
    describe(file + "0\n", "6611:1");
    QVERIFY(received() >= 1005);
    describe(QByteArray(file).replace("att", "det") + "0\n", "6606:0");
    describe(file + "0\n", "6606:1");
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
    QVERIFY(isInside.get_future().wait_for(LongestWait) == std::future_status::ready);
    std::future<long> result =
        std::async(std::launch::async, [] { return QRVL_DevSrv_UnRegisterDevInitEventCallback(&linger); });
    QVERIFY(result.wait_for(50ms) == std::future_status::timeout);
    mayReturn.set_value();
    QCOMPARE(result.get(), long(QRVL_OK));
    attach({"One"});
    QCOMPARE(calls.load(), 1);
}

void tst_DeviceService::callbackMayUnregisterItselfAndThrow()
{
    LogCapture log;
    QRVL_DevSrv_RegisterDevInitEventCallback(&removeItselfAndFail);
    for (int i = 0; i < 2; ++i) {
        QRVL_DevSrv_StartDetect();
        QCOMPARE(eventsUntil("6606:0"), QStringList("6606:0"));
        QCOMPARE(log.count("A callback threw at event 6606: oops"), 1);
    }
    QCOMPARE(unregisterResult.load(), long(QRVL_OK));
    QCOMPARE(calls.load(), 1);
}

/// A callback in both lists is called once, and as long as one of them holds it.
void tst_DeviceService::placesForCallbacks()
{
    for (int i = 0; i < 2; ++i)
        QCOMPARE(QRVL_DevSrv_RegisterDevInitEventCallback(&record), long(QRVL_OK));
    QCOMPARE(attach({"One"}), QStringList("6606:1"));
    QCOMPARE(QRVL_DevSrv_UnRegisterDevMgrCallback(&record), long(QRVL_OK));
    QCOMPARE(attach({}), QStringList({"6601:0", "6606:0"}));
    for (const long result : {QRVL_OK, QRVL_ERROR_NOT_FOUND})
        QCOMPARE(QRVL_DevSrv_UnRegisterDevInitEventCallback(&record), result);
    // These are not called, because nothing happens meanwhile.
    for (quintptr i = 1; i <= 33; ++i)
        QCOMPARE(QRVL_DevSrv_RegisterDevInitEventCallback(reinterpret_cast<QRVL_DevCallback>(i)),
                 long(i <= 32 ? QRVL_OK : QRVL_ERROR_LIMIT));
    for (quintptr i = 1; i <= 33; ++i)
        QCOMPARE(QRVL_DevSrv_UnRegisterDevInitEventCallback(reinterpret_cast<QRVL_DevCallback>(i)),
                 long(i <= 32 ? QRVL_OK : QRVL_ERROR_NOT_FOUND));
}

void tst_DeviceService::arguments()
{
    for (const long result :
         {QRVL_DevSrv_RegisterDevMgrCallback(nullptr), QRVL_DevSrv_UnRegisterDevMgrCallback(nullptr),
          QRVL_DevSrv_GetAvailableDeviceList(nullptr), QRVL_DevSrv_GetCustomizeName(nullptr),
          QRVL_DevSrv_GetImsiInfo(nullptr), QRVL_DevSrv_GetStatusValue(1, u"signal", nullptr)})
        QCOMPARE(result, long(QRVL_ERROR_ARGUMENT));
    QCOMPARE(value(1, nullptr), QString::number(QRVL_ERROR_ARGUMENT));
}

QTEST_GUILESS_MAIN(tst_DeviceService)
#include "tst_deviceservice.moc"
