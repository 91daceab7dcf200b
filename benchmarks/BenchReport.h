// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <QByteArray>

/// The measured figures, with the bound that each has to keep where there is one.
class BenchReport
{
public:
    void add(const std::string &what, double value, const std::string &unit)
    {
        m_rows.push_back({what, value, unit, {}});
    }
    /// A figure that must be at most the bound.
    void add(const std::string &what, double value, const std::string &unit, double atMost)
    {
        m_rows.push_back({what, value, unit, atMost});
    }

    bool isReached() const;
    /// A Markdown table with one line per figure.
    std::string table() const;
    /// The same with the number of cores and the compiler, for programs.
    QByteArray json() const;

private:
    struct Row
    {
        std::string what;
        double value;
        std::string unit;
        std::optional<double> atMost;

        bool isReached() const { return !atMost || value <= *atMost; }
    };

    std::vector<Row> m_rows;
};
