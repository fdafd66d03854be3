#pragma once

#include <QtTest>

/// Declares the columns of a data function:
///
///     const auto row = dataTable<QString, int>("text", "length");
///     row("empty", "", 0);
///
/// @return adds a row: its name, then a value for each column
template <typename... Columns, typename... Names>
auto dataTable(Names... names)
{
    (QTest::addColumn<Columns>(names), ...);
    return [](const char* name, const Columns&... values) {
        (QTest::newRow(name) << ... << values);
    };
}
