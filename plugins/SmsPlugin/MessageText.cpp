#include "MessageText.h"

#include "common/CommonUtils.h"

#include <QStringBuilder>

namespace {

constexpr QLatin1String LinkBegin("<a href = ");

/// Puts the link targets in quotes, because Qt ends an unquoted target at "=". Done by hand, because regular
/// expressions find nothing in a string with an unpaired surrogate.
QString withQuotedTargets(const QString& rich)
{
    QString quoted;
    quoted.reserve(rich.size());
    int done = 0;
    for (int link = rich.indexOf(LinkBegin); link >= 0; link = rich.indexOf(LinkBegin, done)) {
        const int target = link + LinkBegin.size();
        const int end = rich.indexOf(QLatin1Char('>'), target); // always found: any other "<" is escaped
        quoted += rich.midRef(done, link - done) % QLatin1String("<a href=\"") %
                  rich.midRef(target, end - target) % QLatin1Char('"');
        done = end;
    }
    return quoted + rich.midRef(done);
}

} // namespace

QString richMessage(const QString& plain)
{
    // The core library does not escape these two, which have a meaning in rich text.
    QString escaped = plain;
    escaped.replace(QLatin1String("\r\n"), QLatin1String("\n"))
        .replace(QLatin1Char('&'), QLatin1String("&amp;"))
        .replace(QLatin1Char('"'), QLatin1String("&quot;"));
    QString rich = withQuotedTargets(CommonUtils::ParseAndCreateHyperLinks(escaped));
    // With non-breaking spaces the message would be a single line.
    rich.replace(QLatin1String("&nbsp;"), QLatin1String(" "));
    return QLatin1String("<p style=\"white-space: pre-wrap\">") + rich + QLatin1String("</p>");
}

QString urlToOpen(const QString& target)
{
    // OpenUrl() would treat these as local files. Escaping a letter does not change the address.
    for (const char* ending : {"pdf", "html", "htm"}) {
        if (target.endsWith(QLatin1String(ending)))
            return target.chopped(1) + QLatin1Char('%') + QString::number(target.back().unicode(), 16);
    }
    return target;
}
