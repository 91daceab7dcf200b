// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>
#include <vector>

#include "Devices/gentl/Producer.h"
#include "Devices/gentl/SharedObjects.h"

/// An open module of a producer. The standard lets each be opened once in a process, so that it is shared here: who
/// asks for an open one gets that. A module holds the one that it was opened from, and closes itself when nobody holds
/// it.
///
/// Ids are the producer's bytes, whatever they mean. All functions throw a GentlError when the producer refuses; calls
/// may take as long as the producer likes.
class Module
{
public:
    virtual ~Module() = default;
    Module(const Module &) = delete;
    Module &operator=(const Module &) = delete;

    const std::shared_ptr<Producer> &producer() const { return m_producer; }
    const QByteArray &id() const { return m_id; }
    /// Of its registers; also what its events are registered with.
    GenTL::PORT_HANDLE handle() const { return m_handle; }

protected:
    Module(std::shared_ptr<Producer> producer, QByteArray id) : m_producer(std::move(producer)), m_id(std::move(id)) { }

    const Producer &gentl() const { return *m_producer; }
    void *m_handle = nullptr;

private:
    const std::shared_ptr<Producer> m_producer;
    const QByteArray m_id;
};

/// A stream of a device.
class DeviceModule;
class StreamModule : public Module
{
public:
    StreamModule(std::shared_ptr<DeviceModule> owner, const QByteArray &id);
    ~StreamModule() override;

    /// None where the producer does not know.
    std::optional<std::uint64_t> number(GenTL::STREAM_INFO_CMD command) const;

private:
    const std::shared_ptr<DeviceModule> m_device;
};

/// What a search tells about a device; empty for what the producer does not know.
struct GentlDeviceInfo
{
    QString vendor;
    QString model;
    QString serial;
    QString userName;
    QString displayName;
    QString transport; ///< the standard's name
    std::uint64_t access = GenTL::DEVICE_ACCESS_STATUS_UNKNOWN;
};

class InterfaceModule;
/// An open device: the producer's local side of a camera.
class DeviceModule : public Module, public std::enable_shared_from_this<DeviceModule>
{
public:
    DeviceModule(std::shared_ptr<InterfaceModule> owner, const QByteArray &id);
    ~DeviceModule() override;

    /// Only readable: somebody else has control.
    bool isReadOnly() const { return m_isReadOnly; }
    /// Of the registers of the camera itself.
    GenTL::PORT_HANDLE remotePort() const;
    std::vector<QByteArray> streamIds() const;
    std::shared_ptr<StreamModule> openStream(const QByteArray &id);
    /// The device is gone: who opens it again is not to get this one.
    void retire();

private:
    GenTL::GC_ERROR openWith(GenTL::DEVICE_ACCESS_FLAGS access);

    const std::shared_ptr<InterfaceModule> m_interface;
    bool m_isReadOnly = false;
    SharedObjects<QByteArray, StreamModule> m_streams;
};

class SystemModule;
/// Something that devices are connected to: a port of a card, a network adapter.
class InterfaceModule : public Module, public std::enable_shared_from_this<InterfaceModule>
{
public:
    InterfaceModule(std::shared_ptr<SystemModule> owner, const QByteArray &id);
    ~InterfaceModule() override;

    /// Lets the producer look for devices, for that long at most if it keeps to that.
    void updateDevices(std::chrono::milliseconds time) const;
    /// As found by the last update. Ids that vanish meanwhile are left out.
    std::vector<QByteArray> deviceIds() const;
    GentlDeviceInfo deviceInfo(const QByteArray &id) const;
    std::shared_ptr<DeviceModule> openDevice(const QByteArray &id);
    /// The device if it is open in this program, else null.
    std::shared_ptr<DeviceModule> openedDevice(const QByteArray &id) const { return m_devices.held(id); }
    /// The device is gone: who opens it again is not to get the one that is open.
    void forget(const QByteArray &id) { m_devices.forget(id); }

private:
    const std::shared_ptr<SystemModule> m_system;
    SharedObjects<QByteArray, DeviceModule> m_devices;
};

/// What a search tells about an interface.
struct GentlInterfaceInfo
{
    QString name;
    QString transport; ///< the standard's name
};

/// The root of a producer's modules.
class SystemModule : public Module, public std::enable_shared_from_this<SystemModule>
{
public:
    explicit SystemModule(std::shared_ptr<Producer> producer);
    ~SystemModule() override;

    static std::shared_ptr<SystemModule> open(const std::shared_ptr<Producer> &producer);
    void updateInterfaces(std::chrono::milliseconds time) const;
    std::vector<QByteArray> interfaceIds() const;
    GentlInterfaceInfo interfaceInfo(const QByteArray &id) const;
    std::shared_ptr<InterfaceModule> openInterface(const QByteArray &id);

private:
    SharedObjects<QByteArray, InterfaceModule> m_interfaces;
};
