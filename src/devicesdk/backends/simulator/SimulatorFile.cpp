#include "backends/simulator/SimulatorFile.h"

#include "files/IniDocument.h"
#include "qrvl.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <iterator>

namespace {

/// A key whose value is checked unless it is empty.
struct CheckedKey
{
    const char* name;
    const char* pattern;
    const char* rule;       ///< the pattern in words, continuing "it must be"
    bool isPrivate = false; ///< so the value must not be logged
};

constexpr CheckedKey ImsiKey{"imsi", "[0-9]{1,15}", "digits, 15 at most", true};
constexpr CheckedKey TechnologyKey{"technology", "gsm|gprs|edge|umts|hspa\\+?|lte|5g",
                                   "gsm, gprs, edge, umts, hspa, hspa+, lte or 5g"};
constexpr CheckedKey StatusKeys[] = {
    TechnologyKey,
    {"network", "[0-9]{5,6}", "5 or 6 digits"},
    {"signal", "[0-9]{1,2}|100", "0 to 100"},
    {"received", "[0-9]{1,15}", "a number of 15 digits at most"},
    {"sent", "[0-9]{1,15}", "a number of 15 digits at most"},
    {"receive-rate", "[0-9]{1,12}", "a number of 12 digits at most"},
    {"send-rate", "[0-9]{1,12}", "a number of 12 digits at most"},
    {"network-name", ".*", "one line"},
    {"network-choice", "automatic|manual", "automatic or manual"},
    {"message-storage", "sim|modem|both", "sim, modem or both"},
    {"registration", "home|roaming|searching|denied|idle", "home, roaming, searching, denied or idle"},
    {"sim", "ready|absent|pin|puk|blocked|locked|error", "ready, absent, pin, puk, blocked, locked or error"},
    {"pin-tries", "[0-9]", "0 to 9"},
    {"puk-tries", "[0-9]|10", "0 to 10"},
    {"number", "\\+?[0-9]{1,20}", "digits, 20 at most", true},
    {"iccid", "[0-9]{1,20}", "digits, 20 at most", true},
    {"imei", "[0-9]{1,16}", "digits, 16 at most", true},
    {"manufacturer", ".*", "one line"},
    {"firmware", ".*", "one line"},
    {"state.reason", "sim-error|no-profile|capabilities|unknown",
     "sim-error, no-profile, capabilities or unknown"},
    {"connection", "connected|disconnected", "connected or disconnected"},
    {"connection.since", "[0-9]{1,12}", "seconds since 1970"},
    {"connection.address", ".*", "one line"},
    {"connection.error", "[0-9]{1,3}", "a number"},
    {"calls", "answered|busy|no-answer|refused|none", "answered, busy, no-answer, refused or none"},
};

struct Failure
{
    const char* name;
    long result;
};

constexpr Failure Failures[] = {
    {"", QRVL_OK},
    {"refused", QRVL_ERROR_REFUSED},
    {"no-coverage", QRVL_ERROR_NO_COVERAGE},
    {"access-point", QRVL_ERROR_ACCESS_POINT},
    {"timeout", QRVL_ERROR_TIMEOUT},
    {"permission", QRVL_ERROR_PERMISSION},
    {"full", QRVL_ERROR_FULL},
    {"failed", QRVL_ERROR_FAILED},
};
constexpr CheckedKey FailureKey{"failure", "refused|no-coverage|access-point|timeout|permission|full|failed",
                                "refused, no-coverage, access-point, timeout, permission, full or failed"};
/// Limited to less than plugins wait for their workers.
constexpr CheckedKey AnswerTimeKey{"answer-time", "[1-4]?[0-9]{1,3}", "0 to 4999"};
constexpr CheckedKey RequestTimeKey{"request-time", "[1-5]?[0-9]{1,4}", "0 to 59999"};
constexpr int DefaultRequestTime = 300;
constexpr CheckedKey SecretKeys[] = {{"pin", "[0-9]{4,8}", "4 to 8 digits", true},
                                     {"puk", "[0-9]{8}", "8 digits", true}};
constexpr const char* MessageKeys[] = {"sender", "recipient", "time", "text", "state"};

QString valueOf(const IniDocument& document, const QString& section, const QString& key)
{
    const QString* value = document.find(section, key);
    return value ? *value : QString();
}

bool readState(const QString& text, Modem::State& state)
{
    constexpr Modem::State states[] = {Modem::Attached, Modem::Detached, Modem::Rejected, Modem::Failed};
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
                          .arg(section, QLatin1String(key.name),
                               key.isPrivate ? QStringLiteral("...") : value, QLatin1String(key.rule)));
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
            QStringLiteral(
                "section [%1] has the state \"%2\"; it must be attached, detached, rejected or failed")
                .arg(section, value("state")));
    for (const CheckedKey& key : StatusKeys) {
        const QString text = checkedValue(document, section, key, errors);
        if (!text.isEmpty())
            modem.status.insert(QLatin1String(key.name), text);
    }
    modem.answerTime = checkedValue(document, section, AnswerTimeKey, errors).toInt();
    const QString requestTime = checkedValue(document, section, RequestTimeKey, errors);
    modem.requestTime = requestTime.isEmpty() ? DefaultRequestTime : requestTime.toInt();
    checkedValue(document, section, FailureKey, errors);
    for (const CheckedKey& key : SecretKeys)
        checkedValue(document, section, key, errors);
    return modem;
}

bool isMessage(const QString& section)
{
    return section.startsWith(SimulatorFile::messageSectionOf({}));
}

/// The status values that describe the messages of a modem. Those with a recipient were sent.
ModemValues readMessages(const IniDocument& document, const QString& modem)
{
    ModemValues values;
    QStringList received, sent;
    for (const QString& section : document.sections()) {
        if (!isMessage(section) || valueOf(document, section, QStringLiteral("modem")) != modem)
            continue;
        const QString identifier = section.mid(SimulatorFile::messageSectionOf({}).size());
        const bool isSent = document.find(section, QStringLiteral("recipient"));
        (isSent ? sent : received).append(identifier);
        for (const char* key : MessageKeys)
            values.insert(QStringLiteral("message.%1.%2").arg(identifier, QLatin1String(key)),
                          valueOf(document, section, QLatin1String(key)));
        QString& state = values[QStringLiteral("message.%1.state").arg(identifier)];
        if (state.isEmpty())
            state = isSent ? QStringLiteral("sent") : QStringLiteral("received");
    }
    values.insert(QStringLiteral("messages"), received.join(QLatin1Char(' ')));
    values.insert(QStringLiteral("sent-messages"), sent.join(QLatin1Char(' ')));
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
        if (section.startsWith(networkSectionOf({})))
            checkedValue(document, section, TechnologyKey, errors);
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

QString SimulatorFile::freeMessage(const IniDocument& document)
{
    const QVector<QString> names = document.sections();
    const QSet<QString> sections(names.begin(), names.end());
    int identifier = 1;
    while (sections.contains(messageSectionOf(QString::number(identifier))))
        ++identifier;
    return QString::number(identifier);
}

QString SimulatorFile::ussdSectionOf(const QString& codes)
{
    return QStringLiteral("ussd ") + codes;
}

QString SimulatorFile::networkSectionOf(const QString& code)
{
    return QStringLiteral("network ") + code;
}

long SimulatorFile::failureOf(const QString& name)
{
    const auto* const found = std::find_if(std::begin(Failures), std::end(Failures),
                                           [&](const Failure& f) { return name == QLatin1String(f.name); });
    return found == std::end(Failures) ? long(QRVL_ERROR_FAILED) : found->result;
}

QString SimulatorFile::stateText(Modem::State state)
{
    static const QString texts[] = {QStringLiteral("attached"), QStringLiteral("detached"),
                                    QStringLiteral("rejected"), QStringLiteral("failed")};
    return texts[state];
}
