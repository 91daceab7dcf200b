// SPDX-License-Identifier: MIT
#include "Host/AutomaticRange.h"

#include "Host/DeviceSessions.h"
#include "Host/HeightAnalysis.h"
#include "Host/HostListeners.h"
#include "Host/InfoItems.h"
#include "Host/KnownDevices.h"

namespace {

QString millimetres(double value)
{
    return QString::number(value, 'f', 6);
}

} // namespace

AutomaticRange::AutomaticRange(const KnownDevices &devices, const DeviceSessions &sessions, InfoItems &items,
                               HostListeners &listeners)
    : QObject(&items), m_devices(devices), m_items(items), m_listeners(listeners)
{
    connect(&devices, &KnownDevices::heightReady, this, &AutomaticRange::adoptFrame);
    connect(&sessions, &DeviceSessions::stateChanged, this, &AutomaticRange::adoptState);
    connect(&items, &InfoItems::cameraChanged, this, [this](const QString &device, HostCore::CAM_INFO item) {
        if (item == HostCore::CAM_INFO_Z_MINIMUM || item == HostCore::CAM_INFO_Z_MAXIMUM)
            endRequest(device);
    });
}

/// A request that an earlier run of the host left behind would surprise whoever acquires now.
void AutomaticRange::adoptState(const QString &device)
{
    if (!m_devices.isReady(device)) {
        m_ready.remove(device);
    } else if (!m_ready.contains(device)) {
        m_ready.insert(device);
        endRequest(device);
    }
}

void AutomaticRange::adoptFrame(const QString &device, const HeightFrame &frame)
{
    if (frame.complete && isRequested(device))
        setRange(device, frame);
}

bool AutomaticRange::isRequested(const QString &device) const
{
    return m_items.camera(device, HostCore::CAM_INFO_AUTOMATIC_Z_RANGE) == QLatin1String("1");
}

void AutomaticRange::endRequest(const QString &device)
{
    if (isRequested(device))
        m_items.setCamera(device, HostCore::CAM_INFO_AUTOMATIC_Z_RANGE, QStringLiteral("0"));
}

/// A frame without any data leaves the request to the next one.
void AutomaticRange::setRange(const QString &device, const HeightFrame &frame)
{
    const auto range = HeightAnalysis::usualRange(frame);
    if (!range)
        return;
    m_items.setCamera(device, HostCore::CAM_INFO_Z_MINIMUM, millimetres(range->lowest));
    m_items.setCamera(device, HostCore::CAM_INFO_Z_MAXIMUM, millimetres(range->highest));
    endRequest(device);
    m_listeners.raiseImport(device); // panels show the range when they read anew
}
