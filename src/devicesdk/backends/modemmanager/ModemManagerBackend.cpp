#include "backends/modemmanager/ModemManagerBackend.h"

#include "Log.h"
#include "backends/modemmanager/ModemClient.h"
#include "files/FileAccess.h"
#include "files/IniDocument.h"
#include "qrvl.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDeadlineTimer>
#include <QEventLoop>

using namespace std::chrono_literals;

namespace {

constexpr auto LongWait = 24h; // condition variables cannot wait until the end of time
constexpr auto Patience = 2s;
const char BackendName[] = "modemmanager";

Customization readRules(const QString& file)
{
    return Customization(IniDocument(FileAccess::read(file).bytes));
}

DeviceState stateWithout(const char* problem)
{
    const QString reason = QLatin1String(problem);
    return {{},
            {{QStringLiteral("backend"), QLatin1String(BackendName)},
             {QStringLiteral("problem"), reason},
             {QStringLiteral("connection-problem"), reason}}};
}

} // namespace

ModemManagerBackend::ModemManagerBackend(const QString& rulesFile)
    : m_state{{}, {{QStringLiteral("backend"), QLatin1String(BackendName)}}}
{
    if (!QCoreApplication::instance()) {
        m_state = stateWithout("no-bus");
        return;
    }
    m_thread.reset(QThread::create([this, rulesFile] { run(rulesFile); }));
    m_thread->setObjectName(QLatin1String(BackendName));
    m_thread->start();
}

void ModemManagerBackend::run(const QString& rulesFile)
{
    const QDBusConnection bus = DBusTypes::connectToBus();
    if (!bus.isConnected()) {
        qCWarning(logDeviceSdk, "The message bus of the system cannot be reached: %s",
                  qUtf8Printable(bus.lastError().name()));
        adopt(stateWithout("no-bus"), {});
        return;
    }
    ModemClient client(bus, readRules(rulesFile));
    QObject::connect(
        &client, &ModemClient::changed, &client,
        [this](const DeviceState& state, const QVector<RequestEnd>& ends) { adopt(state, ends); });
    QEventLoop loop;
    {
        const std::lock_guard lock(m_mutex);
        m_client = &client;
    }
    client.start();
    loop.exec();
    {
        const std::lock_guard lock(m_mutex);
        m_client = nullptr;
    }
    QDBusConnection::disconnectFromBus(bus.name());
}

void ModemManagerBackend::adopt(DeviceState state, const QVector<RequestEnd>& ends)
{
    {
        const std::lock_guard lock(m_mutex);
        std::swap(m_state, state); // the old one is released without the lock
        m_ends += ends;
        m_hasChanged = true;
    }
    m_wakeUp.notify_all();
}

DeviceState ModemManagerBackend::look()
{
    const std::lock_guard lock(m_mutex);
    return m_state;
}

bool ModemManagerBackend::wait(Clock::time_point until)
{
    std::unique_lock lock(m_mutex);
    m_wakeUp.wait_until(lock, std::min(until, Clock::now() + LongWait),
                        [this] { return m_hasChanged || m_isWoken; });
    m_isWoken = false;
    return std::exchange(m_hasChanged, false);
}

void ModemManagerBackend::wake()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isWoken = true;
    }
    m_wakeUp.notify_all();
}

/// Calls a function with the client, on the client's thread. Returns false if there is none.
template <typename Function>
bool ModemManagerBackend::callClient(Function function)
{
    const std::lock_guard lock(m_mutex);
    return m_client &&
           QMetaObject::invokeMethod(
               m_client, [client = m_client, function] { function(*client); }, Qt::QueuedConnection);
}

void ModemManagerBackend::start(Request request)
{
    const quint32 number = request.number;
    const auto shared = std::make_shared<Request>(std::move(request));
    if (callClient([shared](ModemClient& client) { client.begin(*shared); }))
        return;
    {
        const std::lock_guard lock(m_mutex);
        m_ends.append({number, QRVL_ERROR_SERVICE, {}});
        m_hasChanged = true;
    }
    m_wakeUp.notify_all();
}

QVector<RequestEnd> ModemManagerBackend::takeEnds()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_ends, {});
}

void ModemManagerBackend::detect()
{
    callClient([](ModemClient& client) { client.detect(); });
}

void ModemManagerBackend::end()
{
    if (!m_thread)
        return;
    m_thread->quit();
    if (m_thread->wait(QDeadlineTimer(Patience)))
        m_thread.reset(); // otherwise left behind: the bus may not answer the thread that connects to it
}
