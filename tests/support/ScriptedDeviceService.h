#pragma once

#include "qrvl.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <initializer_list>

/// Replaces the device service in tests: implements the interface of qrvl.h and does what the test says.
/// Thread-safe.
class QRVL_API ScriptedDeviceService
{
public:
    /// The three settings views. Here they are separate tables: a write goes to User and Merged.
    enum View { Merged, User, Ini };

    static ScriptedDeviceService& instance();

    /// Forgets settings, devices, results, registrations and calls.
    void reset();

    /// With a null `value`, reading succeeds without a buffer.
    void setSetting(const QString& section, const QString& key, const QString& value, View view = Merged);
    QString setting(const QString& section, const QString& key, View view = Merged) const;

    /// Model names of the available modems, in order.
    void setDevices(const QStringList& names);

    /// The IMSI of the first modem, UTF-8, cut to the buffer that the interface gives.
    void setImsi(const QByteArray& imsi);

    /// The customisation name of the first modem, UTF-8, cut to the buffer that the interface gives.
    void setCustomizeName(const QByteArray& name);

    /// From now on the operation with this name ("QRVL_SetSettings") does nothing but return this code.
    void setResult(const QString& operation, long result);

    /// Calls every registered callback with each event in turn, on another thread, and waits for that. A
    /// callback that is registered twice is called once.
    void fire(std::initializer_list<int> events);

    /// The number of registrations in both lists.
    int registrations() const;

    /// The names of the operations that were called, in order, without those that read settings. Writes of
    /// settings include their arguments.
    QStringList calls() const;
};
