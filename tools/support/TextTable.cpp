#include "support/TextTable.h"

#include <algorithm>

namespace {

int widthOf(const QVector<QStringList>& rows, int column)
{
    int width = 0;
    for (const QStringList& row : rows)
        width = std::max(width, row[column].size());
    return width;
}

} // namespace

QString textTable(QVector<QStringList> rows)
{
    for (int column = 0; column < rows.value(0).size() - 1; ++column) {
        const int width = widthOf(rows, column) + 2; // spaces between the columns
        for (QStringList& row : rows)
            row[column] = row[column].leftJustified(width);
    }
    QString table;
    for (const QStringList& row : qAsConst(rows))
        table += row.join(QString()) + QLatin1Char('\n');
    return table;
}
