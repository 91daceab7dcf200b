// SPDX-License-Identifier: MIT
#pragma once

#include <QtTest>

/// The rows of a data-driven test as a table of structs, whose first member is the row's name.
template <class Row, size_t count>
void addRows(const Row (&rows)[count])
{
    QTest::addColumn<int>("row");
    for (const Row &row : rows)
        QTest::newRow(row.name) << static_cast<int>(&row - rows);
}

/// To be called in the test itself: the row that it runs with.
template <class Row, size_t count>
const Row &currentRow(const Row (&rows)[count])
{
    return rows[*static_cast<const int *>(QTest::qData("row", QMetaType::Int))];
}
