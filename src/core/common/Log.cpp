#include "common/Log.h"

#include <QTime>

QByteArray Log::timeText()
{
    return QTime::currentTime().toString(QStringLiteral("hh:mm:ss:zzz")).toUtf8();
}
