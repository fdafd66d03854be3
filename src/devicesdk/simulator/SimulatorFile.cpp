#include "simulator/SimulatorFile.h"

#include "files/IniDocument.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace {

/// A key whose value is checked unless it is empty.
struct CheckedKey
{
    const char* name;
    const char* pattern;
    const char* rule; ///< the pattern in words, continuing "it must be"
};

constexpr CheckedKey ImsiKey{"imsi", "[0-9]{1,15}", "digits, 15 at most"};
constexpr CheckedKey StatusKeys[] = {
    {"network", "[0-9]{5,6}", "5 or 6 digits"},
    {"signal", "[0-9]{1,2}|100", "0 to 100"},
    {"received", "[0-9]{1,15}", "a number of 15 digits at most"},
    {"sent", "[0-9]{1,15}", "a number of 15 digits at most"},
    {"receive-rate", "[0-9]{1,12}", "a number of 12 digits at most"},
    {"send-rate", "[0-9]{1,12}", "a number of 12 digits at most"},
};
/// Limited to less than plugins wait for their workers.
constexpr CheckedKey AnswerTimeKey{"answer-time", "[1-4]?[0-9]{1,3}", "0 to 4999"};
constexpr const char* MessageKeys[] = {"sender", "time", "text"};

QString valueOf(const IniDocument& document, const QString& section, const QString& key)
{
    const QString* value = document.find(section, key);
    return value ? *value : QString();
}

bool readState(const QString& text, Modem::State& state)
{
    constexpr Modem::State states[] = {Modem::Attached, Modem::Detached, Modem::Rejected};
    const auto found = std::find_if(std::begin(states), std::end(states),
                                    [&](Modem::State s) { return SimulatorFile::stateText(s) == text; });
    if (found == std::end(states))
        return false;
    state = *found;
    return true;
}

QString checkedValue(const IniDocument& document, const QString& section, const CheckedKey& key,
                     QStringList& errors)
{
    const QString value = valueOf(document, section, QLatin1String(key.name));
    const QRegularExpression pattern(QRegularExpression::anchoredPattern(QLatin1String(key.pattern)));
    if (!value.isEmpty() && !pattern.match(value).hasMatch())
        errors.append(QStringLiteral("section [%1] has the %2 \"%3\"; it must be %4")
                          .arg(section, QLatin1String(key.name), value, QLatin1String(key.rule)));
    return value;
}

Modem readModem(const IniDocument& document, const QString& section, QStringList& errors)
{
    const auto value = [&](const char* key) {
        return valueOf(document, section, QLatin1String(key));
    };
    Modem modem;
    modem.name = section.mid(SimulatorFile::sectionOf({}).size());
    modem.model = value("model");
    modem.imsi = checkedValue(document, section, ImsiKey, errors);
    modem.gid = value("gid");
    modem.customize = value("customize");
    modem.port = value("port");
    if (modem.model.isEmpty())
        errors.append(QStringLiteral("section [%1] has no model").arg(section));
    if (!readState(value("state"), modem.state))
        errors.append(
            QStringLiteral("section [%1] has the state \"%2\"; it must be attached, detached or rejected")
                .arg(section, value("state")));
    for (const CheckedKey& key : StatusKeys) {
        const QString text = checkedValue(document, section, key, errors);
        if (!text.isEmpty())
            modem.status.insert(QLatin1String(key.name), text);
    }
    modem.answerTime = checkedValue(document, section, AnswerTimeKey, errors).toInt();
    return modem;
}

bool isMessage(const QString& section)
{
    return section.startsWith(SimulatorFile::messageSectionOf({}));
}

/// The status values that describe the messages of a modem.
ModemValues readMessages(const IniDocument& document, const QString& modem)
{
    ModemValues values;
    QStringList identifiers;
    for (const QString& section : document.sections()) {
        if (!isMessage(section) || valueOf(document, section, QStringLiteral("modem")) != modem)
            continue;
        identifiers.append(section.mid(SimulatorFile::messageSectionOf({}).size()));
        for (const char* key : MessageKeys)
            values.insert(QStringLiteral("message.%1.%2").arg(identifiers.last(), QLatin1String(key)),
                          valueOf(document, section, QLatin1String(key)));
    }
    values.insert(QStringLiteral("messages"), identifiers.join(QLatin1Char(' ')));
    return values;
}

} // namespace

Modems SimulatorFile::read(const IniDocument& document, QStringList& errors)
{
    for (const int line : document.brokenLines())
        errors.append(QStringLiteral("line %1 is broken").arg(line));
    Modems modems;
    for (const QString& section : document.sections()) {
        if (section.startsWith(sectionOf({}))) {
            modems.append(readModem(document, section, errors));
            modems.last().messages = readMessages(document, modems.last().name);
        }
        if (isMessage(section) && section.count(QLatin1Char(' ')) > 1)
            errors.append(
                QStringLiteral("section [%1] has a space in the identifier of the message").arg(section));
    }
    return modems;
}

QString SimulatorFile::sectionOf(const QString& name)
{
    return QStringLiteral("modem ") + name;
}

QString SimulatorFile::messageSectionOf(const QString& identifier)
{
    return QStringLiteral("message ") + identifier;
}

QString SimulatorFile::stateText(Modem::State state)
{
    static const QString texts[] = {QStringLiteral("attached"), QStringLiteral("detached"),
                                    QStringLiteral("rejected")};
    return texts[state];
}
