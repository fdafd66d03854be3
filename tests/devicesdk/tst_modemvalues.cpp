// Modems as the real ModemManager's test mode cannot show them, from one that does what the test says.

#include "DeviceClient.h"
#include "Samples.h"
#include "ServiceBus.h"

#include <QtTest>

#include <tuple>

using namespace DeviceClient;

class tst_ModemValues : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void customization();
    void states();
    void wrongTypes();
    void manyMessages();
    void daemonDies();

private:
    void plug(const QVariantMap& modem, const QVariantMap& sim, uint messages = 0)
    {
        m_bus.controlModems("Plug", {modem, sim, messages});
    }
    void unplug()
    {
        m_bus.controlModems("Unplug", {});
        QTRY_VERIFY(modems().isEmpty() && unusableModems().isEmpty());
    }

    ServiceBus m_bus;
};

void tst_ModemValues::initTestCase()
{
    qputenv("QRVL_BACKEND", "modemmanager");
    qputenv("QRVL_BUS", m_bus.address().toLocal8Bit());
    qputenv("QRVL_CUSTOMIZATION_FILE", DATA "/customization.ini");
    listen();
    QVERIFY(m_bus.startFakeModemManager());
    QTRY_COMPARE_WITH_TIMEOUT(value("problem", QRVL_SERVICE), "2", Patience);
}

void tst_ModemValues::customization()
{
    for (const QStringList& row : tableIn(DATA "/sims.txt")) {
        QVariantMap sim = {{"Imsi", row[1]}, {"OperatorIdentifier", row[2]}};
        if (row[3] != "unknown")
            sim.insert("Gid1", row[3] == "5" ? QVariant(5) : QByteArray::fromHex(row[3].toLatin1()));
        plug({{"Model", row[0]}}, sim);
        QTRY_COMPARE(QString(modems().value(0).name), row[0]);
        const QRVL_Device modem = modems().value(0);
        QCOMPARE(QStringList({row[0], modem.gid, modem.customizeName}),
                 QStringList({row[0], row[4], row[5]}));
        eventsUntil("6606:1");
        unplug();
        QCOMPARE(eventsUntil("6606:0"), QStringList({"6601:0", "6606:0"}));
    }
}

void tst_ModemValues::states()
{
    const std::tuple<int, const char*, uint, QString, QString> rows[] = {
        {-1, "StateFailedReason", 1, "6601:0", "failed unknown"},
        {-1, "StateFailedReason", 3, "6601:0", "failed sim-error"},
        {2, "UnlockRequired", 8, "6016:0", "rejected 2"},
    };
    for (const auto& [state, reason, number, event, shown] : rows) {
        plug({{"State", state}, {reason, number}}, {});
        QCOMPARE(eventsUntil(event), QStringList(event));
        const uint32_t id = unusableModems().value(0).id;
        QCOMPARE(value("state", id) + ' ' + value("state.reason", id), shown);
        QVERIFY(modems().isEmpty());
        unplug();
    }
    plug({{"State", 2}, {"UnlockRequired", 13U}}, {});
    QTRY_COMPARE(values({"sim", "messages"}), "locked 2"); // unknown until then
    unplug();
}

/// Nothing is believed, and nothing ends the program.
void tst_ModemValues::wrongTypes()
{
    plug({{"Model", QStringList{"a", "b"}},
          {"State", "8"},
          {"SignalQuality", "strong"},
          {"UnlockRetries", 3},
          {"AccessTechnologies", QStringList{"lte"}},
          {"OwnNumbers", 7},
          {"EquipmentIdentifier", true},
          {"Revision", QVariantMap{{"a", 1}}},
          {"Manufacturer", "Right"}},
         {{"Imsi", 5}, {"Gid1", "text"}, {"OperatorIdentifier", QStringList{"x"}}});
    QTRY_COMPARE(values({"manufacturer", "signal", "pin-tries", "technology", "firmware"}), "Right 2 2 2 2");
    unplug();
}

/// They are shown at once, the oldest first.
void tst_ModemValues::manyMessages()
{
    constexpr int count = 500;
    plug({}, {{"Imsi", "26201123"}, {"OperatorIdentifier", "26201"}}, count);
    QTRY_COMPARE_WITH_TIMEOUT(value("messages").split(' ').size(), count, Patience);
    QCOMPARE(value("messages").left(12), "499 498 497 ");
    QCOMPARE(values({"message.499.text", "message.499.state"}), "text 499 received");
    QTRY_COMPARE(events().count("6612:1"), 1);
    unplug();
}

/// Between its answer to the PIN and the state of the modem after that.
void tst_ModemValues::daemonDies()
{
    plug({{"State", 2}, {"UnlockRequired", 2U}}, {});
    QTRY_COMPARE(value("sim"), "pin");
    QCOMPARE(outcome(QRVL_DevSrv_EnterPin, u"1234"), QString::number(QRVL_ERROR_NO_DEVICE));
    QCOMPARE(value("problem", QRVL_SERVICE), "no-modemmanager");
    m_bus.killModemManager();
    QVERIFY(m_bus.startFakeModemManager());
    QTRY_COMPARE_WITH_TIMEOUT(value("problem", QRVL_SERVICE), "2", Patience);
}

QTEST_GUILESS_MAIN(tst_ModemValues)
#include "tst_modemvalues.moc"
