#include "InstanceName.h"
#include "SingleInstance.h"

#include <QSocketNotifier>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>

namespace {

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

/// Every user can bind any name, so who has done so is looked at.
bool belongsToUser(int connection)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    return getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == geteuid();
}

/// Asks the first instance to come to the front.
/// @return false if there is none of this user
bool callFirst(const Address& address)
{
    const int connection = makeSocket();
    const bool isCalled = connect(connection, address.get(), address.size) == 0;
    const bool hasManyCalls = !isCalled && errno == EAGAIN; // it will come to the front for those
    const bool isFound = hasManyCalls || (isCalled && belongsToUser(connection));
    close(connection);
    return isFound;
}

} // namespace

/// Connections to it need no content: each is a start.
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
        QObject::connect(
            &m_notifier, &QSocketNotifier::activated, &m_notifier, [this, raise = std::move(raise)] {
                const int other = accept(m_descriptor, nullptr, nullptr);
                if (other < 0) {
                    m_notifier.setEnabled(errno == EAGAIN); // else it would be called without end
                    return;
                }
                const bool isUsers = belongsToUser(other);
                close(other);
                if (isUsers)
                    raise();
            });
    }

private:
    int m_descriptor;
    QSocketNotifier m_notifier;
};

SingleInstance::SingleInstance()
{
    const Address address;
    const int descriptor = makeSocket();
    if (bind(descriptor, address.get(), address.size) == 0 && listen(descriptor, 1) == 0) {
        m_link = std::make_unique<Link>(descriptor);
        return;
    }
    const bool isTaken = errno == EADDRINUSE;
    close(descriptor);
    m_isSecond = isTaken && callFirst(address);
}

SingleInstance::~SingleInstance() = default;

void SingleInstance::onStartOfOther(std::function<void()> raise)
{
    if (m_link)
        m_link->listenFor(std::move(raise));
}
