// SPDX-License-Identifier: MIT
#include "ParamterWidget/HostValues.h"

#include <cmath>

#include "PanelBase/HostCall.h"
#include "ParamterWidget/PanelContext.h"

namespace {

constexpr const char *Module = "HostValues";

std::optional<double> number(const PanelContext &context, const QString &name, const QString &text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (isNumber && std::isfinite(number))
        return number;
    if (!text.isEmpty())
        HostValues::reportUnusable(context, name, text);
    return std::nullopt;
}

} // namespace

QString HostValues::readNode(const PanelContext &context, const char *feature, const QString &otherwise)
{
    std::string value = otherwise.toStdString();
    bool isRead = false;
    context.read(
        [&] { isRead = callHost<HostCore::GetCameraNodeValue>(Module, context.deviceKey(), feature, value) == 0; });
    return isRead ? QString::fromStdString(value) : otherwise;
}

std::optional<QString> HostValues::knownText(const PanelContext &context, const char *feature)
{
    const QString text = readNode(context, feature);
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

bool HostValues::writeNode(PanelContext &context, const char *feature, const QString &value)
{
    const int result = context.reading->writeByName([&] {
        return callHost<HostCore::SetCameraNodeValue>(Module, context.deviceKey(), feature, value.toStdString());
    });
    context.written();
    return result == 0;
}

IntegerInfo HostValues::readInteger(const PanelContext &context, const char *feature, int value)
{
    IntegerInfo info{value};
    context.read([&] {
        GetCameraIntNodeInfo(context.deviceName, QString::fromLatin1(feature), info.value, info.minimum, info.maximum,
                             info.increment);
    });
    return info;
}

QString HostValues::readSetting(const PanelContext &context, HostCore::CAM_INFO item)
{
    return QString::fromStdString(callHost<HostCore::GetCameraInfo>(Module, context.deviceKey(), item));
}

void HostValues::writeSetting(PanelContext &context, HostCore::CAM_INFO item, const QString &value)
{
    callHost<HostCore::SetCameraInfo>(Module, context.deviceKey(), item, value.toStdString());
}

std::optional<double> HostValues::readNumber(const PanelContext &context, const char *feature, const QString &otherwise)
{
    return number(context, QString::fromLatin1(feature), readNode(context, feature, otherwise));
}

std::optional<double> HostValues::readNumber(const PanelContext &context, HostCore::CAM_INFO item,
                                             const QString &otherwise)
{
    const QString stored = readSetting(context, item);
    return number(context, QStringLiteral("Setting %1").arg(int(item)), stored.isEmpty() ? otherwise : stored);
}

void HostValues::reportUnusable(const PanelContext &context, const QString &name, const QString &value)
{
    context.logOnce(Module, QStringLiteral("%1 is not usable: \"%2\"").arg(name, value));
}

QString HostValues::text(double number)
{
    return QString::number(number, 'f', 6);
}
