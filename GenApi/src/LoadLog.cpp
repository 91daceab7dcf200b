// SPDX-License-Identifier: MIT
#include "LoadLog.h"

#include <iostream>

namespace NodeEngine {

void LoadLog::warn(const std::string &cause)
{
    if (m_written.size() > MostCauses || !m_written.insert(cause).second)
        return;
    std::clog << "GenApi: " << m_source << ": "
              << (m_written.size() > MostCauses ? "more oddities are not listed" : cause) << std::endl;
}

} // namespace NodeEngine
