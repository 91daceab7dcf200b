// SPDX-License-Identifier: MIT
#include "Devices/gentl/GentlPlace.h"

#include "Devices/gentl/GenTLCodes.h"

QString GentlPlace::key() const
{
    QString text = QStringLiteral("gentl:") + producer;
    for (const QByteArray &id : {interfaceId, deviceId, streamId}) {
        if (!id.isEmpty())
            text += QLatin1Char('/') + QString::fromLatin1(id.toPercentEncoding());
    }
    return text;
}

Device::Transport transportOf(const QString &gentlTransport)
{
    if (gentlTransport == QLatin1String(GenTL::TLTypeGEVName))
        return Device::Transport::GigEVision;
    const bool isUsb = gentlTransport == QLatin1String(GenTL::TLTypeU3VName);
    return isUsb ? Device::Transport::Usb3Vision : Device::Transport::Other;
}
