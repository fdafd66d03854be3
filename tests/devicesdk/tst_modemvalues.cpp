// Modems as the real ModemManager's test mode cannot show them, from one that does what the test says.

#include "DeviceClient.h"
#include "ServiceBus.h"
#include "backends/modemmanager/Customization.h"
#include "files/FileAccess.h"

#include <QtTest>

#include <memory>
#include <tuple>

using namespace DeviceClient;

namespace {

const char Rules[] = "[gold]\noperator=26201\ngid=NT-GOLD\nname=gold\n"
                     "[model]\nmodel=special\nname=special\n"
                     "[unreadable]\noperator=26203\ngid=unknown\nname=unreadable\n"
                     "[binary]\noperator=26203\ngid=0A81\nname=binary\n"
                     "[imsi]\nimsi=262029\nname=imsi\n"
                     "[northtel]\noperator=26201\nname=northtel\n";

QByteArray bytes(const char* hexadecimal)
{
    return QByteArray::fromHex(hexadecimal);
}

QVariantMap simOf(const QString& imsi, const QString& operatorCode, const QVariantMap& others = {})
{
    QVariantMap sim = {{"Imsi", imsi}, {"OperatorIdentifier", operatorCode}};
    for (auto value = others.cbegin(); value != others.cend(); ++value)
        sim.insert(value.key(), value.value());
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
        m_bus->controlModems("Plug", {modem, sim, messages});
    }
    void unplug()
    {
        m_bus->controlModems("Unplug", {});
        QTRY_VERIFY(modems().isEmpty() && unusableModems().isEmpty());
    }

    QTemporaryDir m_folder;
    std::unique_ptr<ServiceBus> m_bus;
};

void tst_ModemValues::initTestCase()
{
    m_bus = std::make_unique<ServiceBus>();
    QString error;
    QVERIFY(FileAccess::replace(m_folder.filePath("rules.ini"), Rules, error));
    qputenv("QRVL_BACKEND", "modemmanager");
    qputenv("QRVL_BUS", m_bus->address().toLocal8Bit());
    qputenv("QRVL_CUSTOMIZATION_FILE", m_folder.filePath("rules.ini").toLocal8Bit());
    listen();
    QVERIFY(m_bus->startFakeModemManager());
    QTRY_COMPARE_WITH_TIMEOUT(value("problem", QRVL_SERVICE), "2", Patience);
}

void tst_ModemValues::customization()
{
    const QVariantMap gold = {{"Gid1", bytes("4E542D474F4C44FFFF")}};
    const std::tuple<const char*, QVariantMap, QString, QString> rows[] = {
        {"text", simOf("26201123", "26201", gold), "NT-GOLD", "gold"},
        {"another group", simOf("26201123", "26201", {{"Gid1", bytes("41FF")}}), "A", "northtel"},
        {"no group", simOf("26201123", "26201", {{"Gid1", bytes("FFFF")}}), "", "northtel"},
        {"unknown group", simOf("26201123", "26201"), "", ""},
        {"operator unknown", simOf("26201123", "", gold), "NT-GOLD", "gold"},
        {"longer code", simOf("262011", "262011", gold), "NT-GOLD", ""},
        {"imsi", simOf("2620299", "26202"), "", "imsi"},
        {"group cannot be read", simOf("26203123", "26203"), "", "unreadable"},
        {"binary", simOf("26203123", "26203", {{"Gid1", bytes("0A81FF")}}), "0A81", "binary"},
        {"not a string", simOf("26203123", "26203", {{"Gid1", 5}}), "5", ""},
    };
    for (const auto& [name, sim, gid, customize] : rows) {
        plug({{"Model", "Row " + QString(name)}}, sim);
        QTRY_COMPARE(QByteArray(modems().value(0).name), "Row " + QByteArray(name));
        const QRVL_Device modem = modems().value(0);
        QCOMPARE(name + QString(modem.gid) + '|' + modem.customizeName, name + gid + '|' + customize);
        unplug();
    }
    plug({{"Model", "Special"}}, simOf("26207123", "26207"));
    QTRY_COMPARE(QByteArray(modems().value(0).customizeName), "special");
    takeEvents();
    unplug();
    QCOMPARE(nextEvents(2), QVector<int>({QRVL_EVENT_DEV_DEVICE_INVALID, QRVL_EVENT_DEV_DETECTED}));
}

void tst_ModemValues::states()
{
    const auto failed = [](uint reason) {
        return QVariantMap{{"State", -1}, {"StateFailedReason", reason}};
    };
    const auto locked = [](uint lock) {
        return QVariantMap{{"State", 2}, {"UnlockRequired", lock}};
    };
    const std::tuple<const char*, QVariantMap, int, QString> rows[] = {
        {"unknown failure", failed(1), QRVL_EVENT_DEV_DEVICE_INVALID, "failed unknown"},
        {"SIM error", failed(3), QRVL_EVENT_DEV_DEVICE_INVALID, "failed sim-error"},
        {"operator lock", locked(8), QRVL_EVENT_DEV_REJECT, "rejected 2"},
    };
    for (const auto& [name, properties, event, shown] : rows) {
        takeEvents();
        plug(properties, {});
        QTRY_COMPARE(unusableModems().size(), 1);
        const uint32_t id = unusableModems().value(0).id;
        QCOMPARE(name + value("state", id) + ' ' + value("state.reason", id), name + shown);
        bool isReported = false;
        QTRY_VERIFY2((isReported = isReported || takeEvents().contains(event)), name);
        QVERIFY(modems().isEmpty());
        unplug();
    }
    plug(locked(13), {});
    QTRY_COMPARE(values({"sim"}), "locked");
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
    QTRY_COMPARE_WITH_TIMEOUT(values({"messages"}).split(' ').size(), count, Patience);
    QCOMPARE(values({"messages"}).left(6), "0 1 2 ");
    QCOMPARE(values({"message.499.text", "message.499.state"}), "text 499 received");
    int reports = 0;
    QTRY_COMPARE(reports += takeEvents().count(QRVL_EVENT_DEV_MESSAGES), 1);
}

QTEST_GUILESS_MAIN(tst_ModemValues)
#include "tst_modemvalues.moc"
