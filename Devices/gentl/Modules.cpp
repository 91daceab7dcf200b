// SPDX-License-Identifier: MIT
#include "Devices/gentl/Modules.h"

#include <algorithm>

namespace {

constexpr std::chrono::milliseconds ShortUpdate(500); // before an id that was not known is tried once more

/// A list that is asked for index by index. What vanishes meanwhile, or is there twice, is left out.
template <class Count, class IdAt>
std::vector<QByteArray> listed(const Producer &gentl, const char *function, Count count, IdAt idAt)
{
    constexpr std::uint32_t Most = 10'000; // beyond it the number is not meant
    std::uint32_t number = 0;
    gentl.check(function, count(&number));
    std::vector<QByteArray> ids;
    for (std::uint32_t index = 0; index < std::min(number, Most); ++index) {
        const auto ask = [&](GenTL::INFO_DATATYPE *, void *buffer, std::size_t *size) {
            return idAt(index, static_cast<char *>(buffer), size);
        };
        const QByteArray id = askInfo(ask).text();
        if (!id.isEmpty() && std::find(ids.begin(), ids.end(), id) == ids.end())
            ids.push_back(id);
    }
    return ids;
}

/// Opens by an id. A producer that does not know it may have to look first, even after another one of its modules did.
template <class Open, class Update>
void openListed(const Producer &gentl, const char *function, Open open, Update update)
{
    GenTL::GC_ERROR code = open();
    if (code == GenTL::GC_ERR_INVALID_ID || code == GenTL::GC_ERR_INVALID_PARAMETER
        || code == GenTL::GC_ERR_NOT_AVAILABLE) {
        update();
        code = open();
    }
    gentl.check(function, code);
}

bool isTaken(GenTL::GC_ERROR code)
{
    return code == GenTL::GC_ERR_ACCESS_DENIED || code == GenTL::GC_ERR_RESOURCE_IN_USE || code == GenTL::GC_ERR_BUSY;
}

bool isUnknownKind(GenTL::GC_ERROR code)
{
    return code == GenTL::GC_ERR_NOT_IMPLEMENTED || code == GenTL::GC_ERR_INVALID_PARAMETER
        || code == GenTL::GC_ERR_INVALID_VALUE;
}

} // namespace

// StreamModule

StreamModule::StreamModule(std::shared_ptr<DeviceModule> owner, const QByteArray &id)
    : Module(owner->producer(), id), m_device(std::move(owner))
{
    gentl().check("DevOpenDataStream", gentl()->DevOpenDataStream(m_device->handle(), id.constData(), &m_handle));
}

StreamModule::~StreamModule()
{
    gentl().note("DSClose", gentl()->DSClose(m_handle));
}

std::optional<std::uint64_t> StreamModule::number(GenTL::STREAM_INFO_CMD command) const
{
    return askNumber([&](GenTL::INFO_DATATYPE *type, void *buffer, std::size_t *size) {
        return gentl()->DSGetInfo(m_handle, command, type, buffer, size);
    });
}

// DeviceModule

DeviceModule::DeviceModule(std::shared_ptr<InterfaceModule> owner, const QByteArray &id)
    : Module(owner->producer(), id), m_interface(std::move(owner))
{
    const auto open = [this] {
        const GenTL::GC_ERROR control = openWith(GenTL::DEVICE_ACCESS_CONTROL);
        return isUnknownKind(control) ? openWith(GenTL::DEVICE_ACCESS_EXCLUSIVE) : control;
    };
    const auto update = [this] { m_interface->updateDevices(ShortUpdate); };
    try {
        openListed(gentl(), "IFOpenDevice", open, update);
    } catch (const GentlError &error) {
        m_isReadOnly = isTaken(error.code()) && openWith(GenTL::DEVICE_ACCESS_READONLY) == GenTL::GC_ERR_SUCCESS;
        if (!m_isReadOnly)
            throw;
    }
}

GenTL::GC_ERROR DeviceModule::openWith(GenTL::DEVICE_ACCESS_FLAGS access)
{
    return gentl()->IFOpenDevice(m_interface->handle(), id().constData(), access, &m_handle);
}

DeviceModule::~DeviceModule()
{
    gentl().note("DevClose", gentl()->DevClose(m_handle));
}

GenTL::PORT_HANDLE DeviceModule::remotePort() const
{
    GenTL::PORT_HANDLE port = nullptr;
    gentl().check("DevGetPort", gentl()->DevGetPort(m_handle, &port));
    return port;
}

std::vector<QByteArray> DeviceModule::streamIds() const
{
    const auto count = [this](std::uint32_t *number) { return gentl()->DevGetNumDataStreams(m_handle, number); };
    const auto idAt = [this](std::uint32_t index, char *id, std::size_t *size) {
        return gentl()->DevGetDataStreamID(m_handle, index, id, size);
    };
    return listed(gentl(), "DevGetNumDataStreams", count, idAt);
}

std::shared_ptr<StreamModule> DeviceModule::openStream(const QByteArray &id)
{
    return m_streams.get(id, [&] { return std::make_unique<StreamModule>(shared_from_this(), id); });
}

void DeviceModule::retire()
{
    m_interface->forget(id());
}

// InterfaceModule

InterfaceModule::InterfaceModule(std::shared_ptr<SystemModule> owner, const QByteArray &id)
    : Module(owner->producer(), id), m_system(std::move(owner))
{
    const auto open = [&] { return gentl()->TLOpenInterface(m_system->handle(), id.constData(), &m_handle); };
    openListed(gentl(), "TLOpenInterface", open, [this] { m_system->updateInterfaces(ShortUpdate); });
}

InterfaceModule::~InterfaceModule()
{
    gentl().note("IFClose", gentl()->IFClose(m_handle));
}

void InterfaceModule::updateDevices(std::chrono::milliseconds time) const
{
    GenTL::bool8_t changed = 0;
    const auto limit = static_cast<std::uint64_t>(time.count());
    const GenTL::GC_ERROR code = gentl()->IFUpdateDeviceList(m_handle, &changed, limit);
    if (code != GenTL::GC_ERR_TIMEOUT) // then the list is what was found until then
        gentl().check("IFUpdateDeviceList", code);
}

std::vector<QByteArray> InterfaceModule::deviceIds() const
{
    const auto count = [this](std::uint32_t *number) { return gentl()->IFGetNumDevices(m_handle, number); };
    const auto idAt = [this](std::uint32_t index, char *id, std::size_t *size) {
        return gentl()->IFGetDeviceID(m_handle, index, id, size);
    };
    return listed(gentl(), "IFGetNumDevices", count, idAt);
}

GentlDeviceInfo InterfaceModule::deviceInfo(const QByteArray &id) const
{
    const auto question = [&](GenTL::DEVICE_INFO_CMD command) {
        return [this, &id, command](GenTL::INFO_DATATYPE *type, void *buffer, std::size_t *size) {
            return gentl()->IFGetDeviceInfo(m_handle, id.constData(), command, type, buffer, size);
        };
    };
    const auto text = [&](GenTL::DEVICE_INFO_CMD command) {
        return textForPeople(askInfo(question(command)).text()).trimmed();
    };
    const auto access = askNumber(question(GenTL::DEVICE_INFO_ACCESS_STATUS));
    return {text(GenTL::DEVICE_INFO_VENDOR),
            text(GenTL::DEVICE_INFO_MODEL),
            text(GenTL::DEVICE_INFO_SERIAL_NUMBER),
            text(GenTL::DEVICE_INFO_USER_DEFINED_NAME),
            text(GenTL::DEVICE_INFO_DISPLAYNAME),
            text(GenTL::DEVICE_INFO_TLTYPE),
            access.value_or(GenTL::DEVICE_ACCESS_STATUS_UNKNOWN)};
}

std::shared_ptr<DeviceModule> InterfaceModule::openDevice(const QByteArray &id)
{
    return m_devices.get(id, [&] { return std::make_unique<DeviceModule>(shared_from_this(), id); });
}

// SystemModule

SystemModule::SystemModule(std::shared_ptr<Producer> producer) : Module(std::move(producer), QByteArray())
{
    gentl().check("TLOpen", gentl()->TLOpen(&m_handle));
}

SystemModule::~SystemModule()
{
    gentl().note("TLClose", gentl()->TLClose(m_handle));
}

std::shared_ptr<SystemModule> SystemModule::open(const std::shared_ptr<Producer> &producer)
{
    // Never destroyed: threads that are left alone may come back at the very end.
    static auto *const Opened = new SharedObjects<QString, SystemModule>;
    return Opened->get(producer->file(), [&] { return std::make_unique<SystemModule>(producer); });
}

void SystemModule::updateInterfaces(std::chrono::milliseconds time) const
{
    GenTL::bool8_t changed = 0;
    const auto limit = static_cast<std::uint64_t>(time.count());
    const GenTL::GC_ERROR code = gentl()->TLUpdateInterfaceList(m_handle, &changed, limit);
    if (code != GenTL::GC_ERR_TIMEOUT)
        gentl().check("TLUpdateInterfaceList", code);
}

std::vector<QByteArray> SystemModule::interfaceIds() const
{
    const auto count = [this](std::uint32_t *number) { return gentl()->TLGetNumInterfaces(m_handle, number); };
    const auto idAt = [this](std::uint32_t index, char *id, std::size_t *size) {
        return gentl()->TLGetInterfaceID(m_handle, index, id, size);
    };
    return listed(gentl(), "TLGetNumInterfaces", count, idAt);
}

GentlInterfaceInfo SystemModule::interfaceInfo(const QByteArray &id) const
{
    const auto text = [&](GenTL::INTERFACE_INFO_CMD command) {
        const auto ask = [&](GenTL::INFO_DATATYPE *type, void *buffer, std::size_t *size) {
            return gentl()->TLGetInterfaceInfo(m_handle, id.constData(), command, type, buffer, size);
        };
        return textForPeople(askInfo(ask).text()).trimmed();
    };
    return {text(GenTL::INTERFACE_INFO_DISPLAYNAME), text(GenTL::INTERFACE_INFO_TLTYPE)};
}

std::shared_ptr<InterfaceModule> SystemModule::openInterface(const QByteArray &id)
{
    return m_interfaces.get(id, [&] { return std::make_unique<InterfaceModule>(shared_from_this(), id); });
}
