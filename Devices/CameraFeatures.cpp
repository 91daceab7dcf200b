// SPDX-License-Identifier: MIT
#include "Devices/CameraFeatures.h"

#include <algorithm>

#include "Features/NodeGuard.h"
#include "Features/NodeText.h"

void writeIfWritable(GenApi::INodeMap &map, const char *name, const QString &text)
{
    if (GenApi::IsWritable(map.GetNode(name)))
        writeNodeText(map, QString::fromLatin1(name), text);
}

int64_t payloadSize(GenApi::INodeMap &map)
{
    const GenApi::CIntegerPtr payload(map.GetNode("PayloadSize"));
    if (!payload.IsValid())
        throw RUNTIME_EXCEPTION("The camera does not tell its payload size");
    return payload->GetValue(false, true);
}

std::chrono::milliseconds heartbeatOf(GenApi::INodeMap &map)
{
    const GenApi::CIntegerPtr timeout(map.GetNode("GevHeartbeatTimeout"));
    qint64 value = 0;
    QString ignored;
    if (GenApi::IsReadable(timeout))
        guarded(&ignored, [&] { value = timeout->GetValue(); });
    return std::chrono::milliseconds(std::max<qint64>(0, value));
}
