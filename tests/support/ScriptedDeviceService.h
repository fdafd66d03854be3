#pragma once

#include "Guarded.h"
#include "qrvl.h"

#include <QHash>
#include <QStringList>

#include <initializer_list>
#include <set>
#include <utility>

/// Replaces the device service in tests: implements the interface of qrvl.h and does what the test says.
/// Thread-safe.
class QRVL_API ScriptedDeviceService
{
public:
    /// The three settings views. Here they are separate tables: a write goes to User and Merged.
    enum View { Merged, User, Ini };

    struct State
    {
        QHash<QPair<QString, QString>, QString> settings[3];
        std::set<std::pair<int, QRVL_DevCallback>> callbacks; // with their lists
        QStringList devices;
        QByteArray imsi;
        QByteArray customizeName;
        QHash<QString, long> results;
        QStringList calls;
    };

    Guarded<State>::Access lock() { return m_state.lock(); }

    static ScriptedDeviceService& instance();

    /// Forgets settings, devices, results, registrations and calls.
    void reset() { lock().value = {}; }

    /// With a null `value`, reading succeeds without a buffer.
    void setSetting(const QString& section, const QString& key, const QString& value, View view = Merged)
    {
        lock()->settings[view].insert({section, key}, value);
    }

    /// Model names of the available modems, in order.
    void setDevices(const QStringList& names) { lock()->devices = names; }

    /// The IMSI of the first modem, UTF-8, cut to the buffer that the interface gives.
    void setImsi(const QByteArray& imsi) { lock()->imsi = imsi; }

    /// The customisation name of the first modem, UTF-8, cut to the buffer that the interface gives.
    void setCustomizeName(const QByteArray& name) { lock()->customizeName = name; }

    /// From now on the operation with this name ("QRVL_SetSettings") does nothing but return this code.
    void setResult(const QString& operation, long result) { lock()->results.insert(operation, result); }

    /// Calls every registered callback with each event in turn, on another thread, and waits for that. A
    /// callback that is registered twice is called once.
    void fire(std::initializer_list<int> events);

    /// The number of registrations in both lists.
    int registrations() { return int(lock()->callbacks.size()); }

    /// The names of the operations that were called, in order, without those that read settings. Writes of
    /// settings include their arguments.
    QStringList calls() { return lock()->calls; }

private:
    Guarded<State> m_state;
};
