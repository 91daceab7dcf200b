// SPDX-License-Identifier: MIT
#include "ParamterWidget/profiler/HostValues.h"

#include <cmath>

#include "ParamterWidget/PanelContext.h"

QString HostValues::readNode(const PanelContext &context, const char *feature, const QString &otherwise)
{
    std::string value = otherwise.toStdString();
    const bool read = HostCore::GetCameraNodeValue(context.deviceKey(), feature, value) == 0;
    return read ? QString::fromStdString(value) : otherwise;
}

void HostValues::writeNode(const PanelContext &context, const char *feature, const QString &value)
{
    HostCore::SetCameraNodeValue(context.deviceKey(), feature, value.toStdString());
}

QString HostValues::readSetting(const PanelContext &context, HostCore::CAM_INFO item)
{
    return QString::fromStdString(HostCore::GetCameraInfo(context.deviceKey(), item));
}

void HostValues::writeSetting(const PanelContext &context, HostCore::CAM_INFO item, const QString &value)
{
    HostCore::SetCameraInfo(context.deviceKey(), item, value.toStdString());
}

std::optional<double> HostValues::number(const QString &text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber && std::isfinite(number) ? std::optional<double>(number) : std::nullopt;
}

std::optional<double> HostValues::number(const QString &text, double ifEmpty)
{
    return text.isEmpty() ? ifEmpty : number(text);
}

QString HostValues::text(double number)
{
    return QString::number(number, 'f', 6);
}
