#pragma once

#include "EventSettings.h"

#include <memory>

class DkSound;

/// Plays the sounds of events, one at a time: a new sound ends the previous one. GUI thread.
class EventSounds
{
public:
    EventSounds();
    ~EventSounds();
    Q_DISABLE_COPY_MOVE(EventSounds)

    /// Plays the sound that the user has chosen for the event, unless sounds are muted.
    void play(Event event);

    /// Plays a sound, also while sounds are muted.
    /// @param sound as EventSettings::sound() returns it
    void test(const QString& sound);

private:
    const std::unique_ptr<DkSound> m_sound;
};
