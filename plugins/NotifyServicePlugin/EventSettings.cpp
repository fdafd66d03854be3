#include "EventSettings.h"

#include "common/CommonUtils.h"

#include <QDir>

namespace {

constexpr QLatin1String Section("notifications");
constexpr QLatin1String MuteKey("mute");
constexpr QLatin1String ShownPrefix("show-");
constexpr QLatin1String Yes("true");
constexpr QLatin1String No("false");
constexpr QLatin1String Extension(".wav"); // the format that every system plays

void store(const QString& key, bool isSet)
{
    CommonUtils::SetSettings(Section, key, isSet ? Yes : No);
}

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
    return event.isEmpty() || CommonUtils::GetSettings(Section, ShownPrefix + event) != No;
}

void EventSettings::setShown(const QString& event, bool isShown)
{
    store(ShownPrefix + event, isShown);
}

bool EventSettings::isMuted()
{
    return CommonUtils::GetSettings(Section, MuteKey) == Yes;
}

void EventSettings::setMuted(bool isMuted)
{
    store(MuteKey, isMuted);
}

QString EventSettings::pathOf(const QString& sound)
{
    return sound == NoSound ? QString() : QDir::toNativeSeparators(folder().absoluteFilePath(sound));
}

QStringList EventSettings::installedSounds()
{
    return folder().entryList({QLatin1Char('*') + Extension}, QDir::Files, QDir::Name);
}
