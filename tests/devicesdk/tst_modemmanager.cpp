// Modems of the real ModemManager, on a bus of their own, through the C interface.

#include "RealModemTest.h"
#include "backends/modemmanager/ModemManagerBackend.h"

#include <tuple>

using namespace std::chrono_literals;
using namespace DeviceClient;

namespace {

const char16_t* utf16(const QString& text)
{
    return reinterpret_cast<const char16_t*>(text.utf16());
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

QString scanNetworks()
{
    return outcome(&QRVL_DevSrv_ScanNetworks);
}

QString registerIn(const char16_t* network)
{
    return outcome(
        [=](uint32_t device, uint32_t* request) { return QRVL_DevSrv_Register(device, network, request); });
}

const QByteArray ServiceCentre = "0791947106004034";
const QByteArray Timestamp = "42209271050080";

QByteArray hex(int byte)
{
    return QByteArray::number(0x100 | byte, 16).mid(1).toUpper();
}

/// Characters of 7 bits each, in hexadecimal digits. The first one begins at bit 1, after a header of 6 bytes.
QByteArray packed(const QByteArray& text)
{
    QByteArray bytes((text.size() * 7 + 8) / 8, '\0');
    for (int bit = 0; bit < text.size() * 7; ++bit)
        bytes[(bit + 1) / 8] =
            char(bytes[(bit + 1) / 8] | (((text[bit / 7] >> (bit % 7)) & 1) << ((bit + 1) % 8)));
    return bytes.toHex().toUpper();
}

/// A part of a long message of two parts that was received, as AtModem::receive() takes it. A message is in one
/// alphabet: that of 7 bits, or that of all other characters.
QByteArray part(int number, const QString& text, bool isUsualAlphabet)
{
    constexpr int header = 6;
    const QByteArray ucs2 =
        QByteArray::fromRawData(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
    QByteArray swapped = ucs2;
    for (int i = 0; i < swapped.size(); i += 2)
        std::swap(swapped.data()[i], swapped.data()[i + 1]);
    const QByteArray content = isUsualAlphabet ? packed(text.toLatin1()) : swapped.toHex().toUpper();
    const int length = isUsualAlphabet ? text.size() + 7 : swapped.size() + header;
    return ServiceCentre + "440B919471103254F600" + (isUsualAlphabet ? "00" : "08") + Timestamp +
           hex(length) + "050003" + (isUsualAlphabet ? "11" : "22") + "02" + hex(number) + content;
}

AtModem::Sim lockedSim(int pinTries)
{
    AtModem::Sim sim;
    sim.pin = "1234";
    sim.pinTries = pinTries;
    return sim;
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
    QVector<int> events;
    const auto haveCome = [&events] { // after the values
        events += takeEvents();
        return events.contains(QRVL_EVENT_DEV_DETECTED) && events.contains(QRVL_EVENT_DEV_STATUS);
    };
    QTRY_VERIFY_WITH_TIMEOUT(haveCome(), Patience);
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
    takeEvents();
    QCOMPARE(enterPin(u"0000"), QString::number(QRVL_ERROR_BLOCKED));
    auto hasReturned = [wasRemoved = false](const QString& state) mutable {
        wasRemoved = wasRemoved || takeEvents().contains(QRVL_EVENT_DEV_DEVICE_INVALID);
        return wasRemoved && values({"sim", "pin-tries", "puk-tries"}) == state;
    };
    // ModemManager discards the modem then and examines it again.
    QTRY_VERIFY_WITH_TIMEOUT(hasReturned("puk 0 10"), Patience);
    QCOMPARE(enterPin(u"1234"), QString::number(QRVL_ERROR_BLOCKED));
    QCOMPARE(enterPuk(u"00000000"), QString::number(QRVL_ERROR_WRONG_CODE));
    QTRY_COMPARE_WITH_TIMEOUT(values({"sim", "puk-tries"}), "puk 9", Patience);
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
    takeEvents();
    bus().killModemManager();
    QTRY_VERIFY(modems().isEmpty());
    QTRY_COMPARE(value("problem", QRVL_SERVICE), "no-modemmanager");
    QCOMPARE(endOf(request), QString::number(QRVL_ERROR_NO_DEVICE));
    QCOMPARE(nextEvents(2), QVector<int>({QRVL_EVENT_DEV_DEVICE_INVALID, QRVL_EVENT_DEV_DETECTED}));
    QVERIFY(bus().startModemManager());
    modem = plugReady();
    QCOMPARE(modemId(), id);
    QCOMPARE(value("problem", QRVL_SERVICE), "2");
}

/// A message of one part, and of two in each alphabet, which arrive in the wrong order.
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
    const std::tuple<bool, QString, QString> rows[] = {
        {true, "the first half, ", "the second"},
        {false, QString::fromUtf8("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d "),
         QString::fromUtf8("and \xf0\x9f\x93\xb6")},
    };
    for (const auto& [isUsualAlphabet, first, second] : rows) {
        modem->receive(part(2, second, isUsualAlphabet));
        const QByteArray report = modem->receive(part(1, first, isUsualAlphabet));
        const auto isReceived = [&] {
            if (values({"messages"}).isEmpty())
                modem->announce(report);
            return !values({"messages"}).isEmpty();
        };
        QTRY_VERIFY_WITH_TIMEOUT(isReceived(), Patience);
        const QString id = values({"messages"});
        QCOMPARE(values({"message." + id + ".text", "message." + id + ".sender"}),
                 first + second + " +49170123456");
        QCOMPARE(deleteMessage(id), "0");
    }
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

    const QStringList reported = sendMessage("short").split(' ');
    QCOMPARE(reported.value(0), "0");
    const QByteArray reference = hex(modem->sent().size());
    modem->announce("+CDS: 24\r\n" + ServiceCentre + "06" + reference + "0691942143" + Timestamp + Timestamp +
                    "00");
    QTRY_COMPARE_WITH_TIMEOUT(values({"message." + reported.value(1) + ".state"}), "delivered", Patience);
    QCOMPARE(values({prefix + "state", "messages"}), "sent "); // neither another one, nor a received one

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

void tst_ModemManager::networks()
{
    const auto modem = plugReady();
    QTRY_COMPARE_WITH_TIMEOUT(values({"registration", "message-storage", "message-storages"}), "home sim sim",
                              Patience);
    QCOMPARE(values({"network-choice"}), "2");
    modem->setReply("AT+COPS=?", "+COPS: (2,\"northtel\",\"nt\",\"26201\",2),(1,\"\",\"bw\",\"26202\",7),"
                                 "(3,\"Greyline\",\"gl\",\"26207\",0),,(0,1,2,3,4),(0,1,2)");
    QStringList lines = scanNetworks().mid(2).split('\n');
    lines.sort();
    QCOMPARE(lines.join('|'), "26201\tcurrent\tumts\tnorthtel|26202\tavailable\tlte\tbw|"
                              "26207\tforbidden\tgsm\tGreyline");
    modem->setReply("AT+COPS=1,2,\"26207\"", "+CME ERROR: 32");
    QCOMPARE(registerIn(u"26207"), QString::number(QRVL_ERROR_REFUSED));
    QCOMPARE(values({"registration", "network", "network-choice"}), "idle 2 2");
    modem->setReply("AT+COPS? 2", "+COPS: 1,2,\"26202\",7");
    QCOMPARE(registerIn(u"26202"), "0");
    QTRY_COMPARE_WITH_TIMEOUT(values({"network", "network-choice"}), "26202 manual", Patience);
    QCOMPARE(registerIn(nullptr), "0");
    QCOMPARE(values({"network-choice"}), "automatic");
    modem->setReply("AT+COPS=?", "+CME ERROR: 30");
    QCOMPARE(scanNetworks(), QString::number(QRVL_ERROR_NO_COVERAGE));
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
