#pragma once

#include "AtModem.h"
#include "DeviceClient.h"
#include "ServiceBus.h"

#include <QtTest>

#include <memory>

/// Base of tests with the real ModemManager on a bus of its own. Each test function begins with a new one that has
/// no modems.
class RealModemTest : public QObject
{
    Q_OBJECT

protected:
    ServiceBus& bus() { return *m_bus; }

    /// Plugs in a modem, and waits until it is shown with this state of its SIM.
    std::unique_ptr<AtModem> plug(const AtModem::Sim& sim, const QString& simState);
    std::unique_ptr<AtModem> plugReady() { return plug({}, "ready"); }

private slots:
    void initTestCase();
    void init();
    void cleanup();

private:
    std::unique_ptr<ServiceBus> m_bus;
    int m_count = 0;
};
