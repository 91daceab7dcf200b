// SPDX-License-Identifier: MIT
// The smallest host, by docs/embedding.md: one camera, made of a few bytes. Exits with 0 when the panel registered its
// listeners, showed the camera's gain through a port with a deadline, and unregistered them.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>

#include <QApplication>
#include <QDoubleSpinBox>
#include <QTimer>

#include <GenApi/GenApi.h>
#include <GenApi/NodeMapFactory.h>

#include <Devices/FailFastPort.h>
#include <ParamterWnd/HostCore.h>
#include <ParamterWnd/ParamterWnd.h>

namespace {

constexpr char description[] = R"(<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription ModelName="Consumer" VendorName="Consumer" StandardNameSpace="None" SchemaMajorVersion="1"
 SchemaMinorVersion="1" SchemaSubMinorVersion="0" MajorVersion="1" MinorVersion="0" SubMinorVersion="0"
 ProductGuid="0A2C7B52-3E1D-4B8A-9C55-0D4E5A7B2201" VersionGuid="0A2C7B52-3E1D-4B8A-9C55-0D4E5A7B2202"
 xmlns="http://www.genicam.org/GenApi/Version_1_1">
<Category Name="Root"><pFeature>Gain</pFeature></Category>
<Float Name="Gain"><pValue>GainReg</pValue><Min>0</Min><Max>24</Max></Float>
<FloatReg Name="GainReg"><Address>0</Address><Length>8</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>
 <Endianess>LittleEndian</Endianess></FloatReg>
<Port Name="Device"/>
</RegisterDescription>)";

class Memory : public GenApi::IPort
{
public:
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void *buffer, int64_t, int64_t length) override { std::memcpy(buffer, &gain, std::size_t(length)); }
    void Write(const void *buffer, int64_t, int64_t length) override
    {
        std::memcpy(&gain, buffer, std::size_t(length));
    }

    double gain = 7.5;
};

int listeners = 0;
HostCore::IDeviceListUpdate *deviceList = nullptr;
HostCore::IFocusUpdate *focus = nullptr;
GenApi::INodeMap *nodeMap = nullptr;

bool showsGain(const QWidget &window)
{
    const auto fields = window.findChildren<QDoubleSpinBox *>();
    return std::any_of(fields.begin(), fields.end(),
                       [](const QDoubleSpinBox *field) { return field->isVisible() && field->value() == 7.5; });
}

} // namespace

namespace HostCore {

void RegisterDeviceListUpdateListener(IDeviceListUpdate *listener)
{
    deviceList = listener;
    ++listeners;
}
void RegisterFocusUpdateListener(IFocusUpdate *listener)
{
    focus = listener;
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

std::string GetCameraInfo(std::string, CAM_INFO item)
{
    return item == CAM_INFO_OPENED || item == CAM_INFO_READY ? "1" : item == CAM_INFO_ACQUISITION ? "0" : "";
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
    return nodeMap;
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
    FailFastPort port(std::make_unique<Memory>(), FailFastPort::Timing());
    nodeMap = GenApi::CNodeMapFactory(GenApi::ContentType_Xml, description, sizeof description - 1).CreateNodeMap();
    nodeMap->Connect(&port);
    bool shown = false;
    {
        ParamterWnd window;
        window.show();
        deviceList->OnUpdate(1, {}, {"camera"});
        focus->OnUpdate(HostCore::FOCUS_CAMERA, "camera");
        QTimer::singleShot(0, &window, [&] {
            shown = showsGain(window) && listeners == 6;
            QApplication::quit();
        });
        QApplication::exec();
    }
    GenApi::CastToIDestroy(nodeMap)->Destroy();
    return shown && listeners == 0 ? 0 : 1;
}
