// SPDX-License-Identifier: MIT
#include "Host/InfoItems.h"

#include <QSettings>
#include <QUrl>

#include "Host/KnownDevices.h"

namespace {

/// What CARD_INFO_STATE reads for a card that can be used.
const QString UsableCard = QStringLiteral("4");

QString flagText(bool flag)
{
    return flag ? QStringLiteral("1") : QStringLiteral("0");
}

QString parameterKey(HostCore::PARAMETER_INFO item)
{
    return QStringLiteral("parameter/%1").arg(static_cast<int>(item));
}

/// Ids may hold slashes and other characters that have a meaning in a settings key.
QString cameraKey(const QString &id, HostCore::CAM_INFO item)
{
    const QString safeId = QString::fromLatin1(QUrl::toPercentEncoding(id));
    return QStringLiteral("camera/%1/%2").arg(safeId).arg(static_cast<int>(item));
}

bool isStored(HostCore::CAM_INFO item)
{
    return item >= HostCore::CAM_INFO_DISPLAY_FIRST && item <= HostCore::CAM_INFO_DISPLAY_LAST;
}

} // namespace

InfoItems::InfoItems(const KnownDevices &devices, QSettings &settings) : m_devices(devices), m_settings(settings) { }

QString InfoItems::camera(const QString &id, HostCore::CAM_INFO item) const
{
    const Device *known = m_devices.device(id);
    if (!known || known->kind() != Device::Kind::Camera)
        return {};
    switch (item) {
    case HostCore::CAM_INFO_OPENED:
    case HostCore::CAM_INFO_READY:
        return flagText(m_devices.isReady(id));
    case HostCore::CAM_INFO_TYPE_CODE:
        return known->typeCode();
    case HostCore::CAM_INFO_ACQUISITION:
        return flagText(known->isAcquiring());
    default:
        return isStored(item) ? m_settings.value(cameraKey(id, item)).toString() : QString();
    }
}

void InfoItems::setCamera(const QString &id, HostCore::CAM_INFO item, const QString &value)
{
    if (!isStored(item) || value == camera(id, item))
        return;
    m_settings.setValue(cameraKey(id, item), value);
    Q_EMIT cameraChanged(id, item);
}

QString InfoItems::card(const QString &id, HostCore::CARD_INFO item) const
{
    const Device *known = m_devices.device(id);
    if (!known || known->kind() != Device::Kind::Card)
        return {};
    if (item == HostCore::CARD_INFO_STATE)
        return UsableCard;
    return item == HostCore::CARD_INFO_OPEN ? flagText(m_devices.isReady(id)) : QString();
}

QString InfoItems::parameter(HostCore::PARAMETER_INFO item) const
{
    return m_settings.value(parameterKey(item)).toString();
}

void InfoItems::setParameter(HostCore::PARAMETER_INFO item, const QString &value)
{
    m_settings.setValue(parameterKey(item), value);
}
