// SPDX-License-Identifier: MIT
#include "ParamterWnd/HostCore.h"

#include <QDoubleSpinBox>

#include "Host/HostContext.h"

// The functions of HostCore.h for this host: forwards to the current HostContext. Without one there are no devices,
// listeners are not kept and nothing is logged.

namespace {

QString text(const std::string &utf8)
{
    return QString::fromStdString(utf8);
}

constexpr int Success = 0;
constexpr int Failure = -1;

template <class Forward>
void withContext(Forward forward)
{
    if (HostContext *context = HostContext::current())
        forward(*context);
}

/// The answer of `question`, or an empty text without a context.
template <class Question>
std::string answer(Question question)
{
    HostContext *context = HostContext::current();
    return context ? question(*context).toStdString() : std::string();
}

} // namespace

namespace HostCore {

void RegisterDeviceListUpdateListener(IDeviceListUpdate *listener)
{
    withContext([=](HostContext &host) { host.listeners().deviceList.add(listener); });
}

void RegisterFocusUpdateListener(IFocusUpdate *listener)
{
    withContext([=](HostContext &host) { host.listeners().focus.add(listener); });
}

void RegisterLangUpdateListener(ILangUpdate *listener)
{
    withContext([=](HostContext &host) { host.listeners().language.add(listener); });
}

void RegisterROIUpdateListener(IROIDrawUpdate *listener)
{
    withContext([=](HostContext &host) { host.listeners().regions.add(listener); });
}

void RegisterImageModeUpdateListener(IImageModeUpdate *listener)
{
    withContext([=](HostContext &host) { host.listeners().imageMode.add(listener); });
}

void RegisterImportUpdateListener(IImportUpdate *listener)
{
    withContext([=](HostContext &host) { host.listeners().import.add(listener); });
}

void UnRegisterDeviceListUpdateListener(IDeviceListUpdate *listener)
{
    withContext([=](HostContext &host) { host.listeners().deviceList.remove(listener); });
}

void UnRegisterFocusUpdateListener(IFocusUpdate *listener)
{
    withContext([=](HostContext &host) { host.listeners().focus.remove(listener); });
}

void UnRegisterLangUpdateListener(ILangUpdate *listener)
{
    withContext([=](HostContext &host) { host.listeners().language.remove(listener); });
}

void UnRegisterROIUpdateListener(IROIDrawUpdate *listener)
{
    withContext([=](HostContext &host) { host.listeners().regions.remove(listener); });
}

void UnRegisterImageModeUpdateListener(IImageModeUpdate *listener)
{
    withContext([=](HostContext &host) { host.listeners().imageMode.remove(listener); });
}

void UnRegisterImportUpdateListener(IImportUpdate *listener)
{
    withContext([=](HostContext &host) { host.listeners().import.remove(listener); });
}

std::string GetCameraInfo(std::string deviceKey, CAM_INFO item)
{
    return answer([&](HostContext &host) { return host.infoItems().camera(text(deviceKey), item); });
}

void SetCameraInfo(std::string deviceKey, CAM_INFO item, const std::string &value)
{
    withContext([&](HostContext &host) { host.infoItems().setCamera(text(deviceKey), item, text(value)); });
}

std::string GetCardInfo(std::string deviceKey, CARD_INFO item)
{
    return answer([&](HostContext &host) { return host.infoItems().card(text(deviceKey), item); });
}

std::string GetParamterInfo(PARAMETER_INFO item)
{
    return answer([&](HostContext &host) { return host.infoItems().parameter(item); });
}

void SetParamterInfo(PARAMETER_INFO item, std::string value)
{
    withContext([&](HostContext &host) { host.infoItems().setParameter(item, text(value)); });
}

GenApi::INodeMap *GetAttrNodeMap(FOCUS_TYPE type, std::string deviceKey, NodeMapType kind)
{
    HostContext *host = HostContext::current();
    return host && kind == NODE_MAP_DEVICE ? host->values().nodeMap(type, text(deviceKey)) : nullptr;
}

int GetCameraNodeValue(std::string deviceKey, std::string nodeName, std::string &value)
{
    HostContext *host = HostContext::current();
    QString read;
    if (!host || !host->values().read(text(deviceKey), text(nodeName), &read))
        return Failure;
    value = read.toStdString();
    return Success;
}

int SetCameraNodeValue(std::string deviceKey, std::string nodeName, std::string value)
{
    HostContext *host = HostContext::current();
    return host && host->values().write(text(deviceKey), text(nodeName), text(value)) ? Success : Failure;
}

/// Panels name the regions of laser profilers themselves, which the reserved numbers tell.
int DrawROI(std::string deviceKey, int leftX, int leftY, int rightX, int rightY, int &roiId, bool &status,
            int reserved1, int reserved2)
{
    HostContext *host = HostContext::current();
    const QPoint corner(leftX, leftY), opposite(rightX, rightY);
    const bool numbered = reserved1 != 0 || reserved2 != 0;
    status = false;
    if (host && numbered) {
        status = host->profilerRegions().draw(text(deviceKey), roiId, corner, opposite);
    } else if (const int drawn = host ? host->panelRegions().draw(text(deviceKey), corner, opposite) : 0) {
        status = true;
        roiId = drawn;
    }
    return status ? Success : Failure;
}

void RomoveROI(std::string deviceKey, int roiId)
{
    withContext([&](HostContext &host) { host.panelRegions().remove(text(deviceKey), roiId); });
}

void SetROIPos(std::string deviceKey, int roiId, int leftX, int leftY, int rightX, int rightY)
{
    withContext([&](HostContext &host) {
        host.panelRegions().place(text(deviceKey), roiId, {leftX, leftY}, {rightX, rightY});
    });
}

void StartGrab(std::string deviceKey)
{
    HostContext::callCurrent([id = text(deviceKey)](HostContext &host) { host.sessions().startAcquisition(id); });
}

/// The viewer shows what the settings say that panels store with the request.
void SetCameraImageMode(std::string, int, bool) { }

void SetSLImageShowMode(std::string deviceKey, int mode)
{
    withContext([&](HostContext &host) { host.showModes().set(text(deviceKey), mode); });
}

void NotifyCorrection(std::string deviceKey, int kind, float, void *result)
{
    withContext([&](HostContext &host) {
        auto *const field = static_cast<QDoubleSpinBox *>(result);
        if (!field)
            return;
        const HeightAnalysis::Range allowed{field->minimum(), field->maximum()};
        if (const auto value = host.profilerHeights().correction(text(deviceKey), kind, allowed))
            field->setValue(*value);
    });
}

void VLogInfo(const std::string &module, const std::string &message, int level)
{
    HostContext::callCurrent([module = text(module), message = text(message), level](HostContext &host) {
        host.log().add(module, message, level);
    });
}

} // namespace HostCore
