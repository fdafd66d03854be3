#include "ModemTable.h"

#include "backends/simulator/SimulatorFile.h"
#include "support/TextTable.h"

#include <QStringList>
#include <QVector>

#include <algorithm>
#include <iterator>

namespace {

QStringList cellsOf(const Modem& modem)
{
    return {modem.name,      modem.model, SimulatorFile::stateText(modem.state),
            modem.imsi,      modem.gid,   modem.status.value(QStringLiteral("network")),
            modem.customize, modem.port,  modem.status.value(QStringLiteral("signal"))};
}

} // namespace

QString modemTable(const Modems& modems)
{
    QVector<QStringList> rows = {{QStringLiteral("NAME"), QStringLiteral("MODEL"), QStringLiteral("STATE"),
                                  QStringLiteral("IMSI"), QStringLiteral("GID"), QStringLiteral("NETWORK"),
                                  QStringLiteral("CUSTOMIZE"), QStringLiteral("PORT"),
                                  QStringLiteral("SIGNAL")}};
    std::transform(modems.begin(), modems.end(), std::back_inserter(rows), cellsOf);
    return textTable(rows);
}
