// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSet>
#include <QString>

#include "Devices/HeightFrame.h"

class DeviceSessions;
class HostListeners;
class InfoItems;
class KnownDevices;

/// The automatic display range of laser profilers: a panel asks for it with an item of the camera, and the next
/// complete frame sets the range once. GUI thread.
class AutomaticRange : public QObject
{
    Q_OBJECT

public:
    /// Owned by the items, which the other three must outlive.
    AutomaticRange(const KnownDevices &devices, const DeviceSessions &sessions, InfoItems &items,
                   HostListeners &listeners);

private:
    void adoptFrame(const QString &device, const HeightFrame &frame);
    void adoptState(const QString &device);
    bool isRequested(const QString &device) const;
    void endRequest(const QString &device);
    void setRange(const QString &device, const HeightFrame &frame);

    const KnownDevices &m_devices;
    InfoItems &m_items;
    HostListeners &m_listeners;
    QSet<QString> m_ready; ///< devices that were ready at the last change of their state
};
