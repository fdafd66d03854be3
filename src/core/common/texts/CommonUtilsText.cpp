#include "common/CommonUtils.h"

#include <algorithm>

namespace {

/// "ASCII" in the names of the operations means all of Latin-1 except NUL.
bool isPlain(QChar c)
{
    return c.unicode() >= 1 && c.unicode() <= 255;
}

} // namespace

QString CommonUtils::addSpaceToNewLine(QString text)
{
    return text.replace(QLatin1Char('\n'), QLatin1String(" \n"));
}

bool CommonUtils::isNonAsciiCharPresent(QString text)
{
    return !std::all_of(text.cbegin(), text.cend(), isPlain);
}

QStringList CommonUtils::SplitAsciiAndUnicodeString(QString text)
{
    QStringList runs;
    for (auto begin = text.cbegin(); begin != text.cend();) {
        const bool isPlainRun = isPlain(*begin);
        const auto end = std::find_if(begin, text.cend(), [=](QChar c) { return isPlain(c) != isPlainRun; });
        runs.append(QString(begin, static_cast<int>(end - begin)));
        begin = end;
    }
    return runs;
}

QStringList CommonUtils::SplitAsciiString(QString text, bool& flag)
{
    flag = false;
    return text.isEmpty() ? QStringList() : QStringList(text);
}

QStringList CommonUtils::GetParamList(QString line)
{
    const QVector<QStringRef> pieces = line.splitRef(QLatin1Char('"')); // every second one was in quotes
    if (pieces.size() % 2 == 0)
        return {};
    QStringList params;
    for (int i = 0; i < pieces.size(); ++i) {
        if (i % 2) {
            params.append(pieces[i].toString());
            continue;
        }
        for (const QStringRef& param : pieces[i].split(QLatin1Char(' '), Qt::SkipEmptyParts))
            params.append(param.toString());
    }
    return params;
}
