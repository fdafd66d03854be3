#include "TrayState.h"

#include "support/Look.h"
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

/// What it means that the modem reports a value; the first rule that applies counts.
struct Rule
{
    const char* key;
    const char* value; ///< null: any
    TrayState state;
    bool canConnect;
    bool canDisconnect;
};

constexpr Rule Rules[] = {
    {"sim", "absent", TrayState::Warning, false, false},
    {"sim", "pin", TrayState::Warning, false, false},
    {"sim", "puk", TrayState::Warning, false, false},
    {"sim", "blocked", TrayState::Warning, false, false},
    {"sim", "locked", TrayState::Warning, false, false},
    {"sim", "error", TrayState::Warning, false, false},
    {"connection", "connected", TrayState::Connected, false, true},
    {"connection", "disconnecting", TrayState::Connected, false, false},
    {"connection", "connecting", TrayState::Searching, false, true},
    {"registration", "denied", TrayState::Warning, false, false},
    {"registration", "searching", TrayState::Searching, false, false},
    {"connection.error", nullptr, TrayState::Warning, true, false},
};

void apply(const Modem& modem, TrayStatus& status)
{
    status.state = TrayState::NotConnected;
    status.canConnect = true;
    for (const Rule& rule : Rules) {
        const QString value = modemValue(modem.id, QString::fromLatin1(rule.key));
        if (rule.value ? value != QLatin1String(rule.value) : value.isEmpty())
            continue;
        status.state = rule.state;
        status.canConnect = rule.canConnect;
        status.canDisconnect = rule.canDisconnect;
        return;
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
    const Modems modems = attachedModems();
    const bool hasProblem = !serviceValue(QStringLiteral("problem")).isEmpty();
    if (hasProblem || (modems.isEmpty() && !unusableModems().isEmpty()))
        status.state = TrayState::Warning;
    if (hasProblem || modems.isEmpty())
        return status;
    const Modem modem = modemInUse(modems);
    status.modem = modem.name;
    if (hasNetwork(modem.id))
        status.signal = modemValue(modem.id, QStringLiteral("signal")).toInt();
    status.bars = Look::signalBars(status.signal);
    apply(modem, status);
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
