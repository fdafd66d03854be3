#pragma once

#include "backends/dbus/DBusTypes.h"

#include <QHash>
#include <QObject>
#include <QQueue>
#include <QSet>

#include <functional>

class QDBusMessage;
class QDBusPendingCall;

/// A copy of the objects of a D-Bus service that has an object manager, kept up to date by its signals. Lives on
/// one thread with an event loop; nothing blocks.
class DBusMirror : public QObject
{
    Q_OBJECT

public:
    /// Only these interfaces are copied and followed.
    DBusMirror(const QDBusConnection& bus, const QString& service, const QString& managerPath,
               const QStringList& interfaces);

    /// Begins; the service may appear later.
    void start();

    const QDBusConnection& bus() const { return m_bus; }
    const QString& service() const { return m_service; }

    /// Whether the service is running and its objects are known.
    bool isPresent() const { return m_isPresent; }

    /// Whether the first attempt to reach the service is over.
    bool isDecided() const { return m_isDecided; }

    /// The objects that have this interface, in the order of their numbers.
    QStringList paths(const QString& interface) const;

    bool contains(const QString& path, const QString& interface) const;
    QVariant value(const QString& path, const QString& interface, const QString& property) const;

    /// Reads an object that the manager does not list, or again one that is known; then objectChanged() is sent
    /// and `done` called, also after a failure. Few reads are under way at a time, because buses limit that.
    /// When the service ends or the object is forgotten meanwhile, only `done` is called.
    void fetch(const QString& path, const QString& interface, const std::function<void()>& done = {});

    /// Whether fetch() for this object has not been answered yet.
    bool isFetching(const QString& path) const { return m_fetching.contains(path); }

    /// Removes an object that was fetched.
    void forget(const QString& path)
    {
        m_objects.remove(path);
        m_fetching.remove(path);
    }

    /// Connects a slot to a signal of all objects of the service.
    void connectTo(const QString& interface, const QString& signal, QObject* receiver, const char* slot)
    {
        m_bus.connect(m_service, QString(), interface, signal, receiver, slot);
    }

Q_SIGNALS:
    /// The service has started or ended, or could not be reached. When it ends, all objects are gone.
    void presenceChanged();

    /// An object was added, removed or has new values.
    void objectChanged(const QString& path);

private Q_SLOTS:
    void onInterfacesAdded(const QDBusObjectPath& path, const VariantMaps& interfaces);
    void onInterfacesRemoved(const QDBusObjectPath& path, const QStringList& interfaces);
    void onPropertiesChanged(const QString& interface, const QVariantMap& values,
                             const QStringList& invalidated, const QDBusMessage& message);

private:
    struct Read
    {
        int number;
        QString path;
        QString interface;
        std::function<void()> done;
    };

    void subscribe();
    void readObjects();
    void adopt(const ManagedObjects& objects);
    bool add(const QString& path, const VariantMaps& interfaces);
    void lose();
    void fetchNext();
    void finishRead(const Read& read, const QDBusPendingCall& call);

    QDBusConnection m_bus;
    QString m_service;
    QString m_managerPath;
    QStringList m_interfaces;
    QHash<QString, VariantMaps> m_objects;
    QQueue<Read> m_toFetch;
    QMultiHash<QString, int> m_fetching; // numbers of reads by path, including those that wait
    int m_lastRead = 0;                  // the number of it
    int m_reads = 0;                     // under way
    int m_generation = 0;                // a list of objects from before the service ended is ignored
    bool m_isPresent = false;
    bool m_isDecided = false;
};
