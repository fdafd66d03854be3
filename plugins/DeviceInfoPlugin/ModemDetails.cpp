#include "ModemDetails.h"

#include "support/NetworkWords.h"
#include "support/Numbers.h"
#include "support/Text.h"

#include <QStringList>

#include <algorithm>
#include <iterator>

namespace {

struct Word
{
    const char* value;
    const char* text; ///< identifier of a string
};

constexpr Word SimStates[] = {
    {"ready", "IDS_MODEM_SIM_READY"},     {"absent", "IDS_MODEM_SIM_ABSENT"},
    {"pin", "IDS_MODEM_SIM_PIN"},         {"puk", "IDS_MODEM_SIM_PUK"},
    {"blocked", "IDS_MODEM_SIM_BLOCKED"}, {"locked", "IDS_MODEM_SIM_LOCKED"},
    {"error", "IDS_MODEM_SIM_ERROR"},
};

constexpr Word Storages[] = {
    {"sim", "IDS_MODEM_STORAGE_SIM"},
    {"modem", "IDS_MODEM_STORAGE_MODEM"},
    {"both", "IDS_MODEM_STORAGE_BOTH"},
};

constexpr Word Registrations[] = {
    {"home", "IDS_MODEM_HOME"},     {"roaming", "IDS_MODEM_ROAMING"}, {"searching", "IDS_MODEM_NO_NETWORK"},
    {"denied", "IDS_MODEM_DENIED"}, {"idle", "IDS_MODEM_NO_NETWORK"},
};

constexpr Word Choices[] = {
    {"automatic", "IDS_MODEM_CHOICE_AUTOMATIC"},
    {"manual", "IDS_MODEM_CHOICE_MANUAL"},
};

template <std::size_t size>
QString inWords(const QString& value, const Word (&words)[size])
{
    const auto* const found = std::find_if(std::begin(words), std::end(words), [&](const Word& word) {
        return value == QLatin1String(word.value);
    });
    return found == std::end(words) ? value : text(found->text);
}

/// Where messages are stored and, in parentheses, where they could be.
QString storage(const Modem& modem)
{
    const QString current = modemValue(modem, "message-storage");
    QStringList others;
    for (const QString& name :
         modemValue(modem, "message-storages").split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (name != current)
            others.append(inWords(name, Storages));
    }
    const QString words = inWords(current, Storages);
    return current.isEmpty() || others.isEmpty()
               ? words
               : text("IDS_MODEM_STORAGE_OTHERS").arg(words, others.join(QStringLiteral(", ")));
}

QString signalText(const Modem& modem)
{
    const QString percent = modemValue(modem, "signal");
    return percent.isEmpty() ? QString() : text("IDS_MODEM_PERCENT").arg(numberText(percent.toInt()));
}

} // namespace

QVector<Detail> ModemDetails::ofModem(const Modem& modem)
{
    return {
        {text("IDS_MODEM_MODEL"), modem.name},
        {text("IDS_MODEM_MANUFACTURER"), modemValue(modem, "manufacturer")},
        {text("IDS_MODEM_FIRMWARE"), modemValue(modem, "firmware")},
        {text("IDS_MODEM_IMEI"), modemValue(modem, "imei"), true},
        {text("IDS_MODEM_PORT"), modem.port},
        {text("IDS_MODEM_CUSTOMISED_FOR"),
         modem.customizeName.isEmpty() ? text("IDS_MODEM_ANY_OPERATOR") : modem.customizeName},
    };
}

QVector<Detail> ModemDetails::ofSim(const Modem& modem)
{
    return {
        {text("IDS_MODEM_SIM_STATE"), inWords(modemValue(modem, "sim"), SimStates)},
        {text("IDS_MODEM_STORAGE"), storage(modem)},
    };
}

QVector<Detail> ModemDetails::ofNetwork(const Modem& modem, const OperatorNames& names)
{
    return {
        {text("IDS_MODEM_NETWORK_NAME"), networkName(modem, names)},
        {text("IDS_MODEM_REGISTRATION"), inWords(modemValue(modem, "registration"), Registrations)},
        {text("IDS_MODEM_TECHNOLOGY"), technologyName(modemValue(modem, "technology"))},
        {text("IDS_MODEM_SIGNAL"), signalText(modem)},
        {text("IDS_MODEM_CHOICE"), inWords(modemValue(modem, "network-choice"), Choices)},
    };
}
