#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

class DeviceEvents;

/// How a request of the device service has ended.
struct RequestEnd
{
    int result = 0; ///< enum QRVL_Result
    QString text;   ///< what the request says, see qrvl.h
};

/// Starts requests of qrvl.h and delivers their ends. GUI thread only.
///
///     m_requests.start([=](quint32* request) { return QRVL_DevSrv_Disconnect(modem, request); }, this,
///                      [this](const RequestEnd& end) { showEnd(end); });
class Requests : public QObject
{
    Q_OBJECT

public:
    /// Calls an operation of qrvl.h with this pointer as its last argument.
    using Start = std::function<long(quint32* request)>;
    using Done = std::function<void(const RequestEnd&)>;

    /// @param events those of PagePlugin::followDevices(); must be listening, and outlive this object
    explicit Requests(DeviceEvents* events, QObject* parent = nullptr);

    /// Starts a request.
    /// @param start    called once, before this returns
    /// @param receiver its deletion cancels the delivery, not the request
    /// @param done     called exactly once while receiver and this object exist, always from the event loop: when the
    ///                 request has ended, or with the result of the operation if that did not accept the request
    void start(const Start& start, QObject* receiver, const Done& done);

private:
    struct Pending
    {
        QPointer<QObject> receiver;
        Done done;
    };

    void finish(quint32 request, int result, const QString& text);
    static void deliver(const Pending& pending, const RequestEnd& end);

    QHash<quint32, Pending> m_pending; ///< by number of the request
};

/// The characters of a string as qrvl.h takes them; valid while the string is neither changed nor deleted.
inline const char16_t* utf16(const QString& text)
{
    return reinterpret_cast<const char16_t*>(text.utf16());
}
