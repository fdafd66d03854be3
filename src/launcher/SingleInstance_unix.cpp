#include "InstanceName.h"
#include "SingleInstance.h"

#include <QSocketNotifier>
#include <QThread>
#include <QTimer>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstring>

namespace {

using namespace std::chrono_literals;

constexpr auto AcceptPause = 1s; ///< after a failure that does not pass at once

// An instance that is just starting or ending has the name but does not listen: for how long to try again.
constexpr int MaxAttempts = 20;
constexpr unsigned long AttemptPauseMs = 10;

/// A socket in the abstract name space: it needs no file and vanishes with its process.
struct Address
{
    Address()
    {
        const QByteArray text = instanceName();
        data.sun_family = AF_UNIX;
        std::memcpy(data.sun_path + 1, text.constData(), std::size_t(text.size()));
        size = socklen_t(offsetof(sockaddr_un, sun_path) + 1 + std::size_t(text.size()));
    }

    const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&data); }

    sockaddr_un data{};
    socklen_t size;
};

int makeSocket()
{
    return socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

/// Every user can bind any name, so the owner of the other end is checked.
bool belongsToUser(int connection)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    return getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == geteuid();
}

/// @return a socket that listens at the address; -1 on failure, `errno` gives the reason
int listenAt(const Address& address)
{
    const int descriptor = makeSocket();
    if (bind(descriptor, address.get(), address.size) == 0 && listen(descriptor, 1) == 0)
        return descriptor;
    const int reason = errno;
    close(descriptor);
    errno = reason;
    return -1;
}

/// Who has the name of the instance.
enum class Holder {
    User,     ///< an instance of this user; it was asked to come to the front
    Stranger, ///< another user's process
    Silent,   ///< a process that does not listen, or none
};

/// Asks the first instance to come to the front.
Holder callFirst(const Address& address)
{
    const int connection = makeSocket();
    const int failure = connect(connection, address.get(), address.size) == 0 ? 0 : errno;
    const bool isUsers = failure == 0 && belongsToUser(connection);
    close(connection);
    if (failure == ECONNREFUSED)
        return Holder::Silent;
    // With EAGAIN many calls are waiting already; it will come to the front for those.
    return isUsers || failure == EAGAIN ? Holder::User : Holder::Stranger;
}

} // namespace

/// Listens for other starts. Each connection is one; nothing is sent.
class SingleInstance::Link
{
public:
    explicit Link(int descriptor)
        : m_descriptor(descriptor)
        , m_notifier(descriptor, QSocketNotifier::Read)
    {
    }
    ~Link()
    {
        m_notifier.setEnabled(false);
        close(m_descriptor);
    }

    void listenFor(std::function<void()> raise)
    {
        QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier,
                         [this, raise = std::move(raise)] { takeCall(raise); });
    }

private:
    void takeCall(const std::function<void()>& raise)
    {
        const int other = accept(m_descriptor, nullptr, nullptr);
        if (other < 0) {
            if (errno != EAGAIN)
                pause(errno);
            return;
        }
        const bool isUsers = belongsToUser(other);
        close(other);
        if (isUsers)
            raise();
    }

    /// After a lasting failure, such as too many open files, the notifier would report the same call without end.
    void pause(int reason)
    {
        qWarning("Another start cannot be noticed yet: %s", std::strerror(reason));
        m_notifier.setEnabled(false);
        QTimer::singleShot(AcceptPause, &m_notifier, [this] { m_notifier.setEnabled(true); });
    }

    int m_descriptor;
    QSocketNotifier m_notifier;
};

SingleInstance::SingleInstance()
{
    const Address address;
    for (int attempt = 1; attempt <= MaxAttempts; ++attempt) {
        const int descriptor = listenAt(address);
        if (descriptor >= 0)
            m_link = std::make_unique<Link>(descriptor);
        if (descriptor >= 0 || errno != EADDRINUSE)
            return;
        const Holder holder = callFirst(address);
        m_isSecond = holder == Holder::User;
        if (holder != Holder::Silent)
            return;
        QThread::msleep(AttemptPauseMs);
    }
}

SingleInstance::~SingleInstance() = default;

void SingleInstance::onStartOfOther(std::function<void()> raise)
{
    if (m_link)
        m_link->listenFor(std::move(raise));
}
