// Requests of simulated modems, through the C interface.

#include "DeviceClient.h"
#include "ReplaceFile.h"

#include <QTemporaryDir>
#include <QtTest>

#include <tuple>

using namespace DeviceClient;

namespace {

/// The result of a request, followed by values that the modem has then.
QString outcomeWith(const QStringList& keys, const Ask& ask)
{
    const QString end = outcome(ask);
    return end + ' ' + values(keys);
}

Ask pin(const char16_t* code)
{
    return ask(QRVL_DevSrv_EnterPin, code);
}

Ask puk(const char16_t* code, const char16_t* newPin = u"1111")
{
    return ask(QRVL_DevSrv_EnterPuk, code, newPin);
}

Ask message(const char16_t* recipient, const char16_t* text)
{
    return ask(QRVL_DevSrv_SendMessage, recipient, text);
}

const Ask ConnectModem = ask(QRVL_DevSrv_Connect, nullptr);

} // namespace

class tst_Requests : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qputenv("QRVL_SIMULATOR_FILE", file().toUtf8());
        listen([] { return value("connection"); });
    }
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

    QByteArray written() const { return FileAccess::read(file()).bytes.trimmed(); }

    QTemporaryDir m_folder;
};

/// The next test begins with no request under way. On Windows the file cannot be removed while the service reads it.
void tst_Requests::cleanup()
{
    QTRY_VERIFY(QFile::remove(file()) || !QFile::exists(file()));
    QTRY_VERIFY(modems().isEmpty() && unusableModems().isEmpty());
}

void tst_Requests::simulate(const QString& lines, const QString& others) const
{
    static int mark = 0;
    const QString modem =
        "[modem A]\nmodel=A\nstate=attached\nimsi=26201123\nrequest-time=30\n%1\nfirmware=v%2\n";
    replaceFile(file(), (modem.arg(lines).arg(++mark) + others).toUtf8());
    QTRY_COMPARE(value("firmware"), 'v' + QString::number(mark));
    QCOMPARE(modems().size(), 1);
    takeEvents();
}

void tst_Requests::connection()
{
    const std::tuple<QString, unsigned, QString> rows[] = {
        {"network=26201", 0, "0 connected 2"},
        {"network=20801", 0, "0 connected 2"},
        {"network=20801", QRVL_CONNECT_HOME_ONLY, "14 disconnected 14"},
        {"network=26201", QRVL_CONNECT_HOME_ONLY, "0 connected 2"},
        {"network=26201\nfailure=refused", 0, "12 disconnected 12"},
        {"network=26201\nfailure=access-point", 0, "13 disconnected 13"},
        {"", 0, "11 disconnected 11"},
        {"network=26201\nsim=absent", 0, "7 disconnected 7"},
        {"network=26201\nsim=pin", 0, "8 disconnected 8"},
    };
    for (const auto& [lines, flags, expected] : rows) {
        simulate(lines + "\nconnection=disconnected");
        const QRVL_AccessPoint accessPoint = {u"internet", nullptr, u"secret", flags, 0};
        QCOMPARE(lines + outcomeWith({"connection", "connection.error"},
                                     ask(QRVL_DevSrv_Connect, flags == 0 ? nullptr : &accessPoint)),
                 lines + expected);
        QCOMPARE(value("connection.since").size() > 5, value("connection") == "connected");
    }
    simulate("connection=connected\nfailure=refused"); // nothing has to be done
    QCOMPARE(outcomeWith({"connection", "connection.error"}, ConnectModem), "0 connected 2");
    simulate("network=26201\nconnection=disconnected\nreceive-rate=1000");
    QCOMPARE(value("receive-rate"), "2");
    QCOMPARE(outcomeWith({"receive-rate"}, ConnectModem), "0 1000");
    const QString events = takeEvents().join(' ');
    QVERIFY2(events.endsWith("6611:connecting 6611:connected 6613:connected"), qPrintable(events));
    QCOMPARE(outcomeWith({"connection"}, ask(QRVL_DevSrv_Disconnect)), "0 disconnected");
    QVERIFY(written().contains("\nconnection=disconnected\n"));
}

/// Every row continues with what the previous one has left.
void tst_Requests::unlocking()
{
    const auto imsi = [] {
        return QByteArray(modems().value(0).imsi);
    };
    const auto isExpected = [](const std::vector<std::pair<Ask, QString>>& rows) {
        for (const auto& [ask, expected] : rows)
            QCOMPARE(outcomeWith({"sim", "pin-tries", "puk-tries"}, ask), expected);
    };
    simulate("sim=pin\npin=4711\npuk=87654321\npin-tries=3\npuk-tries=2\nnetwork=26201");
    QCOMPARE(imsi() + value("network"), "2");
    isExpected({
        {pin(u"0000"), "9 pin 2 2"},
        {pin(u"471"), "not started 1 0 pin 2 2"},
        {pin(u"47111111x"), "not started 1 0 pin 2 2"},
        {puk(u"87654321"), "2 pin 2 2"},
        {pin(u"4711"), "0 ready 3 2"},
        {pin(u"4711"), "2 ready 3 2"},
    });
    QCOMPARE(imsi() + value("network"), "2620112326201");
    simulate("sim=pin\npin=4711\npuk=87654321\npin-tries=1\npuk-tries=2");
    isExpected({
        {pin(u"0000"), "10 puk 0 2"},
        {pin(u"4711"), "10 puk 0 2"},
        {puk(u"8765432"), "not started 1 0 puk 0 2"},
        {puk(u"11111111"), "9 puk 0 1"},
        {puk(u"87654321"), "0 ready 3 10"},
    });
    QVERIFY(written().contains("\npin=1111\n"));
    simulate("sim=puk\npuk-tries=1");
    isExpected({{puk(u"00000000"), "10 blocked 3 0"}, {puk(u"12345678"), "10 blocked 3 0"}});
}

void tst_Requests::messages()
{
    simulate("network=26201", "[message 1]\nmodem=A\nsender=+1\n\n[message 2]\nmodem=B\n");
    const QString text = QString("x").repeated(400) + QString::fromUtf8("\n\xd7\xa9\xf0\x9f\x93\xb6");
    QCOMPARE(outcomeWith({"messages", "sent-messages"}, message(u"+49 (30) 123-4", utf16(text))), "0 3 1 3");
    QCOMPARE(values({"message.3.text", "message.3.recipient", "message.1.state"}),
             text + " +49301234 received");
    QTRY_COMPARE(value("message.3.state"), "delivered");
    simulate("network=26201\nfailure=full", "[message 1]\nmodem=A\n[message 2]\nmodem=B\n");
    QCOMPARE(outcomeWith({"message.3.state"}, message(u"*1#", u"x")), "19 3 failed");
    for (const auto& [identifier, result] : {std::pair("2", "2"), {"1", "0"}, {"1", "2"}, {"3", "0"}})
        QCOMPARE(outcome(QRVL_DevSrv_DeleteMessage, utf16(identifier)), result);
    QCOMPARE(values({"messages", "sent-messages"}), " ");
    QVERIFY(written().endsWith("[message 2]\nmodem=B"));
}

void tst_Requests::serviceCodes()
{
    simulate("network=26201", "[ussd *1#]\nanswer=1: a\\n2: b\nasks=true\n[ussd *1# 2]\nanswer=B\n");
    const std::pair<const char16_t*, QString> rows[] = {
        {u"*1#", "0 1: a\n2: b reply"}, {u"2", "0 B idle"},  {u"2", "12 idle"},
        {u"*1#", "0 1: a\n2: b reply"}, {nullptr, "0 idle"}, {u"2", "12 idle"},
    };
    for (const auto& [code, expected] : rows)
        QCOMPARE(outcomeWith({"ussd"}, code ? ask(QRVL_DevSrv_SendUssd, code) : ask(QRVL_DevSrv_CancelUssd)),
                 expected);
}

void tst_Requests::networks()
{
    const QString around = "[network 26201]\nname=Home\ntechnology=lte\n[network 26202]\nname=Other\n"
                           "[network 26207]\nforbidden=true\n[network 20801]\n";
    simulate("network=26203\nnetwork-name=Here\ntechnology=umts", around);
    QCOMPARE(outcome(QRVL_DevSrv_ScanNetworks), "0 26203\tcurrent\tumts\tHere\n26201\tavailable\tlte\tHome\n"
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
        QCOMPARE(outcomeWith({"network", "network-name", "technology", "network-choice"},
                             ask(QRVL_DevSrv_Register, network)),
                 expected);
    simulate("sim=pin\nnetwork=26201", around);
    QCOMPARE(outcome(QRVL_DevSrv_ScanNetworks), "8");
    QCOMPARE(outcomeWith({"network-choice"}, ask(QRVL_DevSrv_Register, nullptr)), "8 2");
    simulate({}); // there is no network
    QCOMPARE(outcome(QRVL_DevSrv_Register, nullptr), "11");
    simulate("network=26201\nrequest-time=50000", around);
    QVERIFY(started(ask(QRVL_DevSrv_ScanNetworks)) != 0);
    QCOMPARE(outcome(QRVL_DevSrv_Register, nullptr), "not started 6 0");
}

/// Every request that was accepted ends exactly once, whatever happens to it.
void tst_Requests::cancelled()
{
    simulate("network=26201\nconnection=disconnected\nrequest-time=50000");
    const uint32_t attempt = started(ConnectModem);
    QCOMPARE(outcome(ConnectModem), "not started 6 0");
    const uint32_t end = started(ask(QRVL_DevSrv_Disconnect));
    QCOMPARE(endOf(attempt), QString::number(QRVL_ERROR_CANCELLED));
    QCOMPARE(outcome(ConnectModem), "not started 6 0");
    const uint32_t dialogue = started(ask(QRVL_DevSrv_SendUssd, u"1"));
    QTRY_COMPARE(value("ussd"), "active");
    replaceFile(file(), "[modem A]\nmodel=A\nstate=failed\n");
    for (const uint32_t number : {end, dialogue})
        QCOMPARE(endOf(number), QString::number(QRVL_ERROR_NO_DEVICE));
    QVERIFY(end != attempt && end != dialogue);
}

void tst_Requests::refusedAtOnce()
{
    simulate("network=26201\nrequest-time=50000");
    for (const Ask& wrong :
         {message(u"12a", u"x"), message(u"", u"x"), message(u"+", u"x"), message(u"1+2", u"x"),
          message(nullptr, u"x"), message(u"1", u""), message(u"1", nullptr), pin(nullptr), puk(nullptr),
          puk(u"12345678", nullptr), puk(u"12345678", u"12"), ask(QRVL_DevSrv_SendUssd, u""),
          ask(QRVL_DevSrv_SendUssd, nullptr), ask(QRVL_DevSrv_DeleteMessage, u"")})
        QCOMPARE(outcome(wrong), "not started 1 0");
    uint32_t number = 7;
    QCOMPARE(ConnectModem(modemId(), nullptr), long(QRVL_ERROR_ARGUMENT));
    QCOMPARE(ConnectModem(modemId() + 100, &number), long(QRVL_ERROR_NO_DEVICE));
    QCOMPARE(number, 0U);
    QVERIFY(started(pin(u"1234")) != 0);
    QCOMPARE(outcome(puk(u"12345678")), "not started 6 0");
    for (int i = 0; i < 63; ++i)
        QVERIFY(started(message(u"1", u"x")) != 0);
    QCOMPARE(outcome(message(u"1", u"x")), "not started 5 0");
}

void tst_Requests::statesOfModems()
{
    simulate("imsi=\nnetwork="); // and nothing of what was under way is left
    QCOMPARE(values({"state", "sim", "registration"}), "available absent searching");
    simulate("network=20801", "[modem B]\nmodel=B\nstate=failed\n[modem C]\nmodel=C\nstate=rejected\n"
                              "[modem D]\nmodel=D\nstate=detached\n");
    QCOMPARE(values({"sim", "registration", "connection"}), "ready roaming connected");
    QStringList unusable;
    for (const QRVL_Device& modem : unusableModems())
        unusable << modem.name + (' ' + value("state", modem.id));
    QCOMPARE(unusable, QStringList({"C rejected", "B failed"}));
    QCOMPARE(value("backend", QRVL_SERVICE) + value("problem", QRVL_SERVICE), "simulator2");
    QCOMPARE(QRVL_DevSrv_GetUnusableDeviceList(nullptr), long(QRVL_ERROR_ARGUMENT));
}

QTEST_GUILESS_MAIN(tst_Requests)
#include "tst_requests.moc"
