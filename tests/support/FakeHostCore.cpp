// SPDX-License-Identifier: MIT
#include "support/FakeHostCore.h"

#include <utility>

namespace {

QString text(const std::string &value)
{
    return QString::fromUtf8(value.c_str(), static_cast<int>(value.size()));
}

QString text(int value)
{
    return QString::number(value);
}

QString text(float value)
{
    return QString::number(static_cast<double>(value));
}

QString text(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

template <class... Values>
QStringList texts(const Values &...values)
{
    return {text(values)...};
}

template <class Map, class Key>
typename Map::mapped_type valueOr(const Map &map, const Key &key, typename Map::mapped_type fallback)
{
    const auto found = map.find(key);
    return found == map.end() ? fallback : found->second;
}

} // namespace

/// Gives the HostCore functions below the fake's inside.
struct FakeHostAccess
{
    static FakeHostCore &host() { return FakeHostCore::instance(); }

    template <class... Values>
    static FakeHostCore &record(const char *function, const Values &...values)
    {
        host().record(function, texts(values...));
        return host();
    }

    template <class Listener>
    static void listen(const char *function, Listener *FakeHostCore::Listeners::*slot, Listener *listener)
    {
        record(function).listeners.*slot = listener;
    }

    template <class Listener>
    static void unlisten(const char *function, Listener *FakeHostCore::Listeners::*slot, Listener *listener)
    {
        FakeHostCore &fake = record(function);
        if (fake.listeners.*slot == listener)
            fake.listeners.*slot = nullptr;
    }

    static GenApi::INodeMap *nodeMap(int type, const std::string &deviceKey)
    {
        const std::lock_guard lock(host().m_mutex);
        return valueOr(host().m_nodeMaps, FakeHostCore::ItemKey(deviceKey, type), nullptr);
    }

    static std::string cardInfo(const std::string &deviceKey, int item)
    {
        const std::lock_guard lock(host().m_mutex);
        return valueOr(host().m_cardInfo, FakeHostCore::ItemKey(deviceKey, item), std::string());
    }

    static int readNode(const FakeHostCore::Key &node, std::string &value)
    {
        const std::lock_guard lock(host().m_mutex);
        const int result = valueOr(host().m_readResults, node, 0);
        const auto found = host().m_nodeValues.find(node);
        if (result != 0 || found == host().m_nodeValues.end())
            return result != 0 ? result : -1;
        value = found->second;
        return 0;
    }

    static int writeNode(const FakeHostCore::Key &node, const std::string &value)
    {
        const std::lock_guard lock(host().m_mutex);
        const int result = valueOr(host().m_writeResults, node, 0);
        if (result != 0)
            return result;
        std::string &stored = host().m_nodeValues[node];
        const bool isBoolean = stored == "True" || stored == "False";
        stored = !isBoolean ? value : value == "1" ? "True" : "False";
        return 0;
    }

    static FakeHostCore::RoiAnswer roiAnswer() { return host().m_roiAnswer; }
};

FakeHostCore &FakeHostCore::instance()
{
    static FakeHostCore host;
    return host;
}

void FakeHostCore::reset()
{
    const std::lock_guard lock(m_mutex);
    listeners = {};
    correctionField = nullptr;
    m_calls.clear();
    m_callHook = nullptr;
    m_nodeMaps.clear();
    m_cameraInfo.clear();
    m_cardInfo.clear();
    m_paramterInfo.clear();
    m_nodeValues.clear();
    m_readResults.clear();
    m_writeResults.clear();
    m_roiAnswer = {};
}

void FakeHostCore::setNodeMap(HostCore::FOCUS_TYPE type, const std::string &deviceKey, GenApi::INodeMap *nodeMap)
{
    const std::lock_guard lock(m_mutex);
    m_nodeMaps[{deviceKey, type}] = nodeMap;
}

void FakeHostCore::setCameraInfo(const std::string &deviceKey, int item, const std::string &value)
{
    const std::lock_guard lock(m_mutex);
    m_cameraInfo[{deviceKey, item}] = value;
}

void FakeHostCore::setCardInfo(const std::string &deviceKey, int item, const std::string &value)
{
    const std::lock_guard lock(m_mutex);
    m_cardInfo[{deviceKey, item}] = value;
}

void FakeHostCore::setParamterInfo(int item, const std::string &value)
{
    const std::lock_guard lock(m_mutex);
    m_paramterInfo[item] = value;
}

void FakeHostCore::setNodeValue(const std::string &deviceKey, const std::string &nodeName, const std::string &value)
{
    const std::lock_guard lock(m_mutex);
    m_nodeValues[{deviceKey, nodeName}] = value;
}

std::string FakeHostCore::cameraInfo(const std::string &deviceKey, int item) const
{
    const std::lock_guard lock(m_mutex);
    return valueOr(m_cameraInfo, ItemKey(deviceKey, item), std::string());
}

std::string FakeHostCore::paramterInfo(int item) const
{
    const std::lock_guard lock(m_mutex);
    return valueOr(m_paramterInfo, item, std::string());
}

std::string FakeHostCore::nodeValue(const std::string &deviceKey, const std::string &nodeName) const
{
    const std::lock_guard lock(m_mutex);
    return valueOr(m_nodeValues, Key(deviceKey, nodeName), std::string());
}

void FakeHostCore::setReadResult(const std::string &deviceKey, const std::string &nodeName, int result)
{
    const std::lock_guard lock(m_mutex);
    m_readResults[{deviceKey, nodeName}] = result;
}

void FakeHostCore::setWriteResult(const std::string &deviceKey, const std::string &nodeName, int result)
{
    const std::lock_guard lock(m_mutex);
    m_writeResults[{deviceKey, nodeName}] = result;
}

void FakeHostCore::setRoiAnswer(const RoiAnswer &answer)
{
    m_roiAnswer = answer;
}

void FakeHostCore::setCallHook(std::function<void(const QString &)> hook)
{
    const std::lock_guard lock(m_mutex);
    m_callHook = std::move(hook);
}

QStringList FakeHostCore::calls() const
{
    const std::lock_guard lock(m_mutex);
    return m_calls;
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

void FakeHostCore::clearCalls()
{
    const std::lock_guard lock(m_mutex);
    m_calls.clear();
}

void FakeHostCore::record(const char *function, const QStringList &arguments)
{
    const QString line = QStringLiteral("%1(%2)").arg(QLatin1String(function), arguments.join(QStringLiteral(", ")));
    std::function<void(const QString &)> hook;
    {
        const std::lock_guard lock(m_mutex);
        m_calls << line;
        hook = m_callHook;
    }
    if (hook)
        hook(line);
}

namespace HostCore {

using Host = FakeHostAccess;
using Slots = FakeHostCore::Listeners;

void RegisterDeviceListUpdateListener(IDeviceListUpdate *listener)
{
    Host::listen(__func__, &Slots::deviceList, listener);
}

void RegisterFocusUpdateListener(IFocusUpdate *listener)
{
    Host::listen(__func__, &Slots::focus, listener);
}

void RegisterLangUpdateListener(ILangUpdate *listener)
{
    Host::listen(__func__, &Slots::language, listener);
}

void RegisterROIUpdateListener(IROIDrawUpdate *listener)
{
    Host::listen(__func__, &Slots::roi, listener);
}

void RegisterImageModeUpdateListener(IImageModeUpdate *listener)
{
    Host::listen(__func__, &Slots::imageMode, listener);
}

void RegisterImportUpdateListener(IImportUpdate *listener)
{
    Host::listen(__func__, &Slots::import, listener);
}

void UnRegisterDeviceListUpdateListener(IDeviceListUpdate *listener)
{
    Host::unlisten(__func__, &Slots::deviceList, listener);
}

void UnRegisterFocusUpdateListener(IFocusUpdate *listener)
{
    Host::unlisten(__func__, &Slots::focus, listener);
}

void UnRegisterLangUpdateListener(ILangUpdate *listener)
{
    Host::unlisten(__func__, &Slots::language, listener);
}

void UnRegisterROIUpdateListener(IROIDrawUpdate *listener)
{
    Host::unlisten(__func__, &Slots::roi, listener);
}

void UnRegisterImageModeUpdateListener(IImageModeUpdate *listener)
{
    Host::unlisten(__func__, &Slots::imageMode, listener);
}

void UnRegisterImportUpdateListener(IImportUpdate *listener)
{
    Host::unlisten(__func__, &Slots::import, listener);
}

std::string GetCameraInfo(std::string deviceKey, CAM_INFO item)
{
    return Host::record(__func__, deviceKey, int(item)).cameraInfo(deviceKey, item);
}

void SetCameraInfo(std::string deviceKey, CAM_INFO item, const std::string &value)
{
    Host::record(__func__, deviceKey, int(item), value).setCameraInfo(deviceKey, item, value);
}

std::string GetCardInfo(std::string deviceKey, CARD_INFO item)
{
    Host::record(__func__, deviceKey, int(item));
    return Host::cardInfo(deviceKey, item);
}

std::string GetParamterInfo(PARAMETER_INFO item)
{
    return Host::record(__func__, int(item)).paramterInfo(item);
}

void SetParamterInfo(PARAMETER_INFO item, std::string value)
{
    Host::record(__func__, int(item), value).setParamterInfo(item, value);
}

GenApi::INodeMap *GetAttrNodeMap(FOCUS_TYPE type, std::string deviceKey, NodeMapType kind)
{
    Host::record(__func__, int(type), deviceKey, int(kind));
    return kind == NODE_MAP_DEVICE ? Host::nodeMap(type, deviceKey) : nullptr;
}

int GetCameraNodeValue(std::string deviceKey, std::string nodeName, std::string &value)
{
    Host::record(__func__, deviceKey, nodeName);
    return Host::readNode({deviceKey, nodeName}, value);
}

int SetCameraNodeValue(std::string deviceKey, std::string nodeName, std::string value)
{
    Host::record(__func__, deviceKey, nodeName, value);
    return Host::writeNode({deviceKey, nodeName}, value);
}

int DrawROI(std::string deviceKey, int leftX, int leftY, int rightX, int rightY, int &roiId, bool &status,
            int reserved1, int reserved2)
{
    Host::record(__func__, deviceKey, leftX, leftY, rightX, rightY, roiId, status, reserved1, reserved2);
    const FakeHostCore::RoiAnswer answer = Host::roiAnswer();
    if (answer.result == 0) {
        roiId = answer.roiId;
        status = answer.status;
    }
    return answer.result;
}

void RomoveROI(std::string deviceKey, int roiId)
{
    Host::record(__func__, deviceKey, roiId);
}

void SetROIPos(std::string deviceKey, int roiId, int leftX, int leftY, int rightX, int rightY)
{
    Host::record(__func__, deviceKey, roiId, leftX, leftY, rightX, rightY);
}

void StartGrab(std::string deviceKey)
{
    Host::record(__func__, deviceKey);
}

void SetCameraImageMode(std::string deviceKey, int mode, bool flag)
{
    Host::record(__func__, deviceKey, mode, flag);
}

void SetSLImageShowMode(std::string deviceKey, int mode)
{
    Host::record(__func__, deviceKey, mode);
}

void NotifyCorrection(std::string deviceKey, int kind, float value, void *result)
{
    FakeHostCore::instance().correctionField = result;
    Host::record(__func__, deviceKey, kind, value);
}

void VLogInfo(const std::string &module, const std::string &message, int level)
{
    Host::record(__func__, module, message, level);
}

} // namespace HostCore
