// SPDX-License-Identifier: MIT
#include "support/FakeHostCore.h"

namespace {

template <class Value>
QString text(const Value &value)
{
    if constexpr (std::is_same_v<Value, std::string>)
        return QString::fromStdString(value);
    else if constexpr (std::is_same_v<Value, bool>)
        return value ? QStringLiteral("true") : QStringLiteral("false");
    else
        return QString::number(value);
}

template <class... Values>
FakeHostCore &record(const char *function, const Values &...values)
{
    FakeHostCore::instance().record(function, {text(values)...});
    return FakeHostCore::instance();
}

} // namespace

FakeHostCore &FakeHostCore::instance()
{
    static FakeHostCore host;
    return host;
}

void FakeHostCore::reset()
{
    listeners = {};
    roiAnswer = {};
    correctionField = nullptr;
    const std::lock_guard lock(m_mutex);
    m_state = {};
}

int FakeHostCore::readNode(const std::string &key, const std::string &node, std::string &value) const
{
    if (const int result = this->value(&State::readResults, {key, node}))
        return result;
    const std::lock_guard lock(m_mutex);
    const auto found = m_state.nodeValues.find({key, node});
    if (found == m_state.nodeValues.end())
        return -1;
    value = found->second;
    return 0;
}

int FakeHostCore::writeNode(const std::string &key, const std::string &node, const std::string &value)
{
    if (const int result = this->value(&State::writeResults, {key, node}))
        return result;
    const std::string stored = nodeValue(key, node);
    const bool isBoolean = stored == "True" || stored == "False";
    setNodeValue(key, node, !isBoolean ? value : value == "1" ? "True" : "False");
    return 0;
}

QStringList FakeHostCore::callsTo(const QStringList &functions) const
{
    QStringList matching;
    for (const QString &line : calls()) {
        if (functions.contains(line.section(QLatin1Char('('), 0, 0)))
            matching << line;
    }
    return matching;
}

void FakeHostCore::record(const char *function, const QStringList &arguments)
{
    const QString line = QStringLiteral("%1(%2)").arg(QLatin1String(function), arguments.join(QStringLiteral(", ")));
    {
        const std::lock_guard lock(m_mutex);
        m_state.calls[0] << line;
    }
    if (const auto hook = value(&State::callHook, 0))
        hook(line);
}

namespace HostCore {

#define REGISTRATION(Name, Interface, slot)                                                                            \
    void Register##Name##UpdateListener(Interface *listener)                                                           \
    {                                                                                                                  \
        record(__func__).listeners.slot = listener;                                                                    \
    }                                                                                                                  \
    void UnRegister##Name##UpdateListener(Interface *listener)                                                         \
    {                                                                                                                  \
        if (Interface *&registered = record(__func__).listeners.slot; registered == listener)                          \
            registered = nullptr;                                                                                      \
    }

REGISTRATION(DeviceList, IDeviceListUpdate, deviceList)
REGISTRATION(Focus, IFocusUpdate, focus)
REGISTRATION(Lang, ILangUpdate, language)
REGISTRATION(ROI, IROIDrawUpdate, roi)
REGISTRATION(ImageMode, IImageModeUpdate, imageMode)
REGISTRATION(Import, IImportUpdate, import)

std::string GetCameraInfo(std::string deviceKey, CAM_INFO item)
{
    return record(__func__, deviceKey, int(item)).cameraInfo(deviceKey, item);
}

void SetCameraInfo(std::string deviceKey, CAM_INFO item, const std::string &value)
{
    record(__func__, deviceKey, int(item), value).setCameraInfo(deviceKey, item, value);
}

std::string GetCardInfo(std::string deviceKey, CARD_INFO item)
{
    return record(__func__, deviceKey, int(item)).cardInfo(deviceKey, item);
}

std::string GetParamterInfo(PARAMETER_INFO item)
{
    return record(__func__, int(item)).paramterInfo(item);
}

void SetParamterInfo(PARAMETER_INFO item, std::string value)
{
    record(__func__, int(item), value).setParamterInfo(item, value);
}

GenApi::INodeMap *GetAttrNodeMap(FOCUS_TYPE type, std::string deviceKey, NodeMapType kind)
{
    const FakeHostCore &host = record(__func__, int(type), deviceKey, int(kind));
    return kind == NODE_MAP_DEVICE ? host.nodeMap(type, deviceKey) : nullptr;
}

int GetCameraNodeValue(std::string deviceKey, std::string nodeName, std::string &value)
{
    return record(__func__, deviceKey, nodeName).readNode(deviceKey, nodeName, value);
}

int SetCameraNodeValue(std::string deviceKey, std::string nodeName, std::string value)
{
    return record(__func__, deviceKey, nodeName, value).writeNode(deviceKey, nodeName, value);
}

int DrawROI(std::string deviceKey, int leftX, int leftY, int rightX, int rightY, int &roiId, bool &status,
            int reserved1, int reserved2)
{
    const FakeHostCore::RoiAnswer &answer =
        record(__func__, deviceKey, leftX, leftY, rightX, rightY, roiId, status, reserved1, reserved2).roiAnswer;
    if (answer.result == 0) {
        roiId = answer.roiId;
        status = answer.status;
    }
    return answer.result;
}

void RomoveROI(std::string deviceKey, int roiId)
{
    record(__func__, deviceKey, roiId);
}

void SetROIPos(std::string deviceKey, int roiId, int leftX, int leftY, int rightX, int rightY)
{
    record(__func__, deviceKey, roiId, leftX, leftY, rightX, rightY);
}

void StartGrab(std::string deviceKey)
{
    record(__func__, deviceKey);
}

void SetCameraImageMode(std::string deviceKey, int mode, bool flag)
{
    record(__func__, deviceKey, mode, flag);
}

void SetSLImageShowMode(std::string deviceKey, int mode)
{
    record(__func__, deviceKey, mode);
}

void NotifyCorrection(std::string deviceKey, int kind, float value, void *result)
{
    FakeHostCore::instance().correctionField = result;
    record(__func__, deviceKey, kind, value);
}

void VLogInfo(const std::string &module, const std::string &message, int level)
{
    record(__func__, module, message, level);
}

} // namespace HostCore
