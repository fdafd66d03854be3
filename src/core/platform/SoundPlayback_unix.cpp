#include "platform/SoundPlayback_p.h"

#include <QGuiApplication>
#include <QThreadPool>

#include <atomic>

#include <canberra.h>

using namespace Platform;

namespace {

constexpr uint32_t OnlySound = 1;    // each sound has its own context
constexpr int PatienceAtExit = 1000; // milliseconds

/// One thread, which ends when it has been idle for a while. It is never deleted: a sound system that does not answer
/// must not keep the process alive.
QThreadPool& background()
{
    static QThreadPool* const pool = [] {
        qAddPostRoutine([] { background().waitForDone(PatienceAtExit); });
        auto* const single = new QThreadPool;
        single->setMaxThreadCount(1);
        return single;
    }();
    return *pool;
}

using PropertyList = std::unique_ptr<ca_proplist, decltype(&ca_proplist_destroy)>;

PropertyList propertiesFor(const QByteArray& path)
{
    ca_proplist* list = nullptr;
    ca_proplist_create(&list);
    PropertyList properties(list, &ca_proplist_destroy);
    const std::pair<const char*, QByteArray> entries[] = {
        {CA_PROP_MEDIA_FILENAME, path},
        {CA_PROP_APPLICATION_NAME, QGuiApplication::applicationDisplayName().toUtf8()},
        // Without a role it would be "event", and desktops have a switch that mutes all event sounds.
        {CA_PROP_MEDIA_ROLE, QByteArrayLiteral("alert")},
    };
    for (const auto& [key, value] : entries)
        ca_proplist_sets(list, key, value.constData());
    return properties;
}

} // namespace

class SoundPlayback::Job
{
public:
    Job(const QByteArray& path, Ended ended)
        : m_properties(propertiesFor(path))
        , m_ended(std::move(ended))
    {
    }

    /// Any thread.
    void cancel() { m_isCancelled = true; }

    // On the background thread.

    void play()
    {
        if (m_isCancelled)
            return;
        int result = ca_context_create(&m_context);
        if (result == CA_SUCCESS)
            result = ca_context_play_full(m_context, OnlySound, m_properties.get(), &Job::onFinished, this);
        // A short sound may have ended by now. libcanberra then reports either an interruption or nothing.
        if (result == CA_ERROR_DESTROYED || (result == CA_SUCCESS && !isPlaying()))
            report(CA_SUCCESS);
        else if (result != CA_SUCCESS)
            report(result);
    }

    /// After this, libcanberra no longer calls onFinished().
    void end()
    {
        if (m_context)
            ca_context_destroy(m_context);
        m_context = nullptr;
    }

private:
    static void onFinished(ca_context*, uint32_t, int result, void* job)
    {
        static_cast<Job*>(job)->report(result);
    }

    bool isPlaying()
    {
        int isPlaying = 0;
        return ca_context_playing(m_context, OnlySound, &isPlaying) == CA_SUCCESS && isPlaying;
    }

    void report(int result)
    {
        if (!m_isReported.exchange(true) && !m_isCancelled)
            m_ended(result);
    }

    const PropertyList m_properties;
    const Ended m_ended;
    std::atomic<bool> m_isCancelled{false};
    std::atomic<bool> m_isReported{false};
    ca_context* m_context = nullptr;
};

SoundPlayback::SoundPlayback(const QByteArray& path, Ended ended)
    : m_job(std::make_shared<Job>(path, std::move(ended)))
{
    background().start([job = m_job] { job->play(); });
}

SoundPlayback::~SoundPlayback()
{
    m_job->cancel();
    background().start([job = std::move(m_job)] { job->end(); });
}
