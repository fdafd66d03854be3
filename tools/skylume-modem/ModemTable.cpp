#include "ModemTable.h"

#include "backends/simulator/SimulatorFile.h"

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

int widthOf(const QVector<QStringList>& rows, int column)
{
    int width = 0;
    for (const QStringList& row : rows)
        width = std::max(width, row[column].size());
    return width;
}

} // namespace

QString modemTable(const Modems& modems)
{
    QVector<QStringList> rows = {{QStringLiteral("NAME"), QStringLiteral("MODEL"), QStringLiteral("STATE"),
                                  QStringLiteral("IMSI"), QStringLiteral("GID"), QStringLiteral("NETWORK"),
                                  QStringLiteral("CUSTOMIZE"), QStringLiteral("PORT"),
                                  QStringLiteral("SIGNAL")}};
    std::transform(modems.begin(), modems.end(), std::back_inserter(rows), cellsOf);
    for (int column = 0; column < rows.first().size() - 1; ++column) {
        const int width = widthOf(rows, column) + 2; // spaces between the columns
        for (QStringList& row : rows)
            row[column] = row[column].leftJustified(width);
    }
    QString table;
    for (const QStringList& row : qAsConst(rows))
        table += row.join(QString()) + QLatin1Char('\n');
    return table;
}
