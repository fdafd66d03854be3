// Modems of the real ModemManager, on a bus of their own, through the C interface.

#include "RealModemTest.h"
#include "backends/modemmanager/ModemManagerBackend.h"

using namespace std::chrono_literals;
using namespace DeviceClient;

namespace {

const QByteArray ServiceCentre = "0791947106004034";

QString enterPin(const char16_t* pin)
{
    return outcome(QRVL_DevSrv_EnterPin, pin);
}

QString sendMessage(const QString& text)
{
    return outcome(QRVL_DevSrv_SendMessage, u"+491701234567", utf16(text));
}

} // namespace

class tst_ModemManager : public RealModemTest
{
    Q_OBJECT

private slots:
    void attached();
    void withoutSim();
    void unlocking();
    void blocking();
    void twoModems();
    void daemonDies();
    void receivedMessages();
    void sentMessages();
    void serviceCodes();
    void networks();
    void withoutBus();
};

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
    QVERIFY(eventsUntil("6606:1").contains("6606:1"));
    for (const char* const report : {R"(+CREG: 5,"0001","00000001")", R"(+CGREG: 5,"0001","00000001",2)"})
        modem->announce(report);
    QTRY_COMPARE_WITH_TIMEOUT(value("registration"), "roaming", Patience);
    QVERIFY(eventsUntil("6611:1").contains("6611:1")); // comes after the value
}

void tst_ModemManager::withoutSim()
{
    const auto modem = plug({{}, 3, false}, "absent");
    QCOMPARE(values({"state", "registration", "signal"}), "available idle 2");
    QCOMPARE(QByteArray(modems().value(0).imsi), "");
    QCOMPARE(sendMessage("x"), QString::number(QRVL_ERROR_NO_SIM));
    QCOMPARE(enterPin(u"1234"), QString::number(QRVL_ERROR_NOT_FOUND));
}

void tst_ModemManager::unlocking()
{
    const auto modem = plug({"1234", 3}, "pin");
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
    const auto modem = plug({"1234", 1}, "pin");
    takeEvents();
    QCOMPARE(enterPin(u"0000"), QString::number(QRVL_ERROR_BLOCKED));
    // ModemManager discards the modem then and examines it again.
    QVERIFY(eventsUntil("6601:0").contains("6601:0"));
    QTRY_COMPARE_WITH_TIMEOUT(values({"sim", "pin-tries", "puk-tries"}), "puk 0 10", Patience);
    QCOMPARE(enterPin(u"1234"), QString::number(QRVL_ERROR_BLOCKED));
    QCOMPARE(outcome(QRVL_DevSrv_EnterPuk, u"00000000", u"4711"), QString::number(QRVL_ERROR_WRONG_CODE));
    QTRY_COMPARE_WITH_TIMEOUT(values({"sim", "puk-tries"}), "puk 9", Patience);
    QCOMPARE(outcome(QRVL_DevSrv_EnterPuk, u"12345678", u"4711"), "0");
    QTRY_COMPARE_WITH_TIMEOUT(values({"sim", "registration"}), "ready home", Patience);
}

/// Two of the same model, with the same serial number.
void tst_ModemManager::twoModems()
{
    const auto first = plugReady();
    const auto second = plug({{}, 3, true, "262019999999999"}, "ready");
    const QVector<QRVL_Device> both = modems();
    QCOMPARE(both.size(), 2);
    QVERIFY(both[0].id != both[1].id);
    QCOMPARE(QByteArray(both[1].imsi), "262019999999999");
}

/// The modem is known by its serial number: paths begin anew.
void tst_ModemManager::daemonDies()
{
    auto modem = plugReady();
    const uint32_t id = modemId();
    const uint32_t request = started(ask(QRVL_DevSrv_SendMessage, u"1", u"x"));
    takeEvents();
    // The modem does not answer until the event loop runs.
    m_bus.killModemManager();
    QTRY_VERIFY(modems().isEmpty());
    QTRY_COMPARE(value("problem", QRVL_SERVICE), "no-modemmanager");
    QCOMPARE(endOf(request), QString::number(QRVL_ERROR_NO_DEVICE));
    QVERIFY(eventsUntil("6606:0").join(' ').contains("6601:0 6606:0"));
    QVERIFY(m_bus.startModemManager());
    modem = plugReady();
    QCOMPARE(modemId(), id);
    QCOMPARE(value("problem", QRVL_SERVICE), "2");
}

/// A message of one part, and of two in each alphabet, which arrive in the wrong order.
void tst_ModemManager::receivedMessages()
{
    const auto modem = plugReady();
    QTRY_COMPARE_WITH_TIMEOUT(value("messages"), "", Patience);
    const std::pair<QByteArrayList, QString> rows[] = {
        {{"040B919471103254F60000422092710500800AE8329BFD4697D9EC37"}, "hellohello"},
        {{"440B919471103254F600004220927105008011050003110202E8E832685E1EBFDD64",
          "440B919471103254F600004220927105008017050003110201E8E832C89C96CFE92074986D668100"},
         "the first half, the second"},
        {{"440B919471103254F6000842209271050080120500032202020061006E00640020D83DDCF6",
          "440B919471103254F60008422092710500801005000322020105E905DC05D505DD0020"},
         QString::fromUtf8("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d and \xf0\x9f\x93\xb6")},
    };
    for (const auto& [parts, text] : rows) {
        QByteArray report;
        for (const QByteArray& part : parts)
            report = modem->receive(ServiceCentre + part);
        const auto isReceived = [&] {
            if (value("messages").isEmpty())
                modem->announce(report);
            return !value("messages").isEmpty();
        };
        QTRY_VERIFY_WITH_TIMEOUT(isReceived(), Patience);
        const QString identifier = value("messages");
        const QString prefix = "message." + identifier + '.';
        QCOMPARE(values({prefix + "text", prefix + "sender", prefix + "state"}),
                 text + " +49170123456 received");
        QVERIFY(QDateTime::fromString(value(prefix + "time"), "yyyy-MM-ddTHH:mm:ss").isValid());
        for (const int result : {QRVL_OK, QRVL_ERROR_NOT_FOUND})
            QCOMPARE(outcome(QRVL_DevSrv_DeleteMessage, utf16(identifier)), QString::number(result));
        QCOMPARE(value("messages"), "");
    }
}

/// Ten parts in two alphabets.
void tst_ModemManager::sentMessages()
{
    const auto modem = plugReady();
    // On the eleventh part that is sent, and before on an older one with the same reference. The network writes the number
    // without the country.
    const QByteArray report =
        "+CDS: 25\r\n" + ServiceCentre + "060B0B811007214365F7422092710500804220927105008000";
    modem->announce(report);
    const QString text =
        (QString("Hello ") + QString::fromUtf8("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d ")).repeated(56);
    const QStringList words = sendMessage(text).split(' ');
    QCOMPARE(words.value(0), "0");
    const QString prefix = "message." + words.value(1) + '.';
    QCOMPARE(modem->sent(), 10);
    QCOMPARE(values({"sent-messages", prefix + "state", prefix + "recipient"}),
             words.value(1) + " sent +491701234567");
    QCOMPARE(value(prefix + "text"), text);

    const QStringList reported = sendMessage("short").split(' ');
    QCOMPARE(reported.value(0) + ' ' + value("message." + reported.value(1) + ".state"), "0 sent");
    modem->announce(report);
    QTRY_COMPARE_WITH_TIMEOUT(value("message." + reported.value(1) + ".state"), "delivered", Patience);
    QCOMPARE(values({prefix + "state", "messages"}), "sent "); // neither another one, nor a received one

    modem->setReply("AT+CMGS", "+CMS ERROR: 38");
    const QString refused = sendMessage("x");
    QVERIFY2(refused.startsWith(QString::number(QRVL_ERROR_REFUSED) + ' '), qPrintable(refused));
    QCOMPARE(value("message." + refused.mid(3) + ".state"), "failed");
}

void tst_ModemManager::serviceCodes()
{
    const auto modem = plugReady();
    modem->setReply("+CUSD", "1,\"0031003A00200061\",72");
    QCOMPARE(outcome(QRVL_DevSrv_SendUssd, u"*100#"), "0 1: a");
    QCOMPARE(value("ussd"), "reply");
    modem->setReply("+CUSD", "0,\"00620079\",72");
    QCOMPARE(outcome(QRVL_DevSrv_SendUssd, u"1"), "0 by");
    QCOMPARE(value("ussd"), "idle");
}

void tst_ModemManager::networks()
{
    const auto modem = plugReady();
    QCOMPARE(values({"message-storage", "message-storages", "network-choice"}), "sim sim 2");
    modem->setReply("AT+COPS=?", "+COPS: (2,\"northtel\",\"nt\",\"26201\",2),(1,\"\",\"bw\",\"26202\",7),"
                                 "(3,\"Greyline\",\"gl\",\"26207\",0),,(0,1,2,3,4),(0,1,2)");
    QStringList lines = outcome(QRVL_DevSrv_ScanNetworks).mid(2).split('\n');
    lines.sort();
    QCOMPARE(lines.join('|'), "26201\tcurrent\tumts\tnorthtel|26202\tavailable\tlte\tbw|"
                              "26207\tforbidden\tgsm\tGreyline");
    modem->setReply("AT+COPS=1,2,\"26207\"", "+CME ERROR: 32");
    QCOMPARE(outcome(QRVL_DevSrv_Register, u"26207"), QString::number(QRVL_ERROR_REFUSED));
    QCOMPARE(values({"registration", "network", "network-choice"}), "idle 2 2");
    modem->setReply("AT+COPS? 2", "+COPS: 1,2,\"26202\",7");
    QCOMPARE(outcome(QRVL_DevSrv_Register, u"26202"), "0");
    QTRY_COMPARE_WITH_TIMEOUT(values({"network", "network-choice"}), "26202 manual", Patience);
    QCOMPARE(outcome(QRVL_DevSrv_Register, nullptr), "0");
    QCOMPARE(value("network-choice"), "automatic");
    modem->setReply("AT+COPS=?", "+CME ERROR: 30");
    QCOMPARE(outcome(QRVL_DevSrv_ScanNetworks), QString::number(QRVL_ERROR_NO_COVERAGE));
}

void tst_ModemManager::withoutBus()
{
    const QTemporaryDir folder;
    qputenv("QRVL_BUS", "unix:path=/nowhere");
    ModemManagerBackend backend({});
    QVERIFY(backend.wait(Backend::Clock::now() + 30s));
    QCOMPARE(backend.look().service.value("problem"), "no-bus");
    backend.start({});
    QCOMPARE(backend.takeEnds().value(0).result, long(QRVL_ERROR_SERVICE));

    QLocalServer silent;
    QVERIFY(silent.listen(folder.filePath("bus")));
    qputenv("QRVL_BUS", "unix:path=" + silent.fullServerName().toUtf8());
    static auto* const leftBehind = new ModemManagerBackend({});
    leftBehind->finish(); // does not wait for the answer
    QVERIFY(!leftBehind->look().service.contains("problem"));
}

QTEST_GUILESS_MAIN(tst_ModemManager)
#include "tst_modemmanager.moc"
