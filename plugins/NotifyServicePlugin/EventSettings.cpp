#include "EventSettings.h"

#include "support/BoolSetting.h"

#include <QDir>

namespace {

constexpr QLatin1String Section("notifications");
constexpr BoolSetting Mute{Section, QLatin1String("mute")};
constexpr QLatin1String ShownPrefix("show-");
constexpr QLatin1String Extension(".wav"); // the format that every system plays

QDir folder()
{
    return QDir(CommonUtils::GetPluginLibraryPath() + QLatin1String("/sounds"));
}

} // namespace

QString EventSettings::key(Event event)
{
    switch (event) {
    case Event::Message:
        return QStringLiteral("message");
    case Event::Call:
        return QStringLiteral("call");
    default:
        return QStringLiteral("connection-lost");
    }
}

QString EventSettings::sound(Event event)
{
    const QString chosen = CommonUtils::GetSettings(Section, key(event));
    return chosen.isEmpty() ? key(event) + Extension : chosen;
}

void EventSettings::setSound(Event event, const QString& sound)
{
    CommonUtils::SetSettings(Section, key(event), sound);
}

bool EventSettings::isShown(const QString& event)
{
    return event.isEmpty() ||
           CommonUtils::GetSettings(Section, ShownPrefix + event) != QLatin1String("false");
}

void EventSettings::setShown(const QString& event, bool isShown)
{
    CommonUtils::SetSettings(Section, ShownPrefix + event, QLatin1String(isShown ? "true" : "false"));
}

bool EventSettings::isMuted()
{
    return Mute.isSet();
}

void EventSettings::setMuted(bool isMuted)
{
    Mute.set(isMuted);
}

QString EventSettings::pathOf(const QString& sound)
{
    return sound == NoSound ? QString() : QDir::toNativeSeparators(folder().absoluteFilePath(sound));
}

QStringList EventSettings::installedSounds()
{
    return folder().entryList({QLatin1Char('*') + Extension}, QDir::Files, QDir::Name);
}
