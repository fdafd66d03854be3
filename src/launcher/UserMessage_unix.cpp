#include "UserMessage.h"

#include <QTextStream>

void UserMessage::tell(const QString& text)
{
    QTextStream(stdout) << text;
}

void UserMessage::complain(const QString& text)
{
    QTextStream(stderr) << text;
}

void UserMessage::note(const QString& text)
{
    complain(text);
}
