#pragma once

#include <QIcon>
#include <QString>

/// What the icon in the notification area says about the modem in use.
enum class TrayState { NoModem, Searching, Connected, NotConnected, Warning };

/// The modem in use, as far as the notification area shows it and its menu can change it.
struct TrayStatus
{
    TrayState state = TrayState::NoModem;
    QString modem;  ///< its name; empty without one
    int bars = 0;   ///< signal strength, 0 to Look::SignalBars
    int signal = 0; ///< in percent
    bool canConnect = false;
    bool canDisconnect = false; ///< also while connecting
    int unread = 0;             ///< messages; does not come from the modem
};

bool operator==(const TrayStatus& left, const TrayStatus& right);

/// Reads no growing counters, so that the device service has nothing to report while nothing changes. Any thread.
TrayStatus readTrayStatus();

/// The picture of a status, the same in all skins. GUI thread.
QIcon trayPicture(const TrayStatus& status);

/// A few lines that describe a status in the current language.
QString trayText(const TrayStatus& status);
