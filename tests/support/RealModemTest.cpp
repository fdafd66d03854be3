#include "RealModemTest.h"

using namespace DeviceClient;

void RealModemTest::initTestCase()
{
    m_bus = std::make_unique<ServiceBus>();
    qputenv("QRVL_BACKEND", "modemmanager");
    qputenv("QRVL_BUS", m_bus->address().toLocal8Bit());
    listen();
    QTRY_COMPARE(value("problem", QRVL_SERVICE), "no-modemmanager");
    QCOMPARE(value("backend", QRVL_SERVICE), "modemmanager");
}

void RealModemTest::init()
{
    QVERIFY(m_bus->startModemManager());
    QTRY_COMPARE_WITH_TIMEOUT(value("problem", QRVL_SERVICE), "2", Patience);
    takeEvents();
}

void RealModemTest::cleanup()
{
    if (QTest::currentTestFailed())
        qWarning("%s", m_bus->log().constData());
    m_bus->killModemManager();
    m_bus->killNetworkManager();
    QTRY_VERIFY(modems().isEmpty());
}

std::unique_ptr<AtModem> RealModemTest::plug(const AtModem::Sim& sim, const QString& simState)
{
    const QByteArray name =
        QByteArray::number(QCoreApplication::applicationPid()) + '-' + QByteArray::number(++m_count);
    auto modem = std::make_unique<AtModem>(name, sim);
    const int before = modems().size();
    if (!m_bus->addModem(name, modem->port()) ||
        !QTest::qWaitFor([&] { return modems().size() > before && values({"sim"}) == simState; }, Patience))
        QTest::qFail("The modem does not appear", __FILE__, __LINE__);
    return modem;
}
