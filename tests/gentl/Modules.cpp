// SPDX-License-Identifier: MIT
#include "tests/gentl/Modules.h"

#include <algorithm>

#include "tests/gentl/World.h"

using namespace GenTL;

namespace TestProducer {

namespace {

constexpr const char *Vendor = "Demo";
constexpr const char *Model = "Test producer";

bool isListed(const std::vector<InterfaceModel> &list, const std::string &id)
{
    return std::any_of(list.begin(), list.end(), [&id](const InterfaceModel &model) { return id == model.id; });
}

} // namespace

System::System(World &theWorld) : OwnPort(nullptr, "the system", "system"), m_world(theWorld) { }

Port::Identity System::identity() const
{
    return {"paramter-test", Vendor, Model, "Mixed", "TLSystem", "TLPort"};
}

bool System::updateList()
{
    std::vector<InterfaceModel> present = m_world.interfaces();
    const bool same = present.size() == m_list.size()
        && std::all_of(present.begin(), present.end(),
                       [this](const InterfaceModel &model) { return isListed(m_list, model.id); });
    m_list = std::move(present);
    return !same;
}

const InterfaceModel &System::find(const char *id) const
{
    require(id, GC_ERR_INVALID_PARAMETER, "there is no id");
    require(isListed(m_list, id), GC_ERR_INVALID_ID, "there is no such interface");
    return *std::find_if(m_list.begin(), m_list.end(),
                         [id](const InterfaceModel &model) { return model.id == std::string(id); });
}

void System::refresh(ModuleRegisters &registers)
{
    registers.setText("TLID", identity().id);
    registers.setText("TLVendorName", Vendor);
    registers.setText("TLModelName", Model);
    registers.setText("TLVersion", "1.0");
    registers.setText("TLPath", producerPath());
    registers.memory().setInteger("GenTLVersionMajor", 1);
    registers.memory().setInteger("GenTLVersionMinor", 6);
    registers.memory().setInteger("InterfaceSelectorMax", std::max(0, int(m_list.size()) - 1));
    for (int i = 0; i < int(m_list.size()); ++i) {
        registers.setText("InterfaceID", m_list[size_t(i)].id, i);
        registers.setText("InterfaceDisplayName", m_list[size_t(i)].name, i);
    }
}

void System::written(const std::string &name)
{
    if (name == "InterfaceUpdateList")
        updateList();
}

std::optional<Fact> systemInfo(TL_INFO_CMD command)
{
    switch (command) {
    case TL_INFO_ID:
        return text("paramter-test");
    case TL_INFO_VENDOR:
        return text(Vendor);
    case TL_INFO_MODEL:
    case TL_INFO_DISPLAYNAME:
        return text(Model);
    case TL_INFO_VERSION:
        return text("1.0");
    case TL_INFO_TLTYPE:
        return text("Mixed");
    case TL_INFO_NAME:
        return text("paramter-test.cti");
    case TL_INFO_PATHNAME:
        return text(producerPath());
    case TL_INFO_CHAR_ENCODING:
        return word(TL_CHAR_ENCODING_UTF8);
    case TL_INFO_GENTL_VER_MAJOR:
        return number(INFO_DATATYPE_UINT32, 1);
    case TL_INFO_GENTL_VER_MINOR:
        return number(INFO_DATATYPE_UINT32, 6);
    default:
        return {};
    }
}

std::optional<Fact> interfaceInfo(const InterfaceModel &model, INTERFACE_INFO_CMD command)
{
    switch (command) {
    case INTERFACE_INFO_ID:
        return text(model.id);
    case INTERFACE_INFO_DISPLAYNAME:
        return text(model.name);
    case INTERFACE_INFO_TLTYPE:
        return text(model.transport);
    default:
        return {};
    }
}

Interface::Interface(World &theWorld, std::shared_ptr<System> system, const InterfaceModel &interfaceModel)
    : OwnPort(std::move(system), std::string("interface ") + interfaceModel.id, "interface"), m_world(theWorld),
      m_model(interfaceModel)
{ }

Port::Identity Interface::identity() const
{
    return {m_model.id, Vendor, m_model.name, m_model.transport, "TLInterface", "InterfacePort"};
}

bool Interface::updateList()
{
    std::vector<std::shared_ptr<Camera>> present;
    for (const auto &camera : m_world.cameras) {
        if (camera->isPresent() && camera->model().interface == std::string(m_model.id))
            present.push_back(camera);
    }
    const bool changed = present != m_list;
    m_list = std::move(present);
    return changed;
}

std::shared_ptr<Camera> Interface::find(const char *id) const
{
    require(id, GC_ERR_INVALID_PARAMETER, "there is no id");
    const auto found =
        std::find_if(m_list.begin(), m_list.end(), [&](const auto &camera) { return m_world.idOf(*camera) == id; });
    require(found != m_list.end(), GC_ERR_INVALID_ID, "there is no such device");
    return *found;
}

std::int64_t Interface::accessStatus(const Camera &camera) const
{
    for (const auto &device : m_world.handles.children<LocalDevice>(this)) {
        if (&device->camera() == &camera)
            return device->isReadOnly() ? DEVICE_ACCESS_STATUS_OPEN_READONLY : DEVICE_ACCESS_STATUS_OPEN_READWRITE;
    }
    switch (camera.held()) {
    case Camera::Held::Controlled:
        return DEVICE_ACCESS_STATUS_READONLY;
    case Camera::Held::Exclusive:
        return DEVICE_ACCESS_STATUS_NOACCESS;
    default:
        return DEVICE_ACCESS_STATUS_READWRITE;
    }
}

std::optional<Fact> Interface::deviceInfo(const Camera &camera, DEVICE_INFO_CMD command) const
{
    switch (command) {
    case DEVICE_INFO_ID:
        return text(m_world.idOf(camera));
    case DEVICE_INFO_VENDOR:
        return text(camera.words("DeviceVendorName"));
    case DEVICE_INFO_MODEL:
        return text(camera.words("DeviceModelName"));
    case DEVICE_INFO_TLTYPE:
        return text(camera.model().transport);
    case DEVICE_INFO_DISPLAYNAME:
        return text(camera.words("DeviceModelName") + " (" + camera.words("DeviceSerialNumber") + ")");
    case DEVICE_INFO_ACCESS_STATUS:
        return word(accessStatus(camera));
    case DEVICE_INFO_USER_DEFINED_NAME:
        return text(camera.words("DeviceUserID"));
    case DEVICE_INFO_SERIAL_NUMBER:
        return text(camera.words("DeviceSerialNumber"));
    case DEVICE_INFO_VERSION:
        return text(camera.words("DeviceVersion"));
    case DEVICE_INFO_TIMESTAMP_FREQUENCY:
        return longWord(1000000000);
    default:
        return {};
    }
}

void Interface::refresh(ModuleRegisters &registers)
{
    registers.setText("InterfaceID", m_model.id);
    registers.setText("InterfaceDisplayName", m_model.name);
    registers.setText("InterfaceType", m_model.transport);
    registers.memory().setInteger("DeviceCount", qint64(m_list.size()));
    registers.memory().setInteger("DeviceSelectorMax", std::max(0, int(m_list.size()) - 1));
    for (int i = 0; i < int(m_list.size()); ++i) {
        const Camera &camera = *m_list[size_t(i)];
        registers.setText("DeviceID", m_world.idOf(camera), i);
        registers.setText("DeviceVendorName", camera.words("DeviceVendorName"), i);
        registers.setText("DeviceModelName", camera.words("DeviceModelName"), i);
        registers.setText("DeviceSerialNumber", camera.words("DeviceSerialNumber"), i);
        registers.memory().setInteger("DeviceAccessStatus", accessStatus(camera), i);
    }
}

void Interface::written(const std::string &name)
{
    if (name == "DeviceUpdateList")
        updateList();
}

LocalDevice::LocalDevice(World &theWorld, std::shared_ptr<Interface> theInterface, std::shared_ptr<Camera> theCamera,
                         bool readOnly)
    : OwnPort(theInterface, std::string("device ") + theCamera->model().id, "local_device"), m_world(theWorld),
      m_interface(std::move(theInterface)), m_camera(std::move(theCamera)), m_isReadOnly(readOnly),
      m_plugs(m_camera->plugs())
{ }

Port::Identity LocalDevice::identity() const
{
    return {m_world.idOf(*m_camera),     Vendor,     m_camera->words("DeviceModelName"),
            m_camera->model().transport, "TLDevice", "DevicePort"};
}

void LocalDevice::startCamera()
{
    m_camera->start([this](const Frame &frame) {
        Lock lock(m_world.mutex);
        const auto streams = m_world.handles.children<Stream>(this);
        lock.unlock();
        for (const auto &stream : streams)
            stream->deliver(frame);
    });
}

void LocalDevice::refresh(ModuleRegisters &registers)
{
    registers.setText("DeviceID", m_world.idOf(*m_camera));
    registers.setText("DeviceVendorName", m_camera->words("DeviceVendorName"));
    registers.setText("DeviceModelName", m_camera->words("DeviceModelName"));
    registers.setText("DeviceType", m_camera->model().transport);
    registers.setText("StreamID", Stream::Id);
    registers.memory().setInteger(
        "DeviceAccessStatus", m_isReadOnly ? DEVICE_ACCESS_STATUS_OPEN_READONLY : DEVICE_ACCESS_STATUS_OPEN_READWRITE);
}

RemotePort::RemotePort(World &theWorld, std::shared_ptr<LocalDevice> device)
    : Port(device, "a remote port"), m_world(theWorld), m_device(std::move(device))
{ }

Port::Identity RemotePort::identity() const
{
    const Camera &camera = m_device->camera();
    return {m_world.idOf(camera),
            camera.words("DeviceVendorName"),
            camera.words("DeviceModelName"),
            camera.model().transport,
            "Device",
            "Device"};
}

void RemotePort::read(std::uint64_t address, void *buffer, std::size_t size)
{
    require(m_device->isLinked(), GC_ERR_IO, "the link to the camera is gone");
    require(description().read(address, buffer, size)
                || m_device->camera().inside().read(buffer, qint64(address), qint64(size)),
            GC_ERR_INVALID_ADDRESS, "the camera has no register at this address");
}

void RemotePort::write(std::uint64_t address, const void *buffer, std::size_t size)
{
    require(m_device->isLinked(), GC_ERR_IO, "the link to the camera is gone");
    require(!m_device->isReadOnly(), GC_ERR_ACCESS_DENIED, "the device is open for reading only");
    Firmware &camera = m_device->camera().inside();
    const auto runs = [](const RegisterMemory &memory) { return memory.integer("Acquiring") == 1; };
    const bool ran = camera.inspect(runs);
    QString objection;
    require(camera.write(buffer, qint64(address), qint64(size), &objection), GC_ERR_INVALID_ADDRESS,
            "the camera has no register at this address");
    require(objection.isEmpty(), GC_ERR_INVALID_VALUE, objection.toUtf8().constData());
    const auto isUnlocked = [](const RegisterMemory &memory) { return memory.integer("TLParamsLocked") == 0; };
    if (!ran && camera.inspect(runs) && camera.inspect(isUnlocked))
        m_world.complain("the acquisition was started with TLParamsLocked at 0");
}

} // namespace TestProducer
