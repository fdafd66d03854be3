#include "MessageText.h"

#include "common/CommonUtils.h"

#include <QRegularExpression>

QString richMessage(const QString& plain)
{
    // The library leaves these two as they are; in rich text they would mean something.
    QString escaped = plain;
    escaped.replace(QLatin1String("\r\n"), QLatin1String("\n"))
        .replace(QLatin1Char('&'), QLatin1String("&amp;"))
        .replace(QLatin1Char('"'), QLatin1String("&quot;"));
    QString rich = CommonUtils::ParseAndCreateHyperLinks(escaped);
    // Unquoted targets end at a "=" for Qt. Blanks that do not break would put the message into one line.
    static const QRegularExpression target(QStringLiteral("<a href = ([^>]*)>"));
    rich.replace(target, QStringLiteral("<a href=\"\\1\">"));
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
