// SPDX-License-Identifier: MIT
#pragma once

#include "tests/gentl/Camera.h"
#include "tests/gentl/Port.h"

namespace TestProducer {

class Stream;
struct World;

/// An interface that is there or not.
struct InterfaceModel
{
    const char *id;
    const char *name;
    const char *transport;
};

class System : public OwnPort
{
public:
    explicit System(World &world);

    Identity identity() const override;
    /// What was there at the last update.
    const std::vector<InterfaceModel> &list() const { return m_list; }
    bool updateList();
    const InterfaceModel &find(const char *id) const;

protected:
    void refresh(ModuleRegisters &registers) override;
    void written(const std::string &name) override;

private:
    World &m_world;
    std::vector<InterfaceModel> m_list;
};

std::optional<Fact> systemInfo(GenTL::TL_INFO_CMD command);
std::optional<Fact> interfaceInfo(const InterfaceModel &model, GenTL::INTERFACE_INFO_CMD command);

class Interface : public OwnPort
{
public:
    Interface(World &world, std::shared_ptr<System> system, const InterfaceModel &model);

    Identity identity() const override;
    const InterfaceModel &model() const { return m_model; }
    const std::vector<std::shared_ptr<Camera>> &list() const { return m_list; }
    bool updateList();
    std::shared_ptr<Camera> find(const char *id) const;
    std::optional<Fact> deviceInfo(const Camera &camera, GenTL::DEVICE_INFO_CMD command) const;

protected:
    void refresh(ModuleRegisters &registers) override;
    void written(const std::string &name) override;

private:
    std::int64_t accessStatus(const Camera &camera) const;

    World &m_world;
    const InterfaceModel m_model;
    std::vector<std::shared_ptr<Camera>> m_list;
};

class LocalDevice : public OwnPort
{
public:
    LocalDevice(World &world, std::shared_ptr<Interface> interface, std::shared_ptr<Camera> camera, bool readOnly);

    Identity identity() const override;
    Interface &interface() const { return *m_interface; }
    Camera &camera() const { return *m_camera; }
    bool isReadOnly() const { return m_isReadOnly; }
    /// Lets the camera run. To be stopped without the world's lock.
    void startCamera();
    /// Whether the camera is on the cable, and has been since the device was opened.
    bool isLinked() const { return m_camera->isPresent() && m_camera->plugs() == m_plugs; }

protected:
    void refresh(ModuleRegisters &registers) override;

private:
    World &m_world;
    const std::shared_ptr<Interface> m_interface;
    const std::shared_ptr<Camera> m_camera;
    const bool m_isReadOnly;
    const int m_plugs; ///< of the camera when it was opened
};

/// The port of the camera itself.
class RemotePort : public Port
{
public:
    RemotePort(World &world, std::shared_ptr<LocalDevice> device);

    Identity identity() const override;
    const Description &description() const override { return m_device->camera().description(); }
    void read(std::uint64_t address, void *buffer, std::size_t size) override;
    void write(std::uint64_t address, const void *buffer, std::size_t size) override;
    bool isWritable() const override { return !m_device->isReadOnly(); }
    bool isToBeClosed() const override { return false; }

private:
    World &m_world;
    const std::shared_ptr<LocalDevice> m_device;
};

} // namespace TestProducer
