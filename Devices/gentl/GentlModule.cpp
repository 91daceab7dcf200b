// SPDX-License-Identifier: MIT
#include "Devices/gentl/GentlModule.h"

#include <utility>

#include "Devices/gentl/GentlOpening.h"
#include "Devices/gentl/ModuleConnection.h"

namespace {

constexpr std::chrono::seconds Deadline(5); // of one access: a command may search for devices

std::shared_ptr<Module> openModule(const GentlPlace &place)
{
    const std::shared_ptr<SystemModule> system = SystemModule::open(Producer::load(place.producer));
    if (place.interfaceId.isEmpty())
        return system;
    const std::shared_ptr<InterfaceModule> interface = system->openInterface(place.interfaceId);
    if (place.deviceId.isEmpty())
        return interface;
    const std::shared_ptr<DeviceModule> device = interface->openedDevice(place.deviceId);
    if (!device)
        throw std::runtime_error("its camera is closed");
    if (place.streamId.isEmpty())
        return device;
    return device->openStream(place.streamId);
}

} // namespace

struct GentlModule::Reached
{
    std::unique_ptr<ModuleConnection> connection; ///< null when the module could not be reached
    QString error;
};

GentlModule::GentlModule(GentlIdentity identity, QObject *parent) : Device(parent), m_identity(std::move(identity)) { }

GentlModule::~GentlModule()
{
    close();
}

QString GentlModule::id() const
{
    const QString key = m_identity.place.key();
    const bool isOfCamera = !m_identity.place.deviceId.isEmpty();
    return isOfCamera ? key + QStringLiteral("#module") : key;
}

void GentlModule::reach(const std::atomic_bool &cancelled, const ReadProgress &progress)
{
    m_reached = std::make_unique<Reached>(reached());
    if (m_reached->connection)
        m_reached->connection->readAhead(cancelled, progress);
}

GentlModule::Reached GentlModule::reached()
{
    m_line = std::make_shared<DeviceLine>(this, &m_handOver, m_identity.displayName);
    Reached module;
    const auto open = [place = m_identity.place, line = m_line] {
        const std::shared_ptr<Module> opened = openModule(place);
        const ModuleConnection::Plan plan{{opened, opened->handle()}, false, Deadline};
        return std::make_unique<ModuleConnection>(plan, line);
    };
    module.connection = openBounded(open, m_identity, &module.error);
    if (!module.connection)
        m_line->hangUp();
    return module;
}

bool GentlModule::open(QString *error)
{
    if (m_connection)
        return true;
    const std::unique_ptr<Reached> before = std::move(m_reached);
    Reached module = before ? std::move(*before) : reached();
    m_connection = std::move(module.connection);
    *error = module.error;
    if (m_connection)
        m_connection->goLive();
    return m_connection != nullptr;
}

void GentlModule::close()
{
    if (m_line)
        m_line->hangUp();
    m_reached.reset();
    m_connection.reset();
    m_line.reset();
}

GenApi::INodeMap *GentlModule::nodeMap() const
{
    return m_connection ? m_connection->nodes().get() : nullptr;
}

QByteArray GentlModule::description() const
{
    return m_connection ? m_connection->description() : QByteArray();
}

PortLoad GentlModule::portLoad() const
{
    return m_connection ? m_connection->nodes().load() : PortLoad();
}

bool GentlModule::startAcquisition(QString *error)
{
    *error = QStringLiteral("a card takes no frames");
    return false;
}

void GentlModule::cameraCloses()
{
    if (m_connection)
        Q_EMIT lost(QStringLiteral("its camera is closed"));
}
