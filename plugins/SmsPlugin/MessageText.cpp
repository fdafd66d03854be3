#include "MessageText.h"

#include "common/CommonUtils.h"

#include <QStringBuilder>

namespace {

constexpr QLatin1String LinkBegin("<a href = ");

/// Puts the links' targets into quotes: others end at a "=" for Qt. By hand, as a regular expression finds
/// nothing in a text with half a surrogate pair.
QString withQuotedTargets(const QString& rich)
{
    QString quoted;
    quoted.reserve(rich.size());
    int done = 0;
    for (int link = rich.indexOf(LinkBegin); link >= 0; link = rich.indexOf(LinkBegin, done)) {
        const int target = link + LinkBegin.size();
        const int end = rich.indexOf(QLatin1Char('>'), target); // there is one: nobody else writes "<"
        quoted += rich.midRef(done, link - done) % QLatin1String("<a href=\"") %
                  rich.midRef(target, end - target) % QLatin1Char('"');
        done = end;
    }
    return quoted + rich.midRef(done);
}

} // namespace

QString richMessage(const QString& plain)
{
    // The library leaves these two as they are; in rich text they would mean something.
    QString escaped = plain;
    escaped.replace(QLatin1String("\r\n"), QLatin1String("\n"))
        .replace(QLatin1Char('&'), QLatin1String("&amp;"))
        .replace(QLatin1Char('"'), QLatin1String("&quot;"));
    QString rich = withQuotedTargets(CommonUtils::ParseAndCreateHyperLinks(escaped));
    // Blanks that do not break would put the message into one line.
    rich.replace(QLatin1String("&nbsp;"), QLatin1String(" "));
    return QLatin1String("<p style=\"white-space: pre-wrap\">") + rich + QLatin1String("</p>");
}

QString urlToOpen(const QString& target)
{
    // OpenUrl() would take these for local files. A letter that is escaped leaves the address what it is.
    for (const char* ending : {"pdf", "html", "htm"}) {
        if (target.endsWith(QLatin1String(ending)))
            return target.chopped(1) + QLatin1Char('%') + QString::number(target.back().unicode(), 16);
    }
    return target;
}
