// SPDX-License-Identifier: MIT
#include "ParamterWidget/NodeAccess.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "PanelBase/Guarded.h"
#include "PanelBase/NodeWrites.h"
#include "ParamterWnd/HostCore.h"

namespace {

constexpr int NoNodeMap = -1;

/// What a helper returns for each reason why it did not reach the feature.
struct ReturnCodes
{
    int noNode;
    int wrongType;
    int wrongInterface;
    int exception;
};

constexpr ReturnCodes WriteCodes = {-4, -6, -5, -7};
constexpr ReturnCodes FloatCodes = {-2, -4, -3, -5};
constexpr ReturnCodes IntCodes = {-2, 0, -3, -4};
constexpr int AccessRefused = -3;

template <class Pointer>
struct Feature
{
    QString device;
    QString nodeName;
    GenApi::EInterfaceType type;
    ReturnCodes codes;

    /// Calls `operation` with the feature and returns its result, or the code of what prevented that.
    template <class Operation>
    int access(Operation operation) const
    {
        int code = codes.exception;
        errorOf([&] { code = accessThrowing(operation); });
        return code;
    }

private:
    template <class Operation>
    int accessThrowing(Operation operation) const
    {
        GenApi::INodeMap *const nodeMap =
            HostCore::GetAttrNodeMap(HostCore::FOCUS_CAMERA, device.toStdString(), HostCore::NODE_MAP_DEVICE);
        if (!nodeMap)
            return NoNodeMap;
        GenApi::INode *const node = nodeMap->GetNode(nodeName.toUtf8().constData());
        if (!node)
            return codes.noNode;
        if (node->GetPrincipalInterfaceType() != type)
            return codes.wrongType;
        const Pointer feature(node);
        return feature.IsValid() ? operation(feature) : codes.wrongInterface;
    }
};

bool isOneOf(GenApi::EAccessMode mode, GenApi::EAccessMode first, GenApi::EAccessMode second)
{
    return mode == first || mode == second;
}

Feature<GenApi::CIntegerPtr> integerFeature(const QString &device, const QString &nodeName)
{
    return {device, nodeName, GenApi::intfIInteger, IntCodes};
}

/// The names under which cameras have a feature, the plain one (which is its logical name) first.
using NameVariants = std::array<const char *, 3>;

constexpr NameVariants NodeNameVariants[] = {
    {"ExposureTime", "ExposureTimeAbs", "ExposureTimeRaw"},
    {"GammaEnable", "EnableGamma", nullptr},
    {"Gain", "GainAbs", "GainRaw"},
    {"TriggerDelay", "TriggerDelayAbs", "TriggerDelayRaw"},
    {"AcquisitionFrameRate", "AcquisitionFrameRateAbs", "AcquisitionFrameRateRaw"},
};

} // namespace

int SetCameraEnumNodeValue(QString device, QString nodeName, int value)
{
    return SetCameraEnumNodeValue(nullptr, device, nodeName, value);
}

int SetCameraEnumNodeValue(DeviceReading *reading, QString device, QString nodeName, int value)
{
    const Feature<GenApi::CEnumerationPtr> feature{device, nodeName, GenApi::intfIEnumeration, WriteCodes};
    return feature.access([=](const GenApi::CEnumerationPtr &enumeration) {
        NodeWrites::writeEntry(reading, enumeration->GetNode(), value);
        enumeration->GetIntValue(true, true);
        return 0;
    });
}

int ExecCameraCommandNode(QString device, QString nodeName)
{
    return ExecCameraCommandNode(nullptr, device, nodeName);
}

int ExecCameraCommandNode(DeviceReading *reading, QString device, QString nodeName)
{
    const Feature<GenApi::CCommandPtr> feature{device, nodeName, GenApi::intfICommand, WriteCodes};
    return feature.access([reading](const GenApi::CCommandPtr &command) {
        NodeWrites::execute(reading, command->GetNode());
        return 0;
    });
}

int GetCamerFloatNodeValue(QString device, QString nodeName, float &value, float &min, float &max, float &inc)
{
    const Feature<GenApi::CFloatPtr> feature{device, nodeName, GenApi::intfIFloat, FloatCodes};
    return feature.access([&](const GenApi::CFloatPtr &number) {
        if (!isOneOf(number->GetAccessMode(), GenApi::RO, GenApi::RW))
            return AccessRefused;
        value = static_cast<float>(number->GetValue(false, false));
        min = static_cast<float>(number->GetMin());
        max = static_cast<float>(number->GetMax());
        inc = number->HasInc() ? static_cast<float>(number->GetInc()) : 0.001F;
        return 0;
    });
}

int GetCameraIntNodeInfo(QString device, QString nodeName, int &value, int &min, int &max, int &inc)
{
    return integerFeature(device, nodeName).access([&](const GenApi::CIntegerPtr &number) {
        if (!isOneOf(number->GetAccessMode(), GenApi::RO, GenApi::RW))
            return AccessRefused;
        value = static_cast<int>(number->GetValue(false, false));
        min = static_cast<int>(number->GetMin());
        max = static_cast<int>(number->GetMax());
        inc = static_cast<int>(number->GetInc());
        return 0;
    });
}

int SetCameraIntNodeValue(QString device, QString nodeName, int value)
{
    return SetCameraIntNodeValue(nullptr, device, nodeName, value);
}

int SetCameraIntNodeValue(DeviceReading *reading, QString device, QString nodeName, int value)
{
    return integerFeature(device, nodeName).access([=](const GenApi::CIntegerPtr &number) {
        if (!isOneOf(number->GetAccessMode(), GenApi::WO, GenApi::RW))
            return AccessRefused;
        NodeWrites::writeValue(reading, number->GetNode(), value);
        return 0;
    });
}

GenApi::INode *FindNodeByLogicalName(const QString &name, GenApi::INodeMap *nodeMap)
{
    const auto variants = std::find_if(std::begin(NodeNameVariants), std::end(NodeNameVariants),
                                       [&](const NameVariants &names) { return name == QLatin1String(names[0]); });
    if (variants == std::end(NodeNameVariants))
        return nullptr;
    GenApi::INode *node = nullptr;
    errorOf([&] {
        for (const char *candidate : *variants) {
            if (!node && candidate)
                node = nodeMap->GetNode(candidate);
        }
    });
    return node;
}
