#include "RealModemTest.h"

#include <QUuid>

using namespace DeviceClient;

void RealModemTest::initTestCase()
{
    qputenv("QRVL_BACKEND", "modemmanager");
    qputenv("QRVL_BUS", m_bus.address().toLocal8Bit());
    listen();
    QTRY_COMPARE(value("problem", QRVL_SERVICE), "no-modemmanager");
    QCOMPARE(value("backend", QRVL_SERVICE), "modemmanager");
}

void RealModemTest::init()
{
    QVERIFY(m_bus.startModemManager());
    QTRY_COMPARE_WITH_TIMEOUT(value("problem", QRVL_SERVICE), "2", Patience);
    takeEvents();
}

void RealModemTest::cleanup()
{
    if (QTest::currentTestFailed())
        qWarning("%s", m_bus.log().constData());
    m_bus.killModemManager();
    m_bus.killNetworkManager();
    QTRY_VERIFY(modems().isEmpty());
}

std::unique_ptr<AtModem> RealModemTest::plug(const AtModem::Sim& sim, const QString& state)
{
    const QByteArray name = QUuid::createUuid().toByteArray();
    auto modem = std::make_unique<AtModem>(name, sim);
    const int before = modems().size();
    const auto isShown = [&] {
        return modems().size() > before && values({"sim", "registration"}).startsWith(state);
    };
    if (!m_bus.addModem(name, modem->port()) || !QTest::qWaitFor(isShown, Patience))
        QTest::qFail("The modem does not appear", __FILE__, __LINE__);
    return modem;
}
