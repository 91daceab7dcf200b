// SPDX-License-Identifier: MIT
#include "ParamterWidget/WriteSequence.h"

#include <QThread>

#include "ParamterWidget/NodeAccess.h"
#include "ParamterWidget/PanelContext.h"
#include "ToolPage/HostCall.h"

void writeSequence(const PanelContext &context, Table<NodeWrite> writes)
{
    for (const NodeWrite &write : writes) {
        if (write.text)
            callHost<HostCore::SetCameraNodeValue>("WriteSequence", context.deviceKey(), write.feature, write.text);
        else
            SetCameraEnumNodeValue(context.deviceName, QString::fromLatin1(write.feature), write.entry);
        if (write.pause > 0)
            QThread::msleep(static_cast<unsigned long>(write.pause));
    }
    context.written();
}
