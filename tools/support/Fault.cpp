#include "support/Fault.h"

#include "support/Tool.h"

#include <cstdio>

QString Fault::toString() const
{
    QString text = QStringLiteral("%1:%2: %3").arg(file).arg(line).arg(message);
    for (const QString& more : {effect, remedy})
        if (!more.isEmpty())
            text += QStringLiteral("\n    ") + more;
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
