// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include "ParamterWnd/HostCore.h"

class KnownDevices;
class QSettings;

/// The items of cameras, cards and the host itself that panels ask for by number; see HostCore.h for their meaning.
/// Those that panels store are kept in the settings. GUI thread.
class InfoItems : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive this.
    InfoItems(const KnownDevices &devices, QSettings &settings);

    QString camera(const QString &id, HostCore::CAM_INFO item) const;
    void setCamera(const QString &id, HostCore::CAM_INFO item, const QString &value);
    QString card(const QString &id, HostCore::CARD_INFO item) const;
    QString parameter(HostCore::PARAMETER_INFO item) const;
    void setParameter(HostCore::PARAMETER_INFO item, const QString &value);

Q_SIGNALS:
    /// A setting that is kept per camera has another value.
    void cameraChanged(const QString &id, HostCore::CAM_INFO item);

private:
    const KnownDevices &m_devices;
    QSettings &m_settings;
};
