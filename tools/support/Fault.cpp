#include "support/Fault.h"

#include "support/Tool.h"

#include <cstdio>

QString Fault::toString() const
{
    QString text = QStringLiteral("%1:%2: %3").arg(file).arg(line).arg(message);
    if (!effect.isEmpty())
        text += QStringLiteral("\n    At run time: ") + effect;
    if (!remedy.isEmpty())
        text += QStringLiteral("\n    To fix it: ") + remedy;
    return text;
}

int Tool::report(const Faults& faults)
{
    if (faults.isEmpty())
        return Success;
    std::fprintf(stderr, "Faults: %d\n", faults.size());
    for (const Fault& fault : faults)
        std::fprintf(stderr, "%s\n", fault.toString().toLocal8Bit().constData());
    return Failure;
}
