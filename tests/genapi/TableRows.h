// SPDX-License-Identifier: MIT
#pragma once

#include <QTest>

#include <sstream>

/// A row of a table that tells what becomes of a text.
template <class Value>
struct Row
{
    const char *text;
    Value expected;
};

template <class Actual, class Expected>
bool isSame(const Actual &actual, const Expected &expected)
{
    return actual == expected;
}
inline bool isSame(double actual, double expected)
{
    return actual == expected || qFuzzyCompare(actual, expected);
}

template <class Actual, class Expected>
std::string differingRow(const std::string &row, const Actual &actual, const Expected &expected)
{
    std::ostringstream text;
    text.precision(17);
    text << row << ": " << actual << ", not " << expected;
    return text.str();
}

/// QCOMPARE within a loop over the rows of a table: tells which row failed.
#define COMPARE_ROW(row, actual, expected)                                                                             \
    do {                                                                                                               \
        const auto is = (actual);                                                                                      \
        const auto shall = (expected);                                                                                 \
        QVERIFY2(isSame(is, shall), differingRow(row, is, shall).c_str());                                             \
    } while (false)
