#pragma once

#include <QString>
#include <QVector>

/// The events that have a sound.
enum class Event { Message, Call, ConnectionLost };

constexpr Event AllEvents[] = {Event::Message, Event::Call, Event::ConnectionLost};

/// The user's choices, kept in the section "notifications" of the settings. GUI thread.
namespace EventSettings {

/// The value that means no sound.
constexpr QLatin1String NoSound("none");

/// The key of an event in the settings, such as "connection-lost".
QString key(Event event);

/// The chosen sound: a file name in the folder "sounds" of the installation, an absolute path, or NoSound.
QString sound(Event event);
void setSound(Event event, const QString& sound);

/// Other keys for isShown().
constexpr QLatin1String DataLimit("data-limit");
constexpr QLatin1String MessageText("message-text"); ///< the text of a message, in its notification

/// Whether notifications of an event are shown on the desktop. They are unless the user has switched them off.
/// @param event key() of an event, one of the other keys, or one that another plugin has chosen
bool isShown(const QString& event);
void setShown(const QString& event, bool isShown);

/// Whether all sounds are switched off.
bool isMuted();
void setMuted(bool isMuted);

/// The path of a sound with the separators of the system; empty for NoSound.
QString pathOf(const QString& sound);

/// The names of the sound files in the installation.
QStringList installedSounds();

} // namespace EventSettings
