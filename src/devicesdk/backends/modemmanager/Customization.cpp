#include "backends/modemmanager/Customization.h"

#include "Log.h"
#include "files/IniDocument.h"

#include <algorithm>

namespace {

constexpr char Padding = '\xff';
const char UnknownGid[] = "unknown";

QString valueOf(const IniDocument& document, const QString& section, const char* key)
{
    const QString* const value = document.find(section, QLatin1String(key));
    return value ? *value : QString();
}

} // namespace

Customization::Customization(const IniDocument& document)
{
    for (const QString& section : document.sections()) {
        if (section.isEmpty())
            continue;
        const auto value = [&](const char* key) {
            return valueOf(document, section, key);
        };
        if (value("name").isEmpty())
            qCWarning(logDeviceSdk, "The customisation rule [%s] has no name and is ignored",
                      qUtf8Printable(section));
        else
            m_rules.append({value("name"), value("operator"), value("gid"), value("imsi"), value("model")});
    }
}

QString Customization::nameFor(const Facts& facts) const
{
    for (const Rule& rule : m_rules) {
        const Match result = match(rule, facts);
        if (result != Match::No)
            return result == Match::Yes ? rule.name : QString();
    }
    return {};
}

/// A condition that does not apply decides even if another one is not known.
Customization::Match Customization::match(const Rule& rule, const Facts& facts)
{
    Match result = Match::Yes;
    const auto check = [&](const QString& condition, bool isKnown, bool applies) {
        if (condition.isEmpty() || result == Match::No || (isKnown && applies))
            return;
        result = isKnown ? Match::No : Match::Unknown;
    };
    const bool isSimKnown = !facts.imsi.isEmpty();
    const bool isOperator = facts.operatorCode.isEmpty() ? facts.imsi.startsWith(rule.operatorCode)
                                                         : facts.operatorCode == rule.operatorCode;
    check(rule.model, true, rule.model.compare(facts.model, Qt::CaseInsensitive) == 0);
    check(rule.operatorCode, isSimKnown, isOperator);
    check(rule.imsi, isSimKnown, facts.imsi.startsWith(rule.imsi));
    if (rule.gid == QLatin1String(UnknownGid))
        check(rule.gid, isSimKnown, !facts.isGidKnown);
    else
        check(rule.gid, facts.isGidKnown, rule.gid == facts.gid);
    return result;
}

QString Customization::gidText(const QByteArray& bytes)
{
    int size = bytes.size();
    while (size > 0 && bytes[size - 1] == Padding)
        --size;
    const QByteArray content = bytes.left(size);
    const bool isText =
        std::all_of(content.begin(), content.end(), [](char c) { return c > ' ' && c <= '~'; });
    return QString::fromLatin1(isText ? content : content.toHex().toUpper());
}
