#include "platform/Program_p.h"

QString Platform::programBeside(const QString& folder, const QString& name)
{
    return folder + QLatin1Char('/') + name;
}
