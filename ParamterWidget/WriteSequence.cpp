// SPDX-License-Identifier: MIT
#include "ParamterWidget/WriteSequence.h"

#include <QStringList>
#include <QThread>

#include "ParamterWidget/HostValues.h"
#include "ParamterWidget/NodeAccess.h"
#include "ParamterWidget/PanelContext.h"

namespace {

constexpr const char *Module = "WriteSequence";

using Report = void (PanelContext::*)(const char *module, const QString &message) const;

/// The answers of the functions of NodeAccess.h when there is nothing that could refuse: no device, no such feature.
constexpr int NoDevice = -1;
constexpr int NoFeature = -4;

/// What the device refuses, or does not answer, as a person reads it; empty when it is written. Refusals by name the
/// host reports.
QString refusal(PanelContext &context, const NodeWrite &write)
{
    const QString feature = QString::fromLatin1(write.feature);
    const bool isCommand = write.entry == NodeWrite::Command;
    const int result = context.reading->writeByName([&] {
        DeviceReading *const reading = context.reading.get();
        return isCommand ? ExecCameraCommandNode(reading, context.deviceName, feature)
                         : SetCameraEnumNodeValue(reading, context.deviceName, feature, write.entry);
    });
    if (!context.reading->isSilent() && (result == 0 || result == NoDevice || result == NoFeature))
        return {};
    return isCommand ? feature : QStringLiteral("%1 %2").arg(feature).arg(write.entry);
}

bool writeAll(PanelContext &context, Table<NodeWrite> writes, Report report)
{
    bool done = true;
    QStringList refused;
    for (const NodeWrite &write : writes) {
        if (write.text)
            done &= HostValues::writeNode(context, write.feature, QString::fromLatin1(write.text));
        else
            refused << refusal(context, write);
        if (write.pause > 0)
            QThread::msleep(static_cast<unsigned long>(write.pause));
    }
    context.written();
    refused.removeAll(QString());
    if (!refused.isEmpty())
        (context.*report)(Module, QStringLiteral("The device refuses %1").arg(refused.join(QStringLiteral(", "))));
    return done && refused.isEmpty();
}

} // namespace

bool writeSequence(PanelContext &context, Table<NodeWrite> writes)
{
    return writeAll(context, writes, &PanelContext::log);
}

bool selectToRead(PanelContext &context, Table<NodeWrite> selection)
{
    return writeAll(context, selection, &PanelContext::logOnce);
}
