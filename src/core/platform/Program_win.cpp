#include "platform/Program.h"

QString Platform::programBeside(const QString&, const QString& name)
{
    return name;
}
