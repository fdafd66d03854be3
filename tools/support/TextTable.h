#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// Rows of text with their columns below each other; each row ends with a new line.
/// @param rows all of the same length
QString textTable(QVector<QStringList> rows);
