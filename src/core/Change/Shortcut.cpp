#include "Change/Shortcut_p.h"

#include <QStringList>
#include <Qt>

#include <algorithm>
#include <array>

namespace {

using Markers = std::array<QLatin1String, 8>;

constexpr Markers DefaultMarkers{QLatin1String("(Ctrl+"), QLatin1String("Ctrl+"), QLatin1String("(Del"),
                                 QLatin1String("(Alt"),   QLatin1String("Alt"),   QLatin1String("(Shift"),
                                 QLatin1String("Shift"),  QLatin1String("(F2")};

/// The markers for Alt and Shift are placeholders that no text contains. They are fixed.
constexpr Markers GermanMarkers{QLatin1String("(Strg+"),
                                QLatin1String("Strg+"),
                                QLatin1String("(Entf"),
                                QLatin1String("(Alt(Replace this in German)"),
                                QLatin1String("Alt(Replace this in German)"),
                                QLatin1String("(Shift(Replace this in German)"),
                                QLatin1String("Shift(Replace this in German)"),
                                QLatin1String("(F2")};

/// Keys that may stand without brackets at the end of a text.
constexpr std::array<QLatin1String, 2> BareKeys{QLatin1String("Del"), QLatin1String("F2")};

struct NamedKey
{
    QLatin1String name;
    int code;
};

constexpr std::array<NamedKey, 6> NamedKeys{{{QLatin1String("ctrl"), Qt::CTRL},
                                             {QLatin1String("del"), Qt::Key_Delete},
                                             {QLatin1String("f2"), Qt::Key_F2},
                                             {QLatin1String("alt"), Qt::ALT},
                                             {QLatin1String("shift"), Qt::SHIFT},
                                             {QLatin1String("strg"), Qt::CTRL}}};

/// @return 0 for an unknown key
int keyCode(const QString& name)
{
    const auto* const named = std::find_if(NamedKeys.begin(), NamedKeys.end(),
                                           [&name](const NamedKey& key) { return name == key.name; });
    if (named != NamedKeys.end())
        return named->code;
    const bool isLetter = name.size() == 1 && name[0] >= QLatin1Char('a') && name[0] <= QLatin1Char('z');
    return isLetter ? Qt::Key_A + (name[0].unicode() - 'a') : 0;
}

QString withoutBrackets(QString text)
{
    if (text.startsWith(QLatin1Char('(')))
        text.remove(0, 1);
    if (text.endsWith(QLatin1Char(')')))
        text.chop(1);
    return text;
}

} // namespace

int Shortcut::find(const QString& text, const QString& language)
{
    for (const QLatin1String key : BareKeys)
        if (text.endsWith(key))
            return text.size() - key.size();

    int position = -1;
    for (const QLatin1String marker : language == QLatin1String("de-de") ? GermanMarkers : DefaultMarkers) {
        position = text.lastIndexOf(marker);
        if (position > 0)
            break;
    }
    return position;
}

Shortcut::Keys Shortcut::parse(const QString& shortcut)
{
    Keys keys;
    keys.text = withoutBrackets(shortcut);
    unsigned int sum = 0; // wraps around if a text repeats keys; a signed sum would overflow
    const QStringList names = keys.text.split(QLatin1Char('+'));
    for (const QString& name : names) {
        const int code = keyCode(name.toLower());
        keys.isKnown = keys.isKnown || code != 0;
        sum += static_cast<unsigned int>(code);
    }
    keys.code = static_cast<int>(sum);
    return keys;
}
