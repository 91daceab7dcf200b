// SPDX-License-Identifier: MIT
#pragma once

#include <tuple>

#include <QTest>

/// Names the row of a table that a test fails in.
class FailedAt
{
public:
    explicit FailedAt(const char *row) : m_row(row) { }
    ~FailedAt()
    {
        if (QTest::currentTestFailed())
            QWARN(QByteArray("in the row ").append(m_row).constData());
    }
    FailedAt(const FailedAt &) = delete;
    FailedAt &operator=(const FailedAt &) = delete;

private:
    const char *m_row;
};
