#include "platform/Program_p.h"

QString Platform::programBeside(const QString&, const QString& name)
{
    return name;
}
