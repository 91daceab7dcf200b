// SPDX-License-Identifier: MIT
#include "Host/HostLog.h"

void HostLog::add(const QString &module, const QString &message, int level)
{
    const QDateTime time = QDateTime::currentDateTime();
    m_handOver.call([=] { Q_EMIT lineAdded(time, module, message, level); });
}
