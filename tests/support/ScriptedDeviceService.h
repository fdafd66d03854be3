#pragma once

#include "qrvl.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <initializer_list>

/// Stands in for the device service: implements the interface of qrvl.h and does what the test says. Any
/// thread.
class QRVL_API ScriptedDeviceService
{
public:
    /// The three settings views. Each is a table of its own here: a write goes to User and Merged.
    enum View { Merged, User, Ini };

    static ScriptedDeviceService& instance();

    /// Forgets settings, devices, results, registrations and calls.
    void reset();

    /// A null text makes reading succeed without a value.
    void setSetting(const QString& section, const QString& key, const QString& value, View view = Merged);
    QString setting(const QString& section, const QString& key, View view = Merged) const;

    /// Model names of the available modems, in order.
    void setDevices(const QStringList& names);

    /// The IMSI of the first modem, UTF-8, cut to the buffer that the interface gives.
    void setImsi(const QByteArray& imsi);

    /// The named operation ("QRVL_SetSettings") only returns this code from now on.
    void setResult(const QString& operation, long result);

    /// Calls every registered callback with each event in turn, on a thread of the service; returns when that
    /// is done. A callback that is registered twice is called once.
    void fire(std::initializer_list<int> events);

    /// How many registrations there are, both lists together.
    int registrations() const;

    /// The names of the calls other than reads of settings, in order; settings writes give all three texts.
    QStringList calls() const;
};
