// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QObject>
#include <QRect>
#include <QSize>
#include <QString>

#include "ParamterWnd/HostCore.h"

class HostLog;
class KnownDevices;

/// Which part of its sensor a camera shows.
struct ImagePlace
{
    QRect area; ///< in pixels of the images
    QSize largest; ///< of the images; binning and the like, which make other pixels, change it
};

/// The node maps of devices, and their values by name and as text. GUI thread.
class DeviceValues : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive this.
    DeviceValues(const KnownDevices &devices, HostLog &log);

    /// Null unless the device is of that kind and ready.
    GenApi::INodeMap *nodeMap(HostCore::FOCUS_TYPE type, const QString &id) const;
    /// False on failure, which is logged.
    bool read(const QString &id, const QString &node, QString *value);
    bool write(const QString &id, const QString &node, const QString &value);
    /// What the device does not tell is 0.
    ImagePlace imagePlace(const QString &id) const;

Q_SIGNALS:
    /// The device has got other settings by a write.
    void userSetLoaded(const QString &id);
    /// A write has ended: `value` as it was given, and why it was refused, or an empty text.
    void written(const QString &id, const QString &node, const QString &value, const QString &refusal);

private:
    /// What has prevented it, which is logged; empty if nothing. `failure` has places %1 and %2 left for the id and the
    /// reason.
    QString access(const QString &id, const QString &failure, const std::function<void(GenApi::INodeMap &)> &whatToDo);

    const KnownDevices &m_devices;
    HostLog &m_log;
};
