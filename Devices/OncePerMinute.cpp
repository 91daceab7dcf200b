// SPDX-License-Identifier: MIT
#include "Devices/OncePerMinute.h"

#include <utility>

std::chrono::milliseconds OncePerMinute::steadyTime()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

qint64 OncePerMinute::count(const QString &cause, qint64 times)
{
    const std::chrono::milliseconds now = m_clock();
    const bool isNew = !m_causes.contains(cause);
    Cause &known = m_causes[cause];
    known.untold += times;
    if (!isNew && now < known.next)
        return 0;
    known.next = now + std::chrono::minutes(1);
    return std::exchange(known.untold, 0);
}
