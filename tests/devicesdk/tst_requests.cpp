// Requests of simulated modems, through the C interface.

#include "files/FileAccess.h"
#include "files/IniDocument.h"
#include "qrvl.h"

#include <QTemporaryDir>
#include <QtTest>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <tuple>

using namespace std::chrono_literals;

namespace {

struct End
{
    long result = -1;
    QString text;
};

std::mutex seenMutex;
std::condition_variable seenMore;
QHash<uint32_t, End> seenEnds;
QStringList seenEvents; // with the connection at that moment
uint32_t modemId = 0;

/// A value of the modem; the number of the result if that is not success.
QString value(const QString& key, uint32_t device = modemId)
{
    char16_t* buffer = nullptr;
    const auto* const name = reinterpret_cast<const char16_t*>(key.utf16());
    const long result = QRVL_DevSrv_GetStatusValue(device, name, &buffer);
    const QString text = buffer ? QString::fromUtf16(buffer) : QString::number(result);
    delete[] buffer;
    return text;
}

int record(int type, void* data)
{
    const std::lock_guard lock(seenMutex);
    seenEvents << QString("%1:%2").arg(type).arg(value("connection"));
    if (type == QRVL_EVENT_DEV_REQUEST) {
        const auto* const end = static_cast<const QRVL_RequestEnd*>(data);
        seenEnds.insert(end->request, {end->result, QString::fromUtf16(end->text)});
    }
    seenMore.notify_all();
    return 1;
}

using Ask = std::function<long(uint32_t* request)>;

uint32_t started(const Ask& ask)
{
    uint32_t number = 0;
    const long result = ask(&number);
    return result == QRVL_OK && number != 0 ? number : 0;
}

End endOf(uint32_t number)
{
    std::unique_lock lock(seenMutex);
    seenMore.wait_for(lock, 20s, [&] { return seenEnds.contains(number); });
    return seenEnds.take(number);
}

/// The result of a request, with its text; "not started" and a number if it did not begin.
QString outcome(const Ask& ask)
{
    uint32_t number = 7;
    const long result = ask(&number);
    if (result != QRVL_OK)
        return QString("not started %1 %2").arg(result).arg(number);
    const End end = endOf(number);
    return QString("%1 %2").arg(end.result).arg(end.text).trimmed();
}

/// The result of a request, followed by values that the modem has then.
QString outcome(const Ask& ask, std::initializer_list<const char*> keys)
{
    QStringList words(outcome(ask));
    for (const char* const key : keys)
        words << value(key);
    return words.join(' ');
}

long connectModem(uint32_t* request)
{
    return QRVL_DevSrv_Connect(modemId, nullptr, request);
}

Ask pin(const char16_t* code)
{
    return [code](uint32_t* request) {
        return QRVL_DevSrv_EnterPin(modemId, code, request);
    };
}

Ask puk(const char16_t* code, const char16_t* newPin)
{
    return [=](uint32_t* request) {
        return QRVL_DevSrv_EnterPuk(modemId, code, newPin, request);
    };
}

Ask ussd(const char16_t* code)
{
    return [code](uint32_t* request) {
        return QRVL_DevSrv_SendUssd(modemId, code, request);
    };
}

Ask message(const char16_t* recipient, const char16_t* text)
{
    return [=](uint32_t* request) {
        return QRVL_DevSrv_SendMessage(modemId, recipient, text, request);
    };
}

Ask deletion(const QString& identifier)
{
    return [=](uint32_t* request) {
        return QRVL_DevSrv_DeleteMessage(modemId, reinterpret_cast<const char16_t*>(identifier.utf16()),
                                         request);
    };
}

long scanNetworks(uint32_t* request)
{
    return QRVL_DevSrv_ScanNetworks(modemId, request);
}

Ask registration(const char16_t* network)
{
    return [=](uint32_t* request) {
        return QRVL_DevSrv_Register(modemId, network, request);
    };
}

QRVL_AccessPoint homeOnly()
{
    return {u"internet", nullptr, u"secret", QRVL_CONNECT_HOME_ONLY, 0};
}

} // namespace

class tst_Requests : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void connection();
    void unlocking();
    void messages();
    void serviceCodes();
    void networks();
    void cancelled();
    void refusedAtOnce();
    void statesOfModems();

private:
    QString file() const { return m_folder.filePath("simulator.ini"); }

    /// Writes a modem with these lines in its section, and waits until it is there.
    void simulate(const QString& lines, const QString& others = {}) const;

    QString stored(const QString& key) const
    {
        const IniDocument document(FileAccess::read(file()).bytes);
        const QString* const found = document.find("modem A", key);
        return found ? *found : QString("none");
    }

    QTemporaryDir m_folder;
};

void tst_Requests::initTestCase()
{
    qputenv("QRVL_SIMULATOR_FILE", file().toUtf8());
    QCOMPARE(QRVL_DevSrv_RegisterDevMgrCallback(&record), long(QRVL_OK));
}

/// The next test begins with no request under way. On Windows the file cannot be removed while the service reads it.
void tst_Requests::cleanup()
{
    QTRY_VERIFY(QFile::remove(file()) || !QFile::exists(file()));
    QTRY_COMPARE(value("state", modemId), QString::number(QRVL_ERROR_NO_DEVICE));
}

void tst_Requests::simulate(const QString& lines, const QString& others) const
{
    static int mark = 0;
    const QString firmware = QString::number(++mark);
    QString error;
    QVERIFY(FileAccess::replace(file(),
                                ("[modem A]\nmodel=A\nstate=attached\nimsi=26201123\nrequest-time=30\n" +
                                 lines + "\nfirmware=" + firmware + '\n' + others)
                                    .toUtf8(),
                                error));
    const auto isThere = [&] {
        QRVL_AvailableDeviceList list;
        QRVL_DevSrv_GetAvailableDeviceList(&list);
        modemId = list.devices[0].id;
        return list.count == 1 && value("firmware") == firmware;
    };
    QTRY_VERIFY(isThere());
    const std::lock_guard lock(seenMutex);
    seenEvents.clear();
}

void tst_Requests::connection()
{
    const std::tuple<const char*, QString, bool, QString> rows[] = {
        {"home", "network=26201", false, "0: connected "},
        {"roaming", "network=20801", false, "0: connected "},
        {"roaming excluded", "network=20801", true, "14: disconnected 14"},
        {"home only", "network=26201", true, "0: connected "},
        {"refused", "network=26201\nfailure=refused", false, "12: disconnected 12"},
        {"access point", "network=26201\nfailure=access-point", false, "13: disconnected 13"},
        {"no coverage", "", false, "11: disconnected 11"},
        {"no SIM", "network=26201\nsim=absent", false, "7: disconnected 7"},
        {"locked", "network=26201\nsim=pin", false, "8: disconnected 8"},
        {"already", "connection=connected\nfailure=refused", false, "0: connected 2"},
    };
    for (const auto& [name, lines, isHomeOnly, expected] : rows) {
        simulate(lines + (lines.contains("connection") ? "" : "\nconnection=disconnected"));
        const QString result = outcome([&, isOnlyHome = isHomeOnly](uint32_t* request) {
            const QRVL_AccessPoint accessPoint = homeOnly();
            return QRVL_DevSrv_Connect(modemId, isOnlyHome ? &accessPoint : nullptr, request);
        });
        const QString since = value("connection.since");
        const QString shown = result + ": " + value("connection") + ' ' + value("connection.error");
        const QString all = since.size() > 5 ? QString(shown).remove(shown.size() - 1, 1) : shown;
        QCOMPARE(name + (": " + all), name + (": " + expected));
    }
    simulate("network=26201\nconnection=disconnected\nreceive-rate=1000");
    QCOMPARE(value("receive-rate"), "2");
    QCOMPARE(outcome(connectModem), "0");
    QCOMPARE(seenEvents, QStringList({"6611:connecting", "6611:connected", "6613:connected"}));
    QCOMPARE(value("receive-rate"), "1000");
    QCOMPARE(outcome([](uint32_t* request) { return QRVL_DevSrv_Disconnect(modemId, request); }), "0");
    QCOMPARE(value("connection") + stored("connection"), "disconnecteddisconnected");
}

/// Every row continues with what the previous one has left.
void tst_Requests::unlocking()
{
    simulate("sim=pin\npin=4711\npuk=87654321\npin-tries=3\npuk-tries=2\nnetwork=26201");
    const auto imsi = [] {
        char text[QRVL_IMSI_SIZE];
        QRVL_DevSrv_GetImsiInfo(text);
        return QString(text);
    };
    QCOMPARE(imsi() + value("network"), "2");
    const std::pair<Ask, QString> rows[] = {
        {pin(u"0000"), "9 pin 2 2"},
        {pin(u"471"), "not started 1 0 pin 2 2"},
        {pin(u"47111111x"), "not started 1 0 pin 2 2"},
        {puk(u"87654321", u"1111"), "2 pin 2 2"},
        {pin(u"4711"), "0 ready 3 2"},
        {pin(u"4711"), "2 ready 3 2"},
    };
    for (const auto& [ask, expected] : rows) {
        QCOMPARE(outcome(ask, {"sim", "pin-tries", "puk-tries"}), expected);
    }
    QCOMPARE(imsi() + value("network"), "2620112326201");
    simulate("sim=pin\npin=4711\npuk=87654321\npin-tries=1\npuk-tries=2");
    const std::pair<Ask, QString> blockedRows[] = {
        {pin(u"0000"), "10 puk 0 2"},
        {pin(u"4711"), "10 puk 0 2"},
        {puk(u"8765432", u"1111"), "not started 1 0 puk 0 2"},
        {puk(u"11111111", u"1111"), "9 puk 0 1"},
        {puk(u"87654321", u"1111"), "0 ready 3 10"},
    };
    for (const auto& [ask, expected] : blockedRows) {
        QCOMPARE(outcome(ask, {"sim", "pin-tries", "puk-tries"}), expected);
    }
    QCOMPARE(stored("pin"), "1111");
    simulate("sim=puk\npuk-tries=1");
    QCOMPARE(outcome(puk(u"00000000", u"1111"), {"sim"}), "10 blocked");
    QCOMPARE(outcome(puk(u"12345678", u"1111"), {"sim"}), "10 blocked");
}

void tst_Requests::messages()
{
    simulate("network=26201", "[message 1]\nmodem=A\nsender=+1\n\n[message 2]\nmodem=B\n");
    const QString text = QString("x").repeated(400) + QString::fromUtf8("\n\xd7\xa9\xf0\x9f\x93\xb6");
    const auto* const utf16 = reinterpret_cast<const char16_t*>(text.utf16());
    QCOMPARE(outcome(message(u"+49 (30) 123-4", utf16)), "0 3");
    QCOMPARE(value("messages") + '|' + value("sent-messages"), "1|3");
    QCOMPARE(value("message.3.text"), text);
    QCOMPARE(value("message.3.recipient") + value("message.1.state"), "+49301234received");
    QTRY_COMPARE(value("message.3.state"), "delivered");
    simulate("network=26201\nfailure=full", "[message 1]\nmodem=A\n[message 2]\nmodem=B\n");
    QCOMPARE(outcome(message(u"*1#", u"x"), {"message.3.state"}), "19 3 failed");
    QCOMPARE(outcome(deletion("2")), "2");
    for (const auto& [identifier, result] : {std::pair("1", "0"), std::pair("1", "2"), std::pair("3", "0")})
        QCOMPARE(outcome(deletion(identifier)), result);
    QCOMPARE(value("messages") + '|' + value("sent-messages"), "|");
    QVERIFY(FileAccess::read(file()).bytes.trimmed().endsWith("[message 2]\nmodem=B"));
}

void tst_Requests::serviceCodes()
{
    simulate("network=26201", "[ussd *1#]\nanswer=1: a\\n2: b\nasks=true\n[ussd *1# 2]\nanswer=B\n");
    QCOMPARE(outcome(ussd(u"*1#"), {"ussd"}), "0 1: a\n2: b reply");
    QCOMPARE(outcome(ussd(u"2"), {"ussd"}), "0 B idle");
    QCOMPARE(outcome(ussd(u"2"), {"ussd"}), "12 idle");
    QCOMPARE(outcome(ussd(u"*1#"), {"ussd"}), "0 1: a\n2: b reply");
    QCOMPARE(outcome([](uint32_t* request) { return QRVL_DevSrv_CancelUssd(modemId, request); }), "0");
    QCOMPARE(outcome(ussd(u"2"), {"ussd"}), "12 idle");
}

void tst_Requests::networks()
{
    const QString around = "[network 26201]\nname=Home\ntechnology=lte\n[network 26202]\nname=Other\n"
                           "[network 26207]\nforbidden=true\n[network 20801]\n";
    simulate("network=26203\nnetwork-name=Here\ntechnology=umts", around);
    QCOMPARE(outcome(scanNetworks), "0 26203\tcurrent\tumts\tHere\n26201\tavailable\tlte\tHome\n"
                                    "26202\tavailable\t\tOther\n26207\tforbidden");
    const std::pair<const char16_t*, QString> rows[] = {
        {u"26202", "0 26202 Other 2 manual"},
        {u"26207", "12 26202 Other 2 manual"},
        {u"26209", "11 26202 Other 2 manual"},
        {u"2620", "not started 1 0 26202 Other 2 manual"},
        {u"2620x", "not started 1 0 26202 Other 2 manual"},
        {nullptr, "0 26201 Home lte automatic"},
        {u"26201", "0 26201 Home lte manual"},
        {u"", "0 26201 Home lte automatic"},
    };
    for (const auto& [network, expected] : rows)
        QCOMPARE(outcome(registration(network), {"network", "network-name", "technology", "network-choice"}),
                 expected);
    simulate("sim=pin\nnetwork=26201", around);
    QCOMPARE(outcome(scanNetworks) + outcome(registration(nullptr)) + value("network-choice"), "882");
    simulate({}); // there is no network
    QCOMPARE(outcome(registration(nullptr)), "11");
    simulate("network=26201\nrequest-time=50000", around);
    QVERIFY(started(scanNetworks) != 0);
    QCOMPARE(outcome(registration(nullptr)), "not started 6 0");
}

/// Every request that was accepted ends exactly once, whatever happens to it.
void tst_Requests::cancelled()
{
    simulate("network=26201\nconnection=disconnected\nrequest-time=50000");
    uint32_t attempt = started(connectModem);
    QVERIFY(attempt != 0);
    QCOMPARE(outcome(connectModem), "not started 6 0");
    const uint32_t end = started([](uint32_t* request) { return QRVL_DevSrv_Disconnect(modemId, request); });
    QCOMPARE(endOf(attempt).result, long(QRVL_ERROR_CANCELLED));
    attempt = started(connectModem);
    const uint32_t dialogue = started(ussd(u"1"));
    QTRY_COMPARE(value("ussd"), "active");
    QString error;
    QVERIFY(FileAccess::replace(file(), "[modem A]\nmodel=A\nstate=failed\n", error));
    for (const uint32_t number : {end, attempt, dialogue})
        QCOMPARE(endOf(number).result, long(QRVL_ERROR_NO_DEVICE));
    QVERIFY(end != attempt && attempt != dialogue);
}

void tst_Requests::refusedAtOnce()
{
    simulate("network=26201\nrequest-time=50000");
    for (const Ask& ask :
         {message(u"12a", u"x"), message(u"", u"x"), message(u"+", u"x"), message(u"1+2", u"x"),
          message(nullptr, u"x"), message(u"1", u""), message(u"1", nullptr), pin(nullptr),
          puk(nullptr, u"1234"), puk(u"12345678", nullptr), puk(u"12345678", u"12"), ussd(u""), ussd(nullptr),
          deletion({})})
        QCOMPARE(outcome(ask), "not started 1 0");
    QCOMPARE(connectModem(nullptr), long(QRVL_ERROR_ARGUMENT));
    const uint32_t here = std::exchange(modemId, modemId + 100);
    QCOMPARE(outcome(connectModem), "not started 4 0");
    modemId = here;
    QVERIFY(started(pin(u"1234")) != 0);
    QCOMPARE(outcome(puk(u"12345678", u"1234")), "not started 6 0");
    for (int i = 0; i < 63; ++i)
        QVERIFY(started(message(u"1", u"x")) != 0);
    QCOMPARE(outcome(message(u"1", u"x")), "not started 5 0");
}

void tst_Requests::statesOfModems()
{
    const auto unusable = [] {
        QRVL_AvailableDeviceList list;
        QRVL_DevSrv_GetUnusableDeviceList(&list);
        QStringList states;
        for (uint32_t i = 0; i < list.count; ++i)
            states << QString(list.devices[i].name) + value("state", list.devices[i].id);
        return states.join(' ');
    };
    simulate("imsi=\nnetwork="); // and nothing of what was under way is left
    QCOMPARE(value("state") + value("sim") + value("registration"), "availableabsentsearching");
    simulate("network=20801", "[modem B]\nmodel=B\nstate=failed\n[modem C]\nmodel=C\nstate=rejected\n"
                              "[modem D]\nmodel=D\nstate=detached\n");
    QCOMPARE(value("sim") + value("registration") + value("connection"), "readyroamingconnected");
    QCOMPARE(unusable(), "Crejected Bfailed");
    QCOMPARE(value("backend", QRVL_SERVICE) + value("problem", QRVL_SERVICE), "simulator2");
    QCOMPARE(QRVL_DevSrv_GetUnusableDeviceList(nullptr), long(QRVL_ERROR_ARGUMENT));
}

QTEST_GUILESS_MAIN(tst_Requests)
#include "tst_requests.moc"
