#include "backends/dbus/DBusMirror.h"

#include "Log.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

#include <algorithm>
#include <utility>

namespace {

constexpr int ReadsAtOnce = 32; // the system's bus allows 128 for a connection
const char ObjectManager[] = "org.freedesktop.DBus.ObjectManager";
const char Properties[] = "org.freedesktop.DBus.Properties";

int numberOf(const QString& path)
{
    return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1).toInt();
}

} // namespace

DBusMirror::DBusMirror(const QDBusConnection& bus, const QString& service, const QString& managerPath,
                       const QStringList& interfaces)
    : m_bus(bus)
    , m_service(service)
    , m_managerPath(managerPath)
    , m_interfaces(interfaces)
{
    DBusTypes::declare();
}

void DBusMirror::start()
{
    auto* const watcher =
        new QDBusServiceWatcher(m_service, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString& before, const QString& after) {
                if (!before.isEmpty())
                    lose();
                if (!after.isEmpty())
                    readObjects();
            });
    subscribe();
    readObjects(); // starts the service if the bus can
}

void DBusMirror::subscribe()
{
    const QString manager = QLatin1String(ObjectManager);
    m_bus.connect(m_service, m_managerPath, manager, QStringLiteral("InterfacesAdded"), this,
                  SLOT(onInterfacesAdded(QDBusObjectPath, VariantMaps)));
    m_bus.connect(m_service, m_managerPath, manager, QStringLiteral("InterfacesRemoved"), this,
                  SLOT(onInterfacesRemoved(QDBusObjectPath, QStringList)));
    for (const QString& interface : qAsConst(m_interfaces))
        m_bus.connect(m_service, QString(), QLatin1String(Properties), QStringLiteral("PropertiesChanged"),
                      {interface}, QStringLiteral("sa{sv}as"), this,
                      SLOT(onPropertiesChanged(QString, QVariantMap, QStringList, QDBusMessage)));
}

void DBusMirror::readObjects()
{
    const auto call = QDBusMessage::createMethodCall(m_service, m_managerPath, QLatin1String(ObjectManager),
                                                     QStringLiteral("GetManagedObjects"));
    auto* const watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, generation = m_generation] {
        watcher->deleteLater();
        const QDBusPendingReply<ManagedObjects> reply = *watcher;
        if (generation != m_generation)
            return;
        if (reply.isError())
            qCDebug(logDeviceSdk, "%s does not answer: %s", qUtf8Printable(m_service),
                    qUtf8Printable(reply.error().name()));
        else
            adopt(reply.value());
        m_isDecided = true;
        Q_EMIT presenceChanged();
    });
}

void DBusMirror::adopt(const ManagedObjects& objects)
{
    m_isPresent = true;
    for (auto object = objects.cbegin(); object != objects.cend(); ++object) {
        if (add(object.key().path(), object.value()))
            Q_EMIT objectChanged(object.key().path());
    }
}

/// Returns false if the object has none of the interfaces that are followed.
bool DBusMirror::add(const QString& path, const VariantMaps& interfaces)
{
    bool isFollowed = false;
    for (auto values = interfaces.cbegin(); values != interfaces.cend(); ++values) {
        if (!m_interfaces.contains(values.key()))
            continue;
        m_objects[path].insert(values.key(), values.value());
        isFollowed = true;
    }
    return isFollowed;
}

void DBusMirror::lose()
{
    ++m_generation;
    m_isPresent = false;
    m_objects.clear();
    m_fetching.clear();
    for (const Read& read : std::exchange(m_toFetch, {})) {
        if (read.done)
            read.done();
    }
    Q_EMIT presenceChanged();
}

QStringList DBusMirror::paths(const QString& interface) const
{
    QStringList paths;
    for (auto object = m_objects.cbegin(); object != m_objects.cend(); ++object) {
        if (object->contains(interface))
            paths.append(object.key());
    }
    std::sort(paths.begin(), paths.end(),
              [](const QString& a, const QString& b) { return numberOf(a) < numberOf(b); });
    return paths;
}

bool DBusMirror::contains(const QString& path, const QString& interface) const
{
    const auto object = m_objects.constFind(path);
    return object != m_objects.cend() && object->contains(interface);
}

QVariant DBusMirror::value(const QString& path, const QString& interface, const QString& property) const
{
    const auto object = m_objects.constFind(path);
    if (object == m_objects.cend())
        return {};
    const auto values = object->constFind(interface);
    return values == object->cend() ? QVariant() : values->value(property);
}

void DBusMirror::fetch(const QString& path, const QString& interface, const std::function<void()>& done)
{
    m_fetching.insert(path, ++m_lastRead);
    m_toFetch.enqueue({m_lastRead, path, interface, done});
    fetchNext();
}

void DBusMirror::fetchNext()
{
    while (m_reads < ReadsAtOnce && !m_toFetch.isEmpty()) {
        const Read read = m_toFetch.dequeue();
        auto call = QDBusMessage::createMethodCall(m_service, read.path, QLatin1String(Properties),
                                                   QStringLiteral("GetAll"));
        call << read.interface;
        ++m_reads;
        auto* const watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, read] {
            watcher->deleteLater();
            finishRead(read, *watcher);
        });
    }
}

void DBusMirror::finishRead(const Read& read, const QDBusPendingCall& call)
{
    const QDBusPendingReply<QVariantMap> reply = call;
    const bool isWanted = m_fetching.remove(read.path, read.number) != 0; // it was neither lost nor forgotten
    if (isWanted && !reply.isError())
        m_objects[read.path][read.interface] = reply.value();
    --m_reads;
    fetchNext();
    if (isWanted)
        Q_EMIT objectChanged(read.path);
    if (read.done)
        read.done();
}

void DBusMirror::onInterfacesAdded(const QDBusObjectPath& path, const VariantMaps& interfaces)
{
    if (add(path.path(), interfaces))
        Q_EMIT objectChanged(path.path());
}

void DBusMirror::onInterfacesRemoved(const QDBusObjectPath& path, const QStringList& interfaces)
{
    const auto object = m_objects.find(path.path());
    if (object == m_objects.end())
        return;
    for (const QString& interface : interfaces)
        object->remove(interface);
    if (object->isEmpty())
        m_objects.erase(object);
    Q_EMIT objectChanged(path.path());
}

/// Only objects that are known already: an answer that is still to come has the new values too.
void DBusMirror::onPropertiesChanged(const QString& interface, const QVariantMap& values,
                                     const QStringList& invalidated, const QDBusMessage& message)
{
    const QString path = message.path();
    if (!contains(path, interface))
        return;
    QVariantMap& known = m_objects[path][interface];
    for (auto value = values.cbegin(); value != values.cend(); ++value)
        known.insert(value.key(), value.value());
    for (const QString& property : invalidated)
        known.remove(property);
    Q_EMIT objectChanged(path);
}
