#include "UserMessage.h"

#include <QTextStream>

void UserMessage::inform(const QString& text)
{
    QTextStream(stdout) << text;
}

void UserMessage::reportError(const QString& text)
{
    QTextStream(stderr) << text;
}

void UserMessage::note(const QString& text)
{
    reportError(text);
}
