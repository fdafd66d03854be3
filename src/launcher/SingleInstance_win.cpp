#include "InstanceName.h"
#include "SingleInstance.h"

#include <QWinEventNotifier>

#include <qt_windows.h>

/// An event that every other start sets.
class SingleInstance::Link
{
public:
    explicit Link(HANDLE event)
        : m_event(event)
        , m_notifier(event)
    {
    }
    ~Link()
    {
        m_notifier.setEnabled(false);
        CloseHandle(m_event);
    }

    void listenFor(std::function<void()> raise)
    {
        QObject::connect(&m_notifier, &QWinEventNotifier::activated, &m_notifier,
                         [raise = std::move(raise)](HANDLE) { raise(); });
    }

private:
    HANDLE m_event;
    QWinEventNotifier m_notifier;
};

SingleInstance::SingleInstance()
{
    const QByteArray name = "Local\\" + instanceName();
    HANDLE const event = CreateEventA(nullptr, FALSE, FALSE, name.constData());
    m_isSecond = event && GetLastError() == ERROR_ALREADY_EXISTS;
    if (!m_isSecond && event) {
        m_link = std::make_unique<Link>(event);
        return;
    }
    if (!event)
        return;
    AllowSetForegroundWindow(ASFW_ANY); // the user has started this process, so it may pass the right on
    SetEvent(event);
    CloseHandle(event);
}

SingleInstance::~SingleInstance() = default;

void SingleInstance::onStartOfOther(std::function<void()> raise)
{
    if (m_link)
        m_link->listenFor(std::move(raise));
}
