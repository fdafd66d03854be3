// Connecting a modem of the real ModemManager through a NetworkManager that does what the test says.

#include "RealModemTest.h"

#include <cstdlib>
#include <tuple>

using namespace DeviceClient;

namespace {

constexpr unsigned Disconnected = 30, Connected = 100, Deactivating = 110,
                   Failed = 120; // NetworkManager's states

} // namespace

class tst_NetworkManager : public RealModemTest
{
    Q_OBJECT

private slots:
    void connecting();
    void connectionsOfOthers();
    void networkManagerDies();

private:
    void addModem(const QStringList& connections = {}) { m_bus.controlNetwork("AddModem", {connections}); }
    void setState(unsigned state, unsigned reason) { m_bus.controlNetwork("SetModemState", {state, reason}); }
};

/// NetworkManager follows the modem with the state that the row says, or refuses.
void tst_NetworkManager::connecting()
{
    const auto modem = plugReady();
    QCOMPARE(value("connection-problem", QRVL_SERVICE), "no-networkmanager");
    QCOMPARE(outcome(QRVL_DevSrv_Connect, nullptr), QString::number(QRVL_ERROR_SERVICE));
    QVERIFY(m_bus.startNetworkManager());
    QTRY_COMPARE(value("connection-problem", QRVL_SERVICE), "2");
    QCOMPARE(outcome(QRVL_DevSrv_Connect, nullptr), QString::number(QRVL_ERROR_UNSUPPORTED));
    addModem();
    // Removes the error of the attempts above.
    QTRY_COMPARE(values({"connection", "connection.error"}), "disconnected 2");

    const QRVL_AccessPoint named = {u"internet", u"me", u"secret", QRVL_CONNECT_HOME_ONLY, 0};
    const std::tuple<const QRVL_AccessPoint*, unsigned, unsigned, QString> rows[] = {
        {nullptr, Failed, 29, "disconnected 13"}, {nullptr, Failed, 31, "disconnected 12"},
        {nullptr, Failed, 32, "disconnected 11"}, {nullptr, Failed, 46, "disconnected 8"},
        {nullptr, Failed, 1, "disconnected 21"},  {&named, Connected, 0, "connected 0"},
    };
    for (const auto& [accessPoint, state, reason, expected] : rows) {
        m_bus.controlNetwork("SetCourse", {state, reason});
        const QString result = outcome(QRVL_DevSrv_Connect, accessPoint);
        QCOMPARE(value("connection") + ' ' + result, expected);
        QCOMPARE(value("connection.error"), result == "0" ? "2" : result);
    }
    QCOMPARE(m_bus.controlNetwork("LastConnection"),
             "connection.autoconnect=0 connection.id=Skylume connection.type=gsm gsm.apn=internet "
             "gsm.home-only=1 gsm.password=secret gsm.username=me");
    QCOMPARE(values({"connection.address", "connection.name"}), "10.0.0.7 Mobile");
    QVERIFY(std::abs(value("connection.since").toLongLong() - QDateTime::currentSecsSinceEpoch()) < 60);
    QVERIFY(values({"received", "sent"}) != "2 2"); // the counters of the loopback interface
    QCOMPARE(outcome(QRVL_DevSrv_Connect, nullptr), "0");
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(outcome(QRVL_DevSrv_Disconnect), "0");
        QCOMPARE(values({"connection", "connection.error", "received"}), "disconnected 2 2");
    }

    // NetworkManager answers only after the user has given up.
    m_bus.haltNetworkManager(true);
    const uint32_t connecting = started(ask(QRVL_DevSrv_Connect, nullptr));
    const uint32_t disconnecting = started(ask(QRVL_DevSrv_Disconnect));
    QCOMPARE(outcome(QRVL_DevSrv_Connect, nullptr), "not started 6 0");
    m_bus.haltNetworkManager(false);
    QCOMPARE(endOf(connecting) + ' ' + endOf(disconnecting), "16 0");
    QCOMPARE(values({"connection", "connection.error"}), "disconnected 2");
}

/// A connection that the user has set up is used unless an access point is given; one that another program makes
/// is shown.
void tst_NetworkManager::connectionsOfOthers()
{
    QVERIFY(m_bus.startNetworkManager());
    const auto modem = plugReady();
    addModem({"/org/freedesktop/NetworkManager/Settings/1"});
    setState(Connected, 0);
    QTRY_COMPARE(value("connection"), "connected");
    setState(Deactivating, 39);
    QTRY_COMPARE(value("connection"), "disconnecting");
    m_bus.controlNetwork("SetCourse", {Connected, 0U});
    QCOMPARE(outcome(QRVL_DevSrv_Connect, nullptr), "0");
    QCOMPARE(value("connection"), "connected");
    setState(Disconnected, 40);
    QTRY_COMPARE(values({"connection", "connection.error"}),
                 "disconnected " + QString::number(QRVL_ERROR_NO_COVERAGE));
    const uint32_t request = started(ask(QRVL_DevSrv_Connect, nullptr));
    QTRY_COMPARE(m_bus.controlNetwork("LastConnection"), "");
    QTRY_COMPARE(values({"connection", "connection.error"}), "connecting 2");
    QCOMPARE(outcome(QRVL_DevSrv_Disconnect), "0");
    QCOMPARE(endOf(request), QString::number(QRVL_ERROR_CANCELLED));
    QCOMPARE(values({"connection", "connection.error"}), "disconnected 2");
}

void tst_NetworkManager::networkManagerDies()
{
    const auto modem = plugReady();
    const std::tuple<unsigned, QString, long> rows[] = {
        {Disconnected, "disconnected", QRVL_ERROR_SERVICE}, // while it connects
        {Connected, "connected", QRVL_OK},                  // while it is asked for the device's values
    };
    for (const auto& [state, shown, result] : rows) {
        QVERIFY(m_bus.startNetworkManager());
        addModem();
        setState(Connected, 0); // from now on the service knows NetworkManager's device
        QTRY_COMPARE(value("connection"), "connected");
        setState(state, 0);
        QTRY_COMPARE(value("connection"), shown);
        m_bus.haltNetworkManager(state == Connected);
        const uint32_t request = started(ask(QRVL_DevSrv_Connect, nullptr));
        QTRY_VERIFY(value("connection") != "disconnected");
        m_bus.killNetworkManager();
        QCOMPARE(endOf(request), QString::number(result));
        QTRY_COMPARE(value("connection-problem", QRVL_SERVICE), "no-networkmanager");
    }
}

QTEST_GUILESS_MAIN(tst_NetworkManager)
#include "tst_networkmanager.moc"
