#pragma once

#include <QObject>

/// Delivers the events of the device service as signals on the thread on which this object lives. Only one
/// object per plugin can listen at a time, because the callbacks of the device service carry no user data.
class DeviceEvents : public QObject
{
    Q_OBJECT

public:
    DeviceEvents() = default;
    ~DeviceEvents() override;

    /// Registers with the device service. Does nothing if that has already been done.
    /// @return false when the device service refused or another object of this plugin is listening
    bool listen();

    /// Unregisters. No callback runs after that, but signals that are already queued are still delivered as
    /// long as this object exists.
    void stop();

Q_SIGNALS:
    // All signals are emitted from the event loop, never from within the callback of the device service.

    /// The list of attached or unusable modems may have changed.
    void changed();

    /// Status values of a modem have changed, such as its network or signal.
    void statusChanged();

    /// Text messages of a modem were received, deleted or changed.
    void messagesChanged();

    /// A request has ended, see class Requests. All changes that it caused have been reported before.
    /// @param request number of the request
    /// @param result  enum QRVL_Result
    /// @param text    what the request says
    void requestEnded(quint32 request, int result, const QString& text);

private:
    static int onDeviceEvent(int type, void* data);
};
