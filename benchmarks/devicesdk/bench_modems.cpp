// How long a change of a real modem takes to the page, and for how long many text messages can block a window. Not compared
// with anything; needs ModemManager, dbus-daemon and python3-dbusmock.
#include "AtModem.h"
#include "DeviceClient.h"
#include "ServiceBus.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QThread>
#include <QVector>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <functional>
#include <memory>

#include <sys/resource.h>

using namespace DeviceClient;

namespace {

constexpr int Changes = 101;
constexpr int Messages = 5000;
const char BusName[] = "bench";
const char ModemInterface[] = "org.freedesktop.ModemManager1.Modem.Modem3gpp";

bool waitUntil(const std::function<bool()>& isTrue)
{
    QElapsedTimer time;
    for (time.start(); time.elapsed() < Patience;) {
        if (isTrue())
            return true;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
    }
    return false;
}

double milliseconds(qint64 nanoseconds)
{
    return double(nanoseconds) / 1e6;
}

void print(const char* title, QVector<qint64> times)
{
    std::sort(times.begin(), times.end());
    std::printf("%s: median %.2f ms, longest %.2f ms\n", title, milliseconds(times[times.size() / 2]),
                milliseconds(times.last()));
}

/// Notes when the daemon's latest signal came, on a thread of its own.
class SignalClock : public QObject
{
    Q_OBJECT

public:
    explicit SignalClock(const QElapsedTimer& time)
        : m_time(time)
    {
    }

    std::atomic<qint64> latest{-1};

public Q_SLOTS:
    void onSignal(const QString& interface, const QVariantMap& values)
    {
        if (interface == ModemInterface && values.contains("RegistrationState"))
            latest = m_time.nsecsElapsed();
    }

private:
    const QElapsedTimer m_time;
};

/// The moments at which a thread with an event loop, such as a window's, learns of a change from the device service.
class Watch : public QObject
{
    Q_OBJECT

public:
    explicit Watch(const QString& bus)
    {
        m_time.start();
        m_clock = std::make_unique<SignalClock>(m_time);
        m_clock->moveToThread(&m_thread);
        m_thread.start();
        QDBusConnection connection = QDBusConnection::connectToBus(bus, BusName);
        connection.connect(QString(), QString(), "org.freedesktop.DBus.Properties", "PropertiesChanged",
                           m_clock.get(), SLOT(onSignal(QString, QVariantMap)));
        s_watch = this;
        QRVL_DevSrv_RegisterDevMgrCallback(&onEvent);
    }
    ~Watch() override
    {
        QRVL_DevSrv_UnRegisterDevMgrCallback(&onEvent);
        QDBusConnection::disconnectFromBus(BusName);
        m_thread.quit();
        m_thread.wait();
    }
    Q_DISABLE_COPY_MOVE(Watch)

    /// Lets the modem change, and waits until the value is seen. Returns false if that does not happen.
    bool follow(const std::function<void()>& change, const QString& registration)
    {
        m_clock->latest = -1;
        m_seen = -1;
        m_wanted = registration;
        const qint64 start = m_time.nsecsElapsed();
        change();
        if (!waitUntil([this] { return m_seen >= 0 && m_clock->latest >= 0; }))
            return false;
        m_fromSignal.append(
            std::max<qint64>(m_seen - m_clock->latest, 0)); // both come over different connections
        m_fromModem.append(m_seen - start);
        return true;
    }

    /// How long it took, in nanoseconds, since the daemon's signal, and since the modem told the daemon.
    const QVector<qint64>& fromSignal() const { return m_fromSignal; }
    const QVector<qint64>& fromModem() const { return m_fromModem; }

private:
    static int onEvent(int type, void*)
    {
        if (type == QRVL_EVENT_DEV_STATUS)
            QMetaObject::invokeMethod(
                s_watch, [] { s_watch->look(); }, Qt::QueuedConnection);
        return 1;
    }

    /// As pages do.
    void look()
    {
        if (m_seen < 0 && values({"registration"}) == m_wanted)
            m_seen = m_time.nsecsElapsed();
    }

    static Watch* s_watch;
    QElapsedTimer m_time;
    QThread m_thread;
    std::unique_ptr<SignalClock> m_clock;
    qint64 m_seen = -1;
    QString m_wanted;
    QVector<qint64> m_fromSignal;
    QVector<qint64> m_fromModem;
};

Watch* Watch::s_watch = nullptr;

/// A modem that answers the daemon without taking time from the page's thread.
class ModemThread
{
public:
    explicit ModemThread(const QByteArray& name)
    {
        m_context.moveToThread(&m_thread);
        m_thread.start();
        run([=] { m_modem = std::make_unique<AtModem>(name, AtModem::Sim()); }, Qt::BlockingQueuedConnection);
    }
    ~ModemThread()
    {
        run([this] { m_modem.reset(); }, Qt::BlockingQueuedConnection);
        m_thread.quit();
        m_thread.wait();
    }
    Q_DISABLE_COPY_MOVE(ModemThread)

    QByteArray port() const { return m_modem->port(); }
    void announce(const QByteArray& line)
    {
        run([=] { m_modem->announce(line); }, Qt::QueuedConnection);
    }

private:
    void run(const std::function<void()>& job, Qt::ConnectionType type)
    {
        QMetaObject::invokeMethod(&m_context, job, type);
    }

    QThread m_thread;
    QObject m_context;
    std::unique_ptr<AtModem> m_modem;
};

/// With the real daemon, whose modem goes into a foreign network and back.
bool measureChanges(ServiceBus& bus)
{
    ModemThread modem("bench-" + QByteArray::number(QCoreApplication::applicationPid()));
    if (!bus.startModemManager() || !waitUntil([] { return value("problem", QRVL_SERVICE) == "2"; }) ||
        !bus.addModem("bench", modem.port()) || !waitUntil([] { return values({"registration"}) == "home"; }))
        return false;
    Watch watch(bus.address());
    for (int i = 0; i < Changes; ++i) {
        const bool isRoaming = i % 2 == 0;
        const QByteArray state = isRoaming ? "5" : "1";
        const auto change = [&] {
            modem.announce("+CREG: " + state + R"(,"0001","00000001")");
            modem.announce("+CGREG: " + state + R"(,"0001","00000001",2)");
        };
        if (!watch.follow(change, isRoaming ? "roaming" : "home"))
            return false;
    }
    print("A change, from the daemon's signal to the page", watch.fromSignal());
    print("A change, from the modem through the daemon to the page", watch.fromModem());
    return true;
}

/// How long a window waits for what it asks the service.
struct Waits
{
    qint64 longest = 0;        ///< in nanoseconds
    qint64 longestBlocked = 0; ///< without the waits in which the processor had just been given to others
};

long sleepsOfThisThread()
{
    rusage usage = {};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
}

/// Asks as a window does until a condition becomes true.
bool measureWaits(const std::function<bool()>& isOver, Waits& waits)
{
    waits = {};
    return waitUntil([&] {
        const long sleeps = sleepsOfThisThread();
        QElapsedTimer step;
        step.start();
        const uint32_t id = modemId();
        value("signal", id);
        value("registration", id);
        const qint64 time = step.nsecsElapsed();
        waits.longest = std::max(waits.longest, time);
        if (sleepsOfThisThread() != sleeps) // for a lock
            waits.longestBlocked = std::max(waits.longestBlocked, time);
        return isOver();
    });
}

void print(const char* title, const Waits& waits)
{
    std::printf("%s: a window is blocked for %.2f ms at most, and waits for the processor for %.2f ms\n",
                title, milliseconds(waits.longestBlocked), milliseconds(waits.longest));
}

/// With a daemon that does what it is told, because the real one is slow at this.
bool measureMessages(ServiceBus& bus)
{
    if (!bus.startFakeModemManager())
        return false;
    QElapsedTimer time;
    time.start();
    bus.controlModems("Plug", {QVariantMap(), QVariantMap(), uint(Messages)});
    Waits listing;
    QString list;
    const auto isListed = [&] {
        list = values({"messages"});
        return list.count(' ') == Messages - 1;
    };
    if (!measureWaits(isListed, listing))
        return false;
    std::printf("%d messages are listed after %.1f s\n", Messages, double(time.elapsed()) / 1000);
    print("While they are listed", listing);

    const QScopedPointer<QThread> reader(QThread::create([list, id = modemId()] {
        for (const QString& message : list.split(' ')) {
            for (const char* part : {"sender", "time", "text", "state"})
                value(QString("message.%1.%2").arg(message, part), id);
        }
    }));
    Waits reading;
    reader->start();
    const bool isRead = measureWaits([&] { return reader->isFinished(); }, reading);
    reader->wait();
    print("While a worker reads them", reading);
    return isRead;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    ServiceBus bus;
    qputenv("QRVL_BACKEND", "modemmanager");
    qputenv("QRVL_BUS", bus.address().toLocal8Bit());
    waitUntil([] { return value("problem", QRVL_SERVICE) == "no-modemmanager"; });
    const bool isMeasured = measureChanges(bus);
    bus.killModemManager();
    waitUntil([] { return modems().isEmpty(); });
    return isMeasured && measureMessages(bus) ? EXIT_SUCCESS : EXIT_FAILURE;
}

#include "bench_modems.moc"
