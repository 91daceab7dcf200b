// SPDX-License-Identifier: MIT
#pragma once

#include <QTest>

/// The data of a test function as one table of structs, told apart by their member `name`: QFETCH one as `row`.
template <class Row, std::size_t Count>
void addDataRows(const Row (&rows)[Count])
{
    QTest::addColumn<Row>("row");
    for (const Row &row : rows)
        QTest::newRow(row.name) << row;
}
