#include "DesktopNotification.h"

#include "support/Text.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QGuiApplication>
#include <QLibrary>

#include <functional>

namespace {

// Plain constants instead of QStringLiteral: Qt's D-Bus library keeps a message until it is answered, which can be after
// this plugin and its literals have been unloaded.
constexpr QLatin1String Service("org.freedesktop.Notifications");
constexpr QLatin1String Path("/org/freedesktop/Notifications");
constexpr QLatin1String DefaultAction("default"); // a click on the notification
constexpr int DesktopDecides = -1;                // how long it is shown

QDBusMessage methodCall(const char* method, const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(Service, Path, Service, QLatin1String(method));
    message.setArguments(arguments);
    return message;
}

/// Qt's D-Bus library must stay in memory when this plugin is unloaded, because its threads go on.
void keepDBusLoaded()
{
    QLibrary library(QLatin1String("Qt5DBus"), 5);
    library.setLoadHints(QLibrary::PreventUnloadHint);
    library.load();
}

} // namespace

/// Asks the desktop what it can show, then shows the latest notification. Until the desktop has named the notification,
/// a later one could not replace it and waits.
class DesktopNotification::Private : public QObject
{
    Q_OBJECT

public:
    explicit Private(DesktopNotification& owner)
        : m_owner(owner)
    {
    }

    void show(const QString& title, const QString& body, const char* category)
    {
        connectToDesktop();
        m_title = title;
        m_body = body;
        m_category = QString::fromLatin1(category);
        m_isWanted = m_isOutdated = true;
        if (!m_isBusy)
            begin();
    }

    void close()
    {
        m_isWanted = false;
        if (m_id != 0)
            call("CloseNotification", {std::exchange(m_id, 0)}, [](const QVariant&) {});
    }

private Q_SLOTS:
    void takeAction(uint id, const QString& action)
    {
        if (id == m_id && action == DefaultAction)
            Q_EMIT m_owner.activated();
    }

    void takeEnd(uint id, uint)
    {
        if (id == m_id)
            m_id = 0;
    }

private:
    void connectToDesktop()
    {
        if (std::exchange(m_isConnected, true))
            return;
        keepDBusLoaded();
        QDBusConnection bus = QDBusConnection::sessionBus();
        bus.connect(Service, Path, Service, QLatin1String("ActionInvoked"), this,
                    SLOT(takeAction(uint, QString)));
        bus.connect(Service, Path, Service, QLatin1String("NotificationClosed"), this,
                    SLOT(takeEnd(uint, uint)));
    }

    void begin()
    {
        m_isBusy = true;
        call("GetCapabilities", {}, [this](const QVariant& answer) {
            const bool hasMarkup = answer.toStringList().contains(QLatin1String("body-markup"));
            if (m_isWanted && answer.isValid())
                notify(hasMarkup ? m_body.toHtmlEscaped() : m_body);
            else
                m_isBusy = false;
        });
    }

    void notify(const QString& body)
    {
        m_isOutdated = false;
        // The application plays the sound itself.
        const QVariantMap hints = {{QLatin1String("suppress-sound"), true},
                                   {QLatin1String("category"), m_category}};
        const QStringList actions = {QString(DefaultAction), text("IDS_NOTIFY_SHOW")};
        call("Notify",
             {QGuiApplication::applicationDisplayName(), m_id, QString(), m_title, body, actions, hints,
              DesktopDecides},
             [this](const QVariant& answer) {
                 m_id = answer.toUInt();
                 m_isBusy = false;
                 if (!m_isWanted)
                     close();
                 else if (m_isOutdated)
                     begin();
             });
    }

    /// @param onAnswer receives an invalid value if the call fails
    void call(const char* method, const QVariantList& arguments,
              const std::function<void(const QVariant&)>& onAnswer)
    {
        const QDBusPendingCall pending =
            QDBusConnection::sessionBus().asyncCall(methodCall(method, arguments));
        auto* const watcher = new QDBusPendingCallWatcher(pending, this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [=] {
            watcher->deleteLater();
            onAnswer(watcher->isError() ? QVariant() : watcher->reply().arguments().value(0));
        });
    }

    DesktopNotification& m_owner;
    bool m_isConnected = false;
    bool m_isWanted = false;   ///< not closed since show()
    bool m_isOutdated = false; ///< the desktop does not know the latest notification yet
    bool m_isBusy = false;     ///< a notification is on its way to the desktop
    uint m_id = 0;             ///< of the notification that is shown; 0 without one
    QString m_title;
    QString m_body;
    QString m_category;
};

DesktopNotification::DesktopNotification()
    : d(std::make_unique<Private>(*this))
{
}

DesktopNotification::~DesktopNotification()
{
    close();
}

void DesktopNotification::show(const QString& title, const QString& body, const char* category)
{
    d->show(title, body, category);
}

void DesktopNotification::close()
{
    d->close();
}

#include "DesktopNotification_unix.moc"
