// Connecting a modem of the real ModemManager through a NetworkManager that does what the test says.

#include "RealModemTest.h"

#include <cstdlib>
#include <tuple>

using namespace DeviceClient;

namespace {

QString connectModem(const QRVL_AccessPoint& accessPoint)
{
    return outcome([&](uint32_t device, uint32_t* request) {
        return QRVL_DevSrv_Connect(device, &accessPoint, request);
    });
}

QString disconnectModem()
{
    return outcome(QRVL_DevSrv_Disconnect);
}

/// How NetworkManager sees the modem, with connections that somebody has set up. Its traffic is that of the
/// loopback interface.
QVariantList modemDevice(const QStringList& connections)
{
    return {"lo", "/org/freedesktop/ModemManager1/Modem/0", connections};
}

} // namespace

class tst_NetworkManager : public RealModemTest
{
    Q_OBJECT

private slots:
    void connecting();
    void connectionsOfOthers();
    void networkManagerDies();
};

/// NetworkManager follows the modem with the state that the row says, or refuses.
void tst_NetworkManager::connecting()
{
    const auto modem = plugReady();
    QCOMPARE(value("connection-problem", QRVL_SERVICE), "no-networkmanager");
    QCOMPARE(connectModem({}), QString::number(QRVL_ERROR_SERVICE));
    QVERIFY(bus().startNetworkManager());
    QTRY_COMPARE(value("connection-problem", QRVL_SERVICE), "2");
    QCOMPARE(connectModem({}), QString::number(QRVL_ERROR_UNSUPPORTED));
    bus().controlNetwork("AddModem", modemDevice({}));
    // Removes the error of the attempts above.
    QTRY_COMPARE(values({"connection", "connection.error"}), "disconnected 2");

    const auto after = [this](const QRVL_AccessPoint& accessPoint, uint state, uint reason) {
        uint32_t request = 0;
        bus().controlNetwork("ForgetConnection");
        if (QRVL_DevSrv_Connect(modemId(), &accessPoint, &request) != QRVL_OK ||
            !QTest::qWaitFor([this] { return !bus().controlNetwork("LastConnection").isEmpty(); }))
            return QString("not started");
        bus().controlNetwork("SetModemState", {state, reason});
        bus().controlNetwork("SetModemState", {state == 100 ? 100U : 30U, 0U});
        return endOf(request);
    };
    const QRVL_AccessPoint named = {u"internet", u"me", u"secret", QRVL_CONNECT_HOME_ONLY, 0};
    const std::tuple<QRVL_AccessPoint, uint, uint, int, QString> rows[] = {
        {{}, 120, 29, QRVL_ERROR_ACCESS_POINT, "disconnected 13"},
        {{}, 120, 31, QRVL_ERROR_REFUSED, "disconnected 12"},
        {{}, 120, 32, QRVL_ERROR_NO_COVERAGE, "disconnected 11"},
        {{}, 120, 46, QRVL_ERROR_LOCKED, "disconnected 8"},
        {{}, 120, 1, QRVL_ERROR_FAILED, "disconnected 21"},
        {named, 100, 0, QRVL_OK, "connected 2"},
    };
    for (const auto& [accessPoint, state, reason, result, shown] : rows) {
        QCOMPARE(after(accessPoint, state, reason), QString::number(result));
        QCOMPARE(values({"connection", "connection.error"}), shown);
    }
    QCOMPARE(bus().controlNetwork("LastConnection"),
             "connection.autoconnect=0 connection.id=Skylume connection.type=gsm gsm.apn=internet "
             "gsm.home-only=1 gsm.password=secret gsm.username=me");
    QCOMPARE(values({"connection.address", "connection.name"}), "10.0.0.7 Mobile");
    QVERIFY(std::abs(values({"connection.since"}).toLongLong() - QDateTime::currentSecsSinceEpoch()) < 60);
    QVERIFY(values({"received", "sent"}) != "2 2"); // the counters of the loopback interface
    QCOMPARE(connectModem({}), "0");
    QCOMPARE(disconnectModem(), "0");
    QCOMPARE(values({"connection", "connection.error", "received"}), "disconnected 2 2");
    QCOMPARE(disconnectModem(), "0");
}

/// A connection that the user has set up is used unless an access point is given; one that another program makes
/// is shown.
void tst_NetworkManager::connectionsOfOthers()
{
    QVERIFY(bus().startNetworkManager());
    const auto modem = plugReady();
    bus().controlNetwork("AddModem", modemDevice({"/org/freedesktop/NetworkManager/Settings/1"}));
    bus().controlNetwork("SetModemState", {100U, 0U});
    QTRY_COMPARE(values({"connection"}), "connected");
    bus().controlNetwork("SetModemState", {30U, 40U});
    QTRY_COMPARE(values({"connection", "connection.error"}),
                 "disconnected " + QString::number(QRVL_ERROR_NO_COVERAGE));
    uint32_t request = 0;
    QCOMPARE(QRVL_DevSrv_Connect(modemId(), nullptr, &request), long(QRVL_OK));
    QTRY_COMPARE(bus().controlNetwork("LastConnection"), "existing");
    QTRY_COMPARE(values({"connection", "connection.error"}), "connecting 2");
    QCOMPARE(disconnectModem(), "0");
    QCOMPARE(endOf(request), QString::number(QRVL_ERROR_CANCELLED));
    QCOMPARE(values({"connection", "connection.error"}), "disconnected 2");
}

void tst_NetworkManager::networkManagerDies()
{
    QVERIFY(bus().startNetworkManager());
    const auto modem = plugReady();
    bus().controlNetwork("AddModem", modemDevice({}));
    for (const auto& [state, shown] : {std::pair(100U, "connected"), std::pair(30U, "disconnected")}) {
        bus().controlNetwork("SetModemState",
                             {state, 0U}); // from now on the service knows NetworkManager's device
        QTRY_COMPARE(values({"connection"}), shown);
    }
    uint32_t request = 0;
    QCOMPARE(QRVL_DevSrv_Connect(modemId(), nullptr, &request), long(QRVL_OK));
    QTRY_COMPARE(values({"connection"}), "connecting");
    bus().killNetworkManager();
    QCOMPARE(endOf(request), QString::number(QRVL_ERROR_SERVICE));
    QCOMPARE(value("connection-problem", QRVL_SERVICE), "no-networkmanager");
}

QTEST_GUILESS_MAIN(tst_NetworkManager)
#include "tst_networkmanager.moc"
