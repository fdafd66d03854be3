#include "TrayState.h"

#include "support/ConnectionState.h"
#include "support/ModemInUse.h"
#include "support/Numbers.h"
#include "support/Text.h"

#include <QGuiApplication>
#include <QStringList>

#include <tuple>

namespace {

struct Words
{
    TrayState state;
    const char* id;
};

constexpr Words AllWords[] = {
    {TrayState::NoModem, "IDS_TRAY_NO_MODEM"},    {TrayState::Searching, "IDS_TRAY_SEARCHING"},
    {TrayState::Connected, "IDS_TRAY_CONNECTED"}, {TrayState::NotConnected, "IDS_TRAY_NOT_CONNECTED"},
    {TrayState::Warning, "IDS_TRAY_WARNING"},
};

TrayState trayState(const ConnectionState& connection)
{
    if (connection.kind == ConnectionState::Disconnecting)
        return TrayState::Connected; // until it no longer is
    switch (connection.sign) {
    case Look::Sign::NoModem:
        return TrayState::NoModem;
    case Look::Sign::Searching:
    case Look::Sign::Connecting:
        return TrayState::Searching;
    case Look::Sign::Connected:
        return TrayState::Connected;
    case Look::Sign::Disconnected:
        return TrayState::NotConnected;
    default:
        return TrayState::Warning;
    }
}

auto fields(const TrayStatus& status)
{
    return std::tie(status.state, status.modem, status.bars, status.signal, status.canConnect,
                    status.canDisconnect, status.unread);
}

} // namespace

bool operator==(const TrayStatus& left, const TrayStatus& right)
{
    return fields(left) == fields(right);
}

TrayStatus readTrayStatus()
{
    TrayStatus status;
    const Modem modem = modemInUse();
    const ConnectionState connection = connectionState(readConnectionReport(modem));
    const ConnectionAction action = connection.isPossible ? connection.action : ConnectionAction::None;
    status.state = trayState(connection);
    status.canConnect = action == ConnectionAction::Connect;
    status.canDisconnect = action == ConnectionAction::Disconnect || action == ConnectionAction::Cancel;
    if (modem.id == 0)
        return status;
    status.modem = modem.name;
    if (hasNetwork(modem.id))
        status.signal = modemValue(modem.id, QStringLiteral("signal")).toInt();
    status.bars = Look::signalBars(status.signal);
    return status;
}

QIcon trayPicture(const TrayStatus& status)
{
    switch (status.state) {
    case TrayState::NoModem:
        return Look::tileIcon(Look::Sign::NoModem);
    case TrayState::Searching:
        return Look::tileIcon(Look::Sign::Searching);
    case TrayState::Warning:
        return Look::tileIcon(Look::Sign::Failed);
    case TrayState::Connected:
    case TrayState::NotConnected:
        break;
    }
    return Look::signalIcon(status.bars, status.state == TrayState::Connected);
}

QString trayText(const TrayStatus& status)
{
    QStringList lines = {QGuiApplication::applicationDisplayName()};
    if (!status.modem.isEmpty())
        lines.append(status.modem);
    for (const Words& words : AllWords) {
        if (words.state == status.state)
            lines.append(text(words.id));
    }
    if (status.signal > 0)
        lines.append(text("IDS_TRAY_SIGNAL").arg(numberText(status.signal)));
    if (status.unread > 0)
        lines.append(text("IDS_TRAY_UNREAD").arg(numberText(status.unread)));
    return lines.join(QLatin1Char('\n'));
}
