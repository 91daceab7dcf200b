// SPDX-License-Identifier: MIT
// The functions of systems, interfaces and devices.
#include "tests/gentl/Call.h"

using namespace TestProducer;

namespace {

/// Whether a device may be opened that way, beside another program.
void requireAccess(const Camera &camera, GenTL::DEVICE_ACCESS_FLAGS flags)
{
    require(flags >= GenTL::DEVICE_ACCESS_READONLY && flags <= GenTL::DEVICE_ACCESS_EXCLUSIVE,
            GenTL::GC_ERR_INVALID_PARAMETER, "there is no such access");
    require(camera.isPresent(), GenTL::GC_ERR_IO, "the camera does not answer");
    const bool allowed = camera.held() == Camera::Held::No
        || (camera.held() == Camera::Held::Controlled && flags == GenTL::DEVICE_ACCESS_READONLY);
    require(allowed, GenTL::GC_ERR_ACCESS_DENIED, "another program uses the camera");
}

std::shared_ptr<LocalDevice> openDevice(World &world, const std::shared_ptr<Interface> &parent,
                                        const std::shared_ptr<Camera> &camera, GenTL::DEVICE_ACCESS_FLAGS flags)
{
    for (const auto &other : world.handles.children<LocalDevice>(parent.get()))
        require(&other->camera() != camera.get(), GenTL::GC_ERR_RESOURCE_IN_USE, "the device is open already");
    require(world.stopping.count(camera.get()) == 0, GenTL::GC_ERR_RESOURCE_IN_USE, "the device is being closed");
    requireAccess(*camera, flags);
    auto device = std::make_shared<LocalDevice>(world, parent, camera, flags == GenTL::DEVICE_ACCESS_READONLY);
    world.handles.add(std::make_shared<RemotePort>(world, device));
    return device;
}

/// The place of an interface among all, by which the script tells searches apart.
std::uint64_t placeOf(GenTL::IF_HANDLE handle)
{
    const Lock lock(world().mutex);
    for (const auto &candidate : world().handles.all<Interface>()) {
        if (world().handles.of(candidate.get()) == handle)
            return candidate->model().id == std::string("GEV-IF") ? 0 : 1;
    }
    return 0;
}

} // namespace

GenTL::GC_ERROR GenTL::TLOpen(TL_HANDLE *phTL)
{
    return call("TLOpen", [&](World &world) {
        require(world.handles.children<System>(nullptr).empty(), GC_ERR_RESOURCE_IN_USE, "the system is open already");
        answerHandle(phTL, world.handles.add(std::make_shared<System>(world)));
    });
}

GenTL::GC_ERROR GenTL::TLClose(TL_HANDLE hTL)
{
    return call("TLClose", [&](World &world, Lock &lock) { world.close(world.handles.get<System>(hTL), lock); });
}

GenTL::GC_ERROR GenTL::TLGetInfo(TL_HANDLE hTL, TL_INFO_CMD iInfoCmd, INFO_DATATYPE *piType, void *pBuffer,
                                 std::size_t *piSize)
{
    return call("TLGetInfo", std::uint64_t(iInfoCmd), [&](World &world) {
        world.handles.get<System>(hTL);
        answer({piType, pBuffer, piSize}, known(systemInfo(iInfoCmd)));
    });
}

GenTL::GC_ERROR GenTL::TLGetNumInterfaces(TL_HANDLE hTL, std::uint32_t *piNumIfaces)
{
    return call("TLGetNumInterfaces",
                [&](World &world) { answerCount(piNumIfaces, world.handles.get<System>(hTL)->list().size()); });
}

GenTL::GC_ERROR GenTL::TLGetInterfaceID(TL_HANDLE hTL, std::uint32_t iIndex, char *sID, std::size_t *piSize)
{
    return call("TLGetInterfaceID",
                [&](World &world) { answerText(sID, piSize, at(world.handles.get<System>(hTL)->list(), iIndex).id); });
}

GenTL::GC_ERROR GenTL::TLGetInterfaceInfo(TL_HANDLE hTL, const char *sIfaceID, INTERFACE_INFO_CMD iInfoCmd,
                                          INFO_DATATYPE *piType, void *pBuffer, std::size_t *piSize)
{
    return call("TLGetInterfaceInfo", std::uint64_t(iInfoCmd), [&](World &world) {
        const InterfaceModel &model = world.handles.get<System>(hTL)->find(sIfaceID);
        answer({piType, pBuffer, piSize}, known(interfaceInfo(model, iInfoCmd)));
    });
}

GenTL::GC_ERROR GenTL::TLOpenInterface(TL_HANDLE hTL, const char *sIfaceID, IF_HANDLE *phIface)
{
    return call("TLOpenInterface", [&](World &world) {
        const auto system = world.handles.get<System>(hTL);
        const InterfaceModel &model = system->find(sIfaceID);
        for (const auto &other : world.handles.children<Interface>(system.get()))
            require(other->model().id != model.id, GC_ERR_RESOURCE_IN_USE, "the interface is open already");
        answerHandle(phIface, world.handles.add(std::make_shared<Interface>(world, system, model)));
    });
}

GenTL::GC_ERROR GenTL::TLUpdateInterfaceList(TL_HANDLE hTL, bool8_t *pbChanged, std::uint64_t)
{
    return call("TLUpdateInterfaceList", [&](World &world) {
        const bool changed = world.handles.get<System>(hTL)->updateList();
        if (pbChanged)
            *pbChanged = changed;
    });
}

GenTL::GC_ERROR GenTL::IFClose(IF_HANDLE hIface)
{
    return call("IFClose", [&](World &world, Lock &lock) { world.close(world.handles.get<Interface>(hIface), lock); });
}

GenTL::GC_ERROR GenTL::IFGetInfo(IF_HANDLE hIface, INTERFACE_INFO_CMD iInfoCmd, INFO_DATATYPE *piType, void *pBuffer,
                                 std::size_t *piSize)
{
    return call("IFGetInfo", std::uint64_t(iInfoCmd), [&](World &world) {
        const auto module = world.handles.get<Interface>(hIface);
        answer({piType, pBuffer, piSize}, known(interfaceInfo(module->model(), iInfoCmd)));
    });
}

GenTL::GC_ERROR GenTL::IFGetNumDevices(IF_HANDLE hIface, std::uint32_t *piNumDevices)
{
    return call("IFGetNumDevices",
                [&](World &world) { answerCount(piNumDevices, world.handles.get<Interface>(hIface)->list().size()); });
}

GenTL::GC_ERROR GenTL::IFGetDeviceID(IF_HANDLE hIface, std::uint32_t iIndex, char *sIDeviceID, std::size_t *piSize)
{
    return call("IFGetDeviceID", [&](World &world) {
        const auto module = world.handles.get<Interface>(hIface);
        answerText(sIDeviceID, piSize, world.idOf(*at(module->list(), iIndex)));
    });
}

GenTL::GC_ERROR GenTL::IFUpdateDeviceList(IF_HANDLE hIface, bool8_t *pbChanged, std::uint64_t)
{
    return call("IFUpdateDeviceList", placeOf(hIface), [&](World &world) {
        const bool changed = world.handles.get<Interface>(hIface)->updateList();
        if (pbChanged)
            *pbChanged = changed;
    });
}

GenTL::GC_ERROR GenTL::IFGetDeviceInfo(IF_HANDLE hIface, const char *sDeviceID, DEVICE_INFO_CMD iInfoCmd,
                                       INFO_DATATYPE *piType, void *pBuffer, std::size_t *piSize)
{
    return call("IFGetDeviceInfo", std::uint64_t(iInfoCmd), [&](World &world) {
        const auto module = world.handles.get<Interface>(hIface);
        answer({piType, pBuffer, piSize}, known(module->deviceInfo(*module->find(sDeviceID), iInfoCmd)));
    });
}

GenTL::GC_ERROR GenTL::IFGetParentTL(IF_HANDLE hIface, TL_HANDLE *phSystem)
{
    return call("IFGetParentTL", [&](World &world) {
        answerHandle(phSystem, world.handles.of(world.handles.get<Interface>(hIface)->parent().get()));
    });
}

GenTL::GC_ERROR GenTL::IFOpenDevice(IF_HANDLE hIface, const char *sDeviceID, DEVICE_ACCESS_FLAGS iOpenFlag,
                                    DEV_HANDLE *phDevice)
{
    return call("IFOpenDevice", [&](World &world) {
        const auto parent = world.handles.get<Interface>(hIface);
        require(phDevice, GC_ERR_INVALID_PARAMETER, "there is no place for the handle");
        const auto device = openDevice(world, parent, parent->find(sDeviceID), iOpenFlag);
        *phDevice = world.handles.add(device);
        device->startCamera();
    });
}

GenTL::GC_ERROR GenTL::DevGetPort(DEV_HANDLE hDevice, PORT_HANDLE *phRemoteDevice)
{
    return call("DevGetPort", [&](World &world) {
        const auto device = world.handles.get<LocalDevice>(hDevice);
        answerHandle(phRemoteDevice, world.handles.of(world.handles.children<RemotePort>(device.get()).at(0).get()));
    });
}

GenTL::GC_ERROR GenTL::DevGetNumDataStreams(DEV_HANDLE hDevice, std::uint32_t *piNumDataStreams)
{
    return call("DevGetNumDataStreams", [&](World &world) {
        world.handles.get<LocalDevice>(hDevice);
        answerCount(piNumDataStreams, 1);
    });
}

GenTL::GC_ERROR GenTL::DevGetDataStreamID(DEV_HANDLE hDevice, std::uint32_t iIndex, char *sDataStreamID,
                                          std::size_t *piSize)
{
    return call("DevGetDataStreamID", [&](World &world) {
        world.handles.get<LocalDevice>(hDevice);
        require(iIndex == 0, GC_ERR_INVALID_INDEX, "there is no such stream");
        answerText(sDataStreamID, piSize, Stream::Id);
    });
}

GenTL::GC_ERROR GenTL::DevOpenDataStream(DEV_HANDLE hDevice, const char *sDataStreamID, DS_HANDLE *phDataStream)
{
    return call("DevOpenDataStream", [&](World &world) {
        const auto device = world.handles.get<LocalDevice>(hDevice);
        require(sDataStreamID, GC_ERR_INVALID_PARAMETER, "there is no id");
        require(sDataStreamID == std::string(Stream::Id), GC_ERR_INVALID_ID, "there is no such stream");
        require(!device->isReadOnly(), GC_ERR_ACCESS_DENIED, "the device is open for reading only");
        require(world.handles.children<Stream>(device.get()).empty(), GC_ERR_RESOURCE_IN_USE,
                "the stream is open already");
        answerHandle(phDataStream, world.handles.add(std::make_shared<Stream>(world, device)));
    });
}

GenTL::GC_ERROR GenTL::DevGetInfo(DEV_HANDLE hDevice, DEVICE_INFO_CMD iInfoCmd, INFO_DATATYPE *piType, void *pBuffer,
                                  std::size_t *piSize)
{
    return call("DevGetInfo", std::uint64_t(iInfoCmd), [&](World &world) {
        const auto device = world.handles.get<LocalDevice>(hDevice);
        answer({piType, pBuffer, piSize}, known(device->interface().deviceInfo(device->camera(), iInfoCmd)));
    });
}

GenTL::GC_ERROR GenTL::DevGetParentIF(DEV_HANDLE hDevice, IF_HANDLE *phIface)
{
    return call("DevGetParentIF", [&](World &world) {
        answerHandle(phIface, world.handles.of(world.handles.get<LocalDevice>(hDevice)->parent().get()));
    });
}

GenTL::GC_ERROR GenTL::DevClose(DEV_HANDLE hDevice)
{
    return call("DevClose",
                [&](World &world, Lock &lock) { world.close(world.handles.get<LocalDevice>(hDevice), lock); });
}
