#include "EventSounds.h"

#include "common/DkSoundWin.h"

EventSounds::EventSounds()
    : m_sound(std::make_unique<DkSound>(QString()))
{
}

EventSounds::~EventSounds() = default;

void EventSounds::play(Event event)
{
    if (!EventSettings::isMuted())
        test(EventSettings::sound(event));
}

void EventSounds::test(const QString& sound)
{
    m_sound->Stop(); // it may also be open because it could not be played
    const QString path = EventSettings::pathOf(sound);
    if (path.isEmpty())
        return;
    m_sound->SetSoundFile(path);
    m_sound->Play();
}
