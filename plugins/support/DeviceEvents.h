#pragma once

#include <QObject>

/// Brings the device service's events to the thread this object lives on. A library has one at most: the
/// service's callbacks carry no user data, so the receiver is found through a variable of the library.
class DeviceEvents : public QObject
{
    Q_OBJECT

public:
    DeviceEvents() = default;
    ~DeviceEvents() override;

    /// Registers with the device service; does nothing when that has happened.
    /// @return whether the service took the registration
    bool listen();

    /// Unregisters. Afterwards no callback runs; a signal that is still queued comes none the less, or
    /// goes with this object.
    void stop();

    /// Whether a modem was refused, as an operator lock does, and none has come or gone since. The service
    /// neither tells which one it was nor that it was unplugged, nor of refusals before listen(). To be asked
    /// on this object's thread.
    bool wasRefused() const { return m_wasRefused; }

Q_SIGNALS:
    // All come through the event loop, never from within the service's callback.

    /// The set of modems may have changed, or wasRefused().
    void changed();

    /// A modem has other status values, such as network and signal.
    void statusChanged();

    /// Text messages of a modem came, went or changed.
    void messagesChanged();

private:
    static int onDeviceEvent(int type, void*);
    void tell(int type);

    bool m_wasRefused = false;
};
