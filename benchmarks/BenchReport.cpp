// SPDX-License-Identifier: MIT
#include "BenchReport.h"

#include <algorithm>
#include <cstdio>
#include <thread>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

std::string withUnit(double value, const std::string &unit)
{
    char text[64];
    std::snprintf(text, sizeof text, value >= 100 || value == static_cast<int>(value) ? "%.0f %s" : "%.2f %s", value,
                  unit.c_str());
    return text;
}

#ifdef __clang__
constexpr const char *Compiler = __VERSION__;
#else
constexpr const char *Compiler = "GCC " __VERSION__;
#endif

std::string machine()
{
    return std::to_string(std::thread::hardware_concurrency()) + " cores, " + Compiler;
}

} // namespace

bool BenchReport::isReached() const
{
    return std::all_of(m_rows.begin(), m_rows.end(), [](const Row &row) { return row.isReached(); });
}

std::string BenchReport::table() const
{
    std::string text = "| what | measured | to reach | |\n|---|---|---|---|\n";
    for (const Row &row : m_rows) {
        text += "| " + row.what + " | " + withUnit(row.value, row.unit) + " | "
            + (row.atMost ? "at most " + withUnit(*row.atMost, row.unit) : "") + " | "
            + (!row.atMost           ? ""
                   : row.isReached() ? "reached"
                                     : "MISSED")
            + " |\n";
    }
    return text + "\nMachine: " + machine() + "\n";
}

QByteArray BenchReport::json() const
{
    QJsonArray rows;
    for (const Row &row : m_rows) {
        QJsonObject object{{QStringLiteral("what"), QString::fromStdString(row.what)},
                           {QStringLiteral("value"), row.value},
                           {QStringLiteral("unit"), QString::fromStdString(row.unit)},
                           {QStringLiteral("reached"), row.isReached()}};
        if (row.atMost)
            object.insert(QStringLiteral("atMost"), *row.atMost);
        rows.append(object);
    }
    const QJsonObject report{{QStringLiteral("machine"), QString::fromStdString(machine())},
                             {QStringLiteral("rows"), rows}};
    return QJsonDocument(report).toJson();
}
