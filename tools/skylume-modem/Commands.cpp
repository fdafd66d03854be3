#include "Commands.h"

#include "ModemEditor.h"
#include "Options.h"
#include "qrvl.h"

#include <QDateTime>
#include <QFile>

#include <algorithm>
#include <cstdio>

namespace {

/// What a request can consist of. Combined as bits.
enum Part : unsigned { ModemPart = 1, NamePart = 2, ValuesPart = 4, MessagePart = 8 };

struct PartWords
{
    Part part;
    const char* missing;
    const char* surplus;
};

constexpr PartWords PartNames[] = {
    {ModemPart, "a modem", "modem"},
    {NamePart, "a name", "name"},
    {ValuesPart, "values", "values"},
    {MessagePart, "a message", "message"},
};

unsigned partsOf(const Request& request)
{
    return (request.modem.isEmpty() ? 0U : ModemPart) | (request.newName.isEmpty() ? 0U : NamePart) |
           (request.values.isEmpty() ? 0U : ValuesPart) | (request.message.isEmpty() ? 0U : MessagePart);
}

bool attach(const Request& request, ModemEditor& editor, QString& error)
{
    return editor.attach(request.modem, request.newName, request.values, error);
}

template <Modem::State state>
bool setState(const Request& request, ModemEditor& editor, QString& error)
{
    return editor.setState(request.modem, state, error);
}

bool setValues(const Request& request, ModemEditor& editor, QString& error)
{
    return editor.setValues(request.modem, request.values, error);
}

/// The PIN is read from standard input, because other users can see the arguments of a process.
bool lockSim(const Request& request, ModemEditor& editor, QString& error)
{
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        return false;
    const QString pin = QString::fromLatin1(input.readLine().trimmed());
    if (pin.isEmpty()) {
        error = QStringLiteral("write the PIN to the standard input");
        return false;
    }
    return editor.setValues(request.modem,
                            {{QStringLiteral("sim"), QStringLiteral("pin")},
                             {QStringLiteral("pin"), pin},
                             {QStringLiteral("pin-tries"), QString()},
                             {QStringLiteral("puk-tries"), QString()}},
                            error);
}

/// As if another program had done it.
template <bool isConnected>
bool setConnection(const Request& request, ModemEditor& editor, QString& error)
{
    const QString since = QString::number(QDateTime::currentSecsSinceEpoch());
    return editor.setValues(request.modem,
                            {{QStringLiteral("connection"),
                              isConnected ? QStringLiteral("connected") : QStringLiteral("disconnected")},
                             {QStringLiteral("connection.since"), isConnected ? since : QString()},
                             {QStringLiteral("connection.error"),
                              isConnected ? QString() : QString::number(QRVL_ERROR_CANCELLED)}},
                            error);
}

bool addMessage(const Request& request, ModemEditor& editor, QString& error)
{
    return editor.addMessage(request.modem, request.message, error);
}

constexpr Command Commands[] = {
    {"attach", ModemPart | NamePart | ValuesPart, ModemPart, attach, true},
    {"detach", ModemPart, 0, setState<Modem::Detached>},
    {"reject", ModemPart, 0, setState<Modem::Rejected>},
    {"fail", ModemPart, 0, setState<Modem::Failed>},
    {"set", ModemPart | ValuesPart, ValuesPart, setValues},
    {"lock", ModemPart, 0, lockSim},
    {"connect", ModemPart, 0, setConnection<true>},
    {"disconnect", ModemPart, 0, setConnection<false>},
    {"message", ModemPart | MessagePart, MessagePart, addMessage},
    {"list", 0, 0, nullptr},
};

} // namespace

const Command* commandOf(const Request& request)
{
    const auto* const found =
        std::find_if(std::begin(Commands), std::end(Commands),
                     [&](const Command& command) { return request.command == QLatin1String(command.name); });
    return found == std::end(Commands) ? nullptr : found;
}

/// What is wrong with the request itself; empty if nothing is.
QString usageError(const Request& request, int argumentCount)
{
    if (request.command.isEmpty())
        return QStringLiteral("a command is missing");
    const Command* const command = commandOf(request);
    if (!command)
        return QStringLiteral("there is no command \"%1\"").arg(request.command);
    if (argumentCount > 2)
        return QStringLiteral("\"%1\" has too many arguments").arg(request.command);
    const unsigned given = partsOf(request);
    for (const PartWords& words : PartNames) {
        if ((command->needs & ~given & words.part) != 0)
            return QStringLiteral("\"%1\" needs %2").arg(request.command, QLatin1String(words.missing));
        if ((given & ~command->takes & words.part) != 0)
            return QStringLiteral("\"%1\" takes no %2").arg(request.command, QLatin1String(words.surplus));
    }
    return {};
}
