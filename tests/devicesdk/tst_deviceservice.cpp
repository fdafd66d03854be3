#include "DeviceClient.h"
#include "LogCapture.h"
#include "ReplaceFile.h"
#include "Samples.h"
#include "devices/CounterReport.h"
#include "devices/DeviceRecord.h"
#include "devices/DeviceService.h"

#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <future>
#include <stdexcept>
#include <utility>

using namespace DeviceClient;
using namespace std::chrono_literals;

namespace {

std::atomic<long> unregisterResult{-1};
std::promise<void> isInside;
std::promise<void> mayReturn;

int linger(int, void*)
{
    isInside.set_value(); // throws if it is called again
    mayReturn.get_future().wait();
    return 1;
}

int removeItselfAndFail(int, void*)
{
    unregisterResult = QRVL_DevSrv_UnRegisterDevInitEventCallback(&removeItselfAndFail);
    throw std::runtime_error("oops");
}

/// The simulator's file for "<model> <state> [<key>=<value> ...]; ...".
QByteArray simulatorFile(const QString& modems)
{
    QStringList lines;
    for (const QString& modem : modems.split("; ", Qt::SkipEmptyParts)) {
        const QStringList words = modem.split(' ');
        lines << "[modem " + words[0] + "]"
              << "model=" + words[0] << "state=" + words[1] << words.mid(2);
    }
    return (lines.join('\n') + '\n').toUtf8();
}

} // namespace

class tst_DeviceService : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qputenv("QRVL_SIMULATOR_FILE", m_folder.filePath("simulator.ini").toUtf8()); }
    void init();

    void eventsOfChanges();
    void brokenFileKeepsModems();
    void tooManyModems();
    void detection();
    void recordHoldsModem();
    void statusValues();
    void counters();
    void callbacks();
    void callbacksAreRemoved();

private:
    /// Writes the simulator's file and returns the events up to `last`.
    QStringList describe(const QByteArray& content, const QString& last) const
    {
        replaceFile(m_folder.filePath("simulator.ini"), content);
        return last.isEmpty() ? QStringList() : eventsUntil(last);
    }

    QTemporaryDir m_folder;
};

void tst_DeviceService::init()
{
    listen();
    if (!modems().isEmpty())
        describe({}, "6606:0");
    takeEvents();
}

/// During each event the list of modems is already the new one. Each change also adds a message, which is
/// reported last, so that it is known when all events have been sent.
void tst_DeviceService::eventsOfChanges()
{
    describe(simulatorFile("Zero attached"), "6606:1");
    int message = 0;
    for (const QStringList& row : tableIn(DATA "/modem_events.txt")) {
        const QString last = QString("6612:%1").arg(row[0].count("attached") + 1);
        const QByteArray file = simulatorFile("Zero attached; " + row[0]) + "[message " +
                                QByteArray::number(++message) + "]\nmodem=Zero\n";
        QCOMPARE(row[0] + ": " + describe(file, last).join(' '),
                 row[0] + ": " + (row[1] + ' ' + last).trimmed());
    }
    QVERIFY(QFile::remove(m_folder.filePath("simulator.ini")));
    QCOMPARE(eventsUntil("6606:0"), QStringList({"6601:0", "6606:0"}));
}

void tst_DeviceService::brokenFileKeepsModems()
{
    LogCapture log;
    const QByteArray modem = simulatorFile("One attached");
    describe(modem, "6606:1");
    for (const char* rest :
         {"sta", "[modem Two]\nstate=attached\n", "[message a b]\n", "imsi=1x\n", "signal=101\n",
          "network=1234\n", "sent=1e3\n", "answer-time=5000\n", "state=on\n"}) {
        log.clear();
        describe(modem + rest, {});
        QVERIFY2(log.waitFor("Simulator file {*} is ignored while {*}"), rest);
        QCOMPARE(modems().size(), 1);
    }
}

void tst_DeviceService::tooManyModems()
{
    LogCapture log;
    QString many;
    for (int i = 0; i < 20; ++i)
        many += QString("Model%1 attached; ").arg(i);
    QCOMPARE(describe(simulatorFile(many), "6606:16"), QStringList("6606:16"));
    QVERIFY(log.contains("Simulator file {*} attaches 20 modems; the first 16 are available"));
    QCOMPARE(modems()[15].name, "Model15");
    describe(simulatorFile(many + "Model16 attached signal=1"), {}); // is not available
    QCOMPARE(describe({}, "6606:0"), QStringList({"6601:0", "6606:0"}));
}

/// The caller has time to wait for the answer, which comes on another thread.
void tst_DeviceService::detection()
{
    QElapsedTimer timer;
    timer.start();
    QRVL_DevSrv_StartDetect();
    QCOMPARE(eventsUntil("6606:0"), QStringList("6606:0"));
    QVERIFY(timer.elapsed() >= 250);
    for (int i = 0; i < 100; ++i)
        QRVL_DevSrv_StartDetect();
    QStringList events = eventsUntil("6606:0");
    if (events.size() < 2)
        events << eventsUntil("6606:0");
    events << describe(simulatorFile("One attached"), "6606:1");
    QCOMPARE(events, QStringList({"6606:0", "6606:0", "6606:1"}));
}

void tst_DeviceService::recordHoldsModem()
{
    describe("[modem 1]\nmodel = Lume, \"V2\"\nimsi=262011234567890\ngid=NT-GOLD\ncustomize=north\xc3\xa9\n"
             "port=sim2\nstate=attached\n[modem 2]\nmodel=Other\nimsi=1\nstate=attached\n",
             "6606:2");
    QRVL_AvailableDeviceList list;
    std::memset(&list, 0x7f, sizeof list);
    QRVL_DevSrv_GetAvailableDeviceList(&list);
    const QRVL_Device& first = list.devices[0];
    const auto* const bytes = reinterpret_cast<const char*>(&list);
    QCOMPARE(list.count, 2u);
    const QStringList fields = {bytes + 12, first.imsi, first.gid, first.port}; // others rely on the offset
    QCOMPARE(fields, QStringList({"Lume, \"V2\"", "262011234567890", "NT-GOLD", "sim2"}));
    QCOMPARE(QString::fromLocal8Bit(first.customizeName), QString::fromUtf8("north\xc3\xa9"));
    QVERIFY(first.id != list.devices[1].id);
    const auto* const rest = bytes + 4 + 2 * sizeof first;
    QCOMPARE(std::count(rest, bytes + sizeof list, '\0'), bytes + sizeof list - rest);

    const auto texts = [] {
        char name[QRVL_CUSTOMIZE_NAME_SIZE], imsi[QRVL_IMSI_SIZE];
        const long results[] = {QRVL_DevSrv_GetCustomizeName(name), QRVL_DevSrv_GetImsiInfo(imsi)};
        return QString("%1:%2 %3:%4").arg(results[0]).arg(name).arg(results[1]).arg(imsi);
    };
    QCOMPARE(texts(), QString::fromUtf8("0:north\xc3\xa9 0:262011234567890"));
    describe(simulatorFile("WithoutSim attached"), "6606:1");
    QCOMPARE(texts(), QString("0:common 4:"));
    describe({}, "6606:0");
    QCOMPARE(texts(), QString("0:common 4:"));

    const std::pair<QByteArray, int> cuts[] = {
        {"1234567", 7},
        {"12345678", 7},
        {"123456\xc3\xa4", 6},
        {"1234\xf0\x9f\x93\xb6", 4},
        {"123\xf0\x9f\x93\xb6", 7},
        {"1234567\xf0\x9f\x93\xb6", 7},
    };
    for (const auto& [text, length] : cuts) {
        QByteArray buffer(8, 'x');
        DeviceRecord::fillText(QString::fromUtf8(text), &DeviceRecord::inUtf8, buffer.data(), buffer.size());
        QCOMPARE(buffer, text.left(length).leftJustified(8, '\0'));
    }
}

void tst_DeviceService::statusValues()
{
    const QByteArray file = simulatorFile("A attached signal=7 sent=5 answer-time=40; B detached") +
                            "[message b]\nmodem=A\nsender=+1\ntext=1\\n\xc3\xa9\n[message a]\nmodem=A\n"
                            "[message c]\nmodem=B\n";
    describe(file, "6606:1");
    const QString before = values({"signal", "network", "sent", "received", "message.c.text"});
    QElapsedTimer timer;
    timer.start();
    const QString texts = values({"messages", "message.b.sender", "message.a.text", "message.b.text"});
    QVERIFY(timer.elapsed() >= 4 * 40 - 1);
    QCOMPARE(before + '|' + texts, QString::fromUtf8("7 2 5 2 2|b a +1  1\n\xc3\xa9"));
    QCOMPARE(value("signal", modemId() + 1000), QString::number(QRVL_ERROR_NO_DEVICE));
    describe(QByteArray(file).replace("=7", "=9").replace("[message a]", "[message d]"), "6612:1");
    QCOMPARE(values({"signal", "messages"}), "9 b d");
}

/// They grow while the modem is attached, whatever else changes, and start anew when it is attached again.
void tst_DeviceService::counters()
{
    const Counter::Clock::time_point start = Counter::Clock::now();
    Counter counter{5, 1000, 0, start};
    Counter next{7, 10, 0, start};
    next.resume(counter, start + 2500ms);
    const QVector<quint64> counted = {counter.valueAt(start + 1999ms), next.valueAt(start + 2500ms),
                                      next.valueAt(start + 3s)}; // full seconds stay the same
    QCOMPARE(counted, QVector<quint64>({1005, 2007, 2017}));
    CounterReport report;
    QVERIFY(report.next() == Counter::Clock::time_point::max());
    QVERIFY(report.noteReading(start) && !report.noteReading(start));
    QVERIFY(report.next() == start + 1s && !report.take(start + 999ms));
    QVERIFY(report.take(start + 1s) && report.next() == start + 2s);
    QVERIFY(!report.take(start + 2s)); // nobody has read it since
    QVERIFY(report.next() == Counter::Clock::time_point::max());

    const QByteArray file = simulatorFile("T attached received=5 receive-rate=1000");
    const QByteArray still = QByteArray(file).replace("1000", "0");
    describe(file, "6606:1");
    const auto received = [] {
        return value("received").toInt();
    };
    QVERIFY(received() % 1000 == 5);
    QCOMPARE(eventsUntil("6611:1"), QStringList("6611:1")); // because somebody reads it
    QVERIFY(received() >= 1005);
    describe(still, "6611:1");
    QVERIFY(received() >= 1005);
    describe(QByteArray(still).replace("att", "det"), "6606:0");
    describe(still, "6606:1");
    QCOMPARE(received(), 5);
}

/// Removing one waits until it has returned, unless the callback itself does it.
void tst_DeviceService::callbacksAreRemoved()
{
    LogCapture log;
    QRVL_DevSrv_RegisterDevInitEventCallback(&removeItselfAndFail);
    QRVL_DevSrv_RegisterDevInitEventCallback(&linger);
    QRVL_DevSrv_StartDetect();
    QVERIFY(isInside.get_future().wait_for(10s) == std::future_status::ready);
    std::future<long> result =
        std::async(std::launch::async, [] { return QRVL_DevSrv_UnRegisterDevInitEventCallback(&linger); });
    QVERIFY(result.wait_for(50ms) == std::future_status::timeout);
    mayReturn.set_value();
    QCOMPARE(result.get() + unregisterResult, long(QRVL_OK));
    describe(simulatorFile("One attached"), "6606:1");
    QCOMPARE(log.count("A callback threw at event 6606: {*}"), 1);
}

/// A callback in both lists is called once, and as long as one of them holds it.
void tst_DeviceService::callbacks()
{
    for (int i = 0; i < 2; ++i)
        QCOMPARE(QRVL_DevSrv_RegisterDevInitEventCallback(&record), long(QRVL_OK));
    QCOMPARE(describe(simulatorFile("One attached"), "6606:1"), QStringList("6606:1"));
    QCOMPARE(QRVL_DevSrv_UnRegisterDevMgrCallback(&record), long(QRVL_OK));
    QCOMPARE(describe({}, "6606:0"), QStringList({"6601:0", "6606:0"}));
    QCOMPARE(QRVL_DevSrv_UnRegisterDevInitEventCallback(&record), long(QRVL_OK));
    // These are not called, because nothing happens meanwhile.
    for (const auto& [operation, failure] :
         {std::make_pair(&QRVL_DevSrv_RegisterDevInitEventCallback, QRVL_ERROR_LIMIT),
          std::make_pair(&QRVL_DevSrv_UnRegisterDevInitEventCallback, QRVL_ERROR_NOT_FOUND)}) {
        for (quintptr i = 1; i <= 33; ++i)
            QCOMPARE(operation(reinterpret_cast<QRVL_DevCallback>(i)), long(i <= 32 ? QRVL_OK : failure));
    }
    char16_t* buffer = nullptr;
    for (const long result :
         {QRVL_DevSrv_RegisterDevMgrCallback(nullptr), QRVL_DevSrv_UnRegisterDevMgrCallback(nullptr),
          QRVL_DevSrv_GetAvailableDeviceList(nullptr), QRVL_DevSrv_GetCustomizeName(nullptr),
          QRVL_DevSrv_GetImsiInfo(nullptr), QRVL_DevSrv_GetStatusValue(1, u"signal", nullptr),
          QRVL_DevSrv_GetStatusValue(1, nullptr, &buffer)})
        QCOMPARE(result, long(QRVL_ERROR_ARGUMENT));
}

QTEST_GUILESS_MAIN(tst_DeviceService)
#include "tst_deviceservice.moc"
