// SPDX-License-Identifier: MIT
#pragma once

#include <QMultiHash>
#include <QObject>
#include <QString>

class DeviceReturn;
class DeviceSessions;
class KnownDevices;

/// The cards that a driver has for an open camera (Device::modules()): known from their first opening to their end, and
/// closed with their camera. GUI thread.
class CameraModules : public QObject
{
    Q_OBJECT

public:
    /// All three must outlive this.
    CameraModules(KnownDevices &devices, DeviceSessions &sessions, DeviceReturn &deviceReturn);

    /// Makes a module of an open camera known, if it is not yet, and opens it.
    void open(const QString &camera, const QString &module);

private:
    void adoptState(const QString &id);
    void forget(const QString &module);

    KnownDevices &m_devices;
    DeviceSessions &m_sessions;
    DeviceReturn &m_deviceReturn;
    QMultiHash<QString, QString> m_modules; ///< of each camera, those that are known
};
