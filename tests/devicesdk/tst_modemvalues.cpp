// Modems as the real ModemManager's test mode cannot show them, from one that does what the test says.

#include "DeviceClient.h"
#include "ServiceBus.h"
#include "backends/modemmanager/Customization.h"

#include <QtTest>

#include <tuple>

using namespace DeviceClient;

namespace {

QVariantMap simOf(const QString& imsi, const QString& operatorCode, const QVariant& group = {})
{
    QVariantMap sim = {{"Imsi", imsi}, {"OperatorIdentifier", operatorCode}};
    if (group.isValid())
        sim.insert("Gid1", group);
    return sim;
}

} // namespace

class tst_ModemValues : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void customization();
    void states();
    void wrongTypes();
    void manyMessages();

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
    const QByteArray gold = QByteArray::fromHex("4E542D474F4C44FFFF");
    const std::tuple<const char*, QVariantMap, QString, QString> rows[] = {
        {"text", simOf("26201123", "26201", gold), "NT-GOLD", "gold"},
        {"another group", simOf("26201123", "26201", QByteArray::fromHex("41FF")), "A", "northtel"},
        {"no group", simOf("26201123", "26201", QByteArray::fromHex("FFFF")), "", "northtel"},
        {"unknown group", simOf("26201123", "26201"), "", ""},
        {"operator unknown", simOf("26201123", "", gold), "NT-GOLD", "gold"},
        {"longer code", simOf("262011", "262011", gold), "NT-GOLD", ""},
        {"imsi", simOf("2620299", "26202"), "", "imsi"},
        {"group cannot be read", simOf("26203123", "26203"), "", "unreadable"},
        {"binary", simOf("26203123", "26203", QByteArray::fromHex("0A81FF")), "0A81", "binary"},
        {"not a string", simOf("26203123", "26203", 5), "5", ""},
        {"Special", simOf("26207123", "26207"), "", "special"},
    };
    for (const auto& [name, sim, gid, customize] : rows) {
        plug({{"Model", name}}, sim);
        QTRY_COMPARE(QByteArray(modems().value(0).name), name);
        const QRVL_Device modem = modems().value(0);
        QCOMPARE(name + QString(modem.gid) + '|' + modem.customizeName, name + gid + '|' + customize);
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
    QTRY_COMPARE(value("sim"), "locked");
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
    plug({}, simOf("26201123", "26201"), count);
    QTRY_COMPARE_WITH_TIMEOUT(value("messages").split(' ').size(), count, Patience);
    QCOMPARE(value("messages").left(12), "499 498 497 ");
    QCOMPARE(values({"message.499.text", "message.499.state"}), "text 499 received");
    QTRY_COMPARE(events().count("6612:1"), 1);
}

QTEST_GUILESS_MAIN(tst_ModemValues)
#include "tst_modemvalues.moc"
