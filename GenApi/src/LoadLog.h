// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>

namespace NodeEngine {

/// What is odd about one description: every cause is written once, as one line on std::clog.
class LoadLog
{
public:
    explicit LoadLog(std::string source) : m_source(std::move(source)) { }

    void warn(const std::string &cause);

private:
    // A description that is wrong everywhere must not flood the host's log.
    static constexpr std::size_t MostCauses = 100;

    const std::string m_source;
    std::set<std::string> m_written;
};

} // namespace NodeEngine
