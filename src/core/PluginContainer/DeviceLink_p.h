#pragma once

#include <QString>

#include <atomic>

class IDeviceMgr;

/// The container's link to the device service: it registers for device events, waits for one and keeps the
/// name of the modem that the latest one reported. One configuration thread uses it at a time; events come
/// on threads of the device service.
///
/// `function` is the operation that the log lines name.
class DeviceLink
{
public:
    /// @param isRegistered true while the device service holds the callbacks; must outlive the link
    explicit DeviceLink(bool& isRegistered);

    /// Registers for both kinds of events. Failures are only logged.
    void registerCallbacks(const char* function);
    void unregisterCallbacks();

    /// Unregisters what a terminated configuration thread left registered.
    void unregisterAfterTermination();

    /// Waits for a device event for at most 10 s; returns at once after close().
    void waitForEvent(const char* function);

    /// Ends the wait and prevents further ones, because the application is closing. Any thread.
    void close();
    bool isClosed() const { return m_isClosed; }

    /// The name that the latest event reported, which is forgotten; without one, that of the device used last.
    static QString takeDeviceName(IDeviceMgr& deviceMgr, const char* function);

    /// Handles a device event on a thread of the device service.
    /// @return 1
    static int handleEvent(int type, const char* function);

private:
    bool& m_isRegistered;
    std::atomic<bool> m_isClosed{false};
};
