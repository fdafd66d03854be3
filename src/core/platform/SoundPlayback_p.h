#pragma once

#include <QByteArray>

#include <functional>
#include <memory>

namespace Platform {

/// One playback of a sound file through libcanberra. Constructor and destructor return immediately: a sound
/// system may take seconds to answer, so a background thread talks to it.
class SoundPlayback
{
public:
    /// Receives 0 when the sound has been played to its end, otherwise a libcanberra error. Runs on any thread.
    using Ended = std::function<void(int result)>;

    /// Starts playing.
    /// @param path  absolute path in the file system's encoding
    /// @param ended called once, unless the playback is stopped first
    SoundPlayback(const QByteArray& path, Ended ended);

    /// Stops playing.
    ~SoundPlayback();

    SoundPlayback(const SoundPlayback&) = delete;
    SoundPlayback& operator=(const SoundPlayback&) = delete;

private:
    class Job;
    std::shared_ptr<Job> m_job;
};

} // namespace Platform
