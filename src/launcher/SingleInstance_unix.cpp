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
        QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier,
                         [this, raise = std::move(raise)] {
                             const int other = accept(m_descriptor, nullptr, nullptr);
                             if (other >= 0)
                                 close(other);
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
    m_isSecond = errno == EADDRINUSE;
    close(descriptor);
    if (!m_isSecond)
        return; // without sockets there is nobody to find
    const int other = makeSocket();
    connect(other, address.get(), address.size);
    close(other);
}

SingleInstance::~SingleInstance() = default;

void SingleInstance::onStartOfOther(std::function<void()> raise)
{
    if (m_link)
        m_link->listenFor(std::move(raise));
}
