// SPDX-License-Identifier: MIT
#include "Host/DeviceValues.h"

#include "Features/NodeGuard.h"
#include "Features/NodeText.h"
#include "Host/FocusType.h"
#include "Host/HostLog.h"
#include "Host/KnownDevices.h"

namespace {

const QString UserSetLoad = QStringLiteral("UserSetLoad");

} // namespace

DeviceValues::DeviceValues(const KnownDevices &devices, HostLog &log) : m_devices(devices), m_log(log) { }

GenApi::INodeMap *DeviceValues::nodeMap(HostCore::FOCUS_TYPE type, const QString &id) const
{
    const Device *known = m_devices.isReady(id) ? m_devices.device(id) : nullptr;
    return known && focusType(known) == type ? known->nodeMap() : nullptr;
}

bool DeviceValues::read(const QString &id, const QString &node, QString *value)
{
    return access(id, QStringLiteral("Reading %1 of %2 failed: %3").arg(node),
                  [&](GenApi::INodeMap &map) { *value = readNodeText(map, node); })
        .isEmpty();
}

bool DeviceValues::write(const QString &id, const QString &node, const QString &value)
{
    const QString refusal = access(id, QStringLiteral("Writing %1 of %2 failed: %3").arg(node),
                                   [&](GenApi::INodeMap &map) { writeNodeText(map, node, value); });
    Q_EMIT written(id, node, value, refusal);
    if (refusal.isEmpty() && node == UserSetLoad)
        Q_EMIT userSetLoaded(id);
    return refusal.isEmpty();
}

QString DeviceValues::access(const QString &id, const QString &failure,
                             const std::function<void(GenApi::INodeMap &)> &whatToDo)
{
    // A device that is closing answers until its panels have gone.
    const Device *known = m_devices.device(id);
    QString error = QStringLiteral("the device is not open");
    if (known && known->nodeMap() && guarded(&error, [&] { whatToDo(*known->nodeMap()); }))
        return {};
    m_log.add(HostModule, failure.arg(id, error));
    return error.isEmpty() ? failure : error;
}

ImagePlace DeviceValues::imagePlace(const QString &id) const
{
    const Device *known = m_devices.isReady(id) ? m_devices.device(id) : nullptr;
    const auto number = [&](const char *node) {
        QString text, error;
        if (known)
            guarded(&error, [&] { text = readNodeText(*known->nodeMap(), QLatin1String(node)); });
        return text.toInt();
    };
    return {QRect(number("OffsetX"), number("OffsetY"), number("Width"), number("Height")),
            QSize(number("WidthMax"), number("HeightMax"))};
}
