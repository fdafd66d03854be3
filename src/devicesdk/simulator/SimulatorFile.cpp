#include "simulator/SimulatorFile.h"

#include "files/IniDocument.h"

#include <algorithm>
#include <iterator>

static QString valueOf(const IniDocument& document, const QString& section, const QString& key)
{
    const QString* value = document.find(section, key);
    return value ? *value : QString();
}

static bool readState(const QString& text, Modem::State& state)
{
    constexpr Modem::State states[] = {Modem::Attached, Modem::Detached, Modem::Rejected};
    const auto found = std::find_if(std::begin(states), std::end(states),
                                    [&](Modem::State s) { return SimulatorFile::stateText(s) == text; });
    if (found == std::end(states))
        return false;
    state = *found;
    return true;
}

static Modem readModem(const IniDocument& document, const QString& section, QStringList& errors)
{
    const auto value = [&](const char* key) {
        return valueOf(document, section, QLatin1String(key));
    };
    Modem modem;
    modem.name = section.mid(SimulatorFile::sectionOf({}).size());
    modem.model = value("model");
    modem.imsi = value("imsi");
    modem.gid = value("gid");
    modem.customize = value("customize");
    modem.port = value("port");
    if (modem.model.isEmpty())
        errors.append(QStringLiteral("section [%1] has no model").arg(section));
    if (!readState(value("state"), modem.state))
        errors.append(
            QStringLiteral("section [%1] has the state \"%2\"; it must be attached, detached or rejected")
                .arg(section, value("state")));
    return modem;
}

Modems SimulatorFile::read(const IniDocument& document, QStringList& errors)
{
    for (const int line : document.brokenLines())
        errors.append(QStringLiteral("line %1 is broken").arg(line));
    Modems modems;
    for (const QString& section : document.sections()) {
        if (section.startsWith(sectionOf({})))
            modems.append(readModem(document, section, errors));
    }
    return modems;
}

QString SimulatorFile::sectionOf(const QString& name)
{
    return QStringLiteral("modem ") + name;
}

QString SimulatorFile::stateText(Modem::State state)
{
    static const QString texts[] = {QStringLiteral("attached"), QStringLiteral("detached"),
                                    QStringLiteral("rejected")};
    return texts[state];
}
