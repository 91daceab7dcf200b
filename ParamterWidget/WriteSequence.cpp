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

/// The answers of SetCameraEnumNodeValue() when there is nothing that could refuse: no device, no such feature.
constexpr int Absent[] = {-1, -4};

bool isRefusal(int result)
{
    return result != 0 && result != Absent[0] && result != Absent[1];
}

bool write(const PanelContext &context, Table<NodeWrite> writes, Report report)
{
    bool done = true;
    QStringList refused;
    for (const NodeWrite &write : writes) {
        const QString feature = QString::fromLatin1(write.feature);
        if (write.text)
            done &= HostValues::writeNode(context, write.feature, QString::fromLatin1(write.text));
        else if (isRefusal(SetCameraEnumNodeValue(context.deviceName, feature, write.entry)))
            refused << QStringLiteral("%1 %2").arg(feature).arg(write.entry);
        if (write.pause > 0)
            QThread::msleep(static_cast<unsigned long>(write.pause));
    }
    context.written();
    if (!refused.isEmpty())
        (context.*report)(Module, QStringLiteral("The device refuses %1").arg(refused.join(QStringLiteral(", "))));
    return done && refused.isEmpty();
}

} // namespace

bool writeSequence(const PanelContext &context, Table<NodeWrite> writes)
{
    return write(context, writes, &PanelContext::log);
}

bool selectToRead(const PanelContext &context, Table<NodeWrite> selection)
{
    return write(context, selection, &PanelContext::logOnce);
}
