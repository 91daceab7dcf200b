// SPDX-License-Identifier: MIT
#pragma once

#include <iostream>
#include <sstream>
#include <string>

/// Takes what the GenApi layer writes to its log, std::clog, as long as it lives.
class LayerLog
{
public:
    LayerLog() : m_former(std::clog.rdbuf(m_lines.rdbuf())) { }
    ~LayerLog() { std::clog.rdbuf(m_former); }
    LayerLog(const LayerLog &) = delete;
    LayerLog &operator=(const LayerLog &) = delete;

    std::string text() const { return m_lines.str(); }

private:
    std::ostringstream m_lines;
    std::streambuf *m_former;
};
