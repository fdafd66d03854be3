#include "PluginContainer/LanguageChoice_p.h"

#include "common/Log.h"

#include <algorithm>

namespace {

constexpr int CountrySize = 2;
constexpr int CountryInLocale = 3;    ///< position in "zh_cn"
constexpr int CountryInShortName = 4; ///< position in "_zh-cn"

/// Empty when the text is too short.
QString countryAt(int position, const QString& text)
{
    return text.size() >= position + CountrySize ? text.mid(position, CountrySize) : QString();
}

} // namespace

LanguageChoice::Candidates LanguageChoice::candidates(const QList<LanguageInfoEx>& records,
                                                      const QStringList& installed, const QString& id,
                                                      const char* function)
{
    for (const LanguageInfoEx& record : records)
        if (!record.id.isEmpty() && record.id == id && installed.contains(record.lang))
            return {{record.lang, record.shortName}};

    Candidates found;
    for (const LanguageInfoEx& record : records) {
        if (record.id.compare(id, Qt::CaseInsensitive) != 0)
            continue;
        LOG_DEBUG("%s: %s: %s: lan can be insert to table is %s", LOG_TIME, LOG_FILE, function,
                  qUtf8Printable(id));
        if (!installed.contains(record.lang))
            continue;
        LOG_DEBUG("%s: %s: %s: lan insert to table is %s", LOG_TIME, LOG_FILE, function,
                  qUtf8Printable(record.lang));
        found.insert(record.lang, record.shortName);
    }
    return found;
}

QString LanguageChoice::ofCountry(const Candidates& candidates, const QString& locale)
{
    const QString country = countryAt(CountryInLocale, locale);
    const auto match =
        std::find_if(candidates.begin(), candidates.end(), [&country](const QString& shortName) {
            return countryAt(CountryInShortName, shortName) == country;
        });
    return match == candidates.end() ? *candidates.begin() : *match;
}

QString LanguageChoice::shortName(const QString& name, const QList<LanguageInfoEx>& records)
{
    const auto match = std::find_if(records.begin(), records.end(), [&name](const LanguageInfoEx& record) {
        return record.lang.compare(name, Qt::CaseInsensitive) == 0;
    });
    return match == records.end() ? fallback() : match->shortName;
}
