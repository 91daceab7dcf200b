// SPDX-License-Identifier: MIT
// The smallest host: it knows no device, shows the empty panel and ends. Exits with 0 when the panel registered its
// listeners, was shown, and unregistered them.

#include <cstdio>

#include <QApplication>
#include <QTimer>

#include <ParamterWnd/HostCore.h>
#include <ParamterWnd/ParamterWnd.h>

namespace {

int listeners = 0;

} // namespace

namespace HostCore {

void RegisterDeviceListUpdateListener(IDeviceListUpdate *)
{
    ++listeners;
}
void RegisterFocusUpdateListener(IFocusUpdate *)
{
    ++listeners;
}
void RegisterLangUpdateListener(ILangUpdate *)
{
    ++listeners;
}
void RegisterROIUpdateListener(IROIDrawUpdate *)
{
    ++listeners;
}
void RegisterImageModeUpdateListener(IImageModeUpdate *)
{
    ++listeners;
}
void RegisterImportUpdateListener(IImportUpdate *)
{
    ++listeners;
}
void UnRegisterDeviceListUpdateListener(IDeviceListUpdate *)
{
    --listeners;
}
void UnRegisterFocusUpdateListener(IFocusUpdate *)
{
    --listeners;
}
void UnRegisterLangUpdateListener(ILangUpdate *)
{
    --listeners;
}
void UnRegisterROIUpdateListener(IROIDrawUpdate *)
{
    --listeners;
}
void UnRegisterImageModeUpdateListener(IImageModeUpdate *)
{
    --listeners;
}
void UnRegisterImportUpdateListener(IImportUpdate *)
{
    --listeners;
}

std::string GetCameraInfo(std::string, CAM_INFO)
{
    return {};
}
void SetCameraInfo(std::string, CAM_INFO, const std::string &) { }
std::string GetCardInfo(std::string, CARD_INFO)
{
    return {};
}
std::string GetParamterInfo(PARAMETER_INFO)
{
    return {};
}
void SetParamterInfo(PARAMETER_INFO, std::string) { }

GenApi::INodeMap *GetAttrNodeMap(FOCUS_TYPE, std::string, NodeMapType)
{
    return nullptr;
}
int GetCameraNodeValue(std::string, std::string, std::string &)
{
    return -1;
}
int SetCameraNodeValue(std::string, std::string, std::string)
{
    return -1;
}

int DrawROI(std::string, int, int, int, int, int &, bool &, int, int)
{
    return -1;
}
void RomoveROI(std::string, int) { }
void SetROIPos(std::string, int, int, int, int, int) { }
void StartGrab(std::string) { }
void SetCameraImageMode(std::string, int, bool) { }
void SetSLImageShowMode(std::string, int) { }
void NotifyCorrection(std::string, int, float, void *) { }

void VLogInfo(const std::string &module, const std::string &message, int)
{
    std::fprintf(stderr, "%s: %s\n", module.c_str(), message.c_str());
}

} // namespace HostCore

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    bool shown = false;
    {
        ParamterWnd window;
        window.show();
        QTimer::singleShot(0, &window, [&] {
            shown = window.isVisible() && listeners == 6;
            QApplication::quit();
        });
        QApplication::exec();
    }
    return shown && listeners == 0 ? 0 : 1;
}
