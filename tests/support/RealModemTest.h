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
    /// Plugs in a modem, and waits until it is shown with this state of its SIM, and perhaps a registration.
    std::unique_ptr<AtModem> plug(const AtModem::Sim& sim, const QString& state);

    /// A modem that ModemManager has enabled, so that it can be used.
    std::unique_ptr<AtModem> plugReady() { return plug({}, "ready home"); }

    ServiceBus m_bus;

private slots:
    void initTestCase();
    void init();
    void cleanup();
};
