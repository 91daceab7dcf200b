// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QtTest>

inline QString operator""_s(const char *text, size_t size)
{
    return QString::fromUtf8(text, int(size));
}

/// The parts of a UTF-8 text, without empty ones.
inline QStringList words(const char *text, char separator = ' ')
{
    return QString::fromUtf8(text).split(QLatin1Char(separator), Qt::SkipEmptyParts);
}

/// Names the row of a table in which a test fails, which goes through the table by itself.
class InRow
{
public:
    explicit InRow(const char *name) : m_name(name) { }
    ~InRow()
    {
        if (QTest::currentTestFailed())
            qInfo("in the row \"%s\"", m_name);
    }
    InRow(const InRow &) = delete;
    InRow &operator=(const InRow &) = delete;

private:
    const char *m_name;
};
