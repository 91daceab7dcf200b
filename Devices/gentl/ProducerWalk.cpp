// SPDX-License-Identifier: MIT
#include "Devices/gentl/ProducerWalk.h"

#include <algorithm>
#include <utility>

#include <QFileInfo>
#include <QRegularExpression>

#include "Devices/gentl/GentlCamera.h"
#include "Devices/gentl/GentlModule.h"
#include "Devices/gentl/Modules.h"
#include "Features/NodeGuard.h"

namespace {

/// Cameras in a network have that long to answer.
constexpr std::chrono::milliseconds SearchTime(1000);

QString joined(const QStringList &words)
{
    QStringList known = words;
    known.removeAll(QString());
    return known.join(QLatin1Char(' '));
}

QString accessText(std::uint64_t status)
{
    switch (status) {
    case GenTL::DEVICE_ACCESS_STATUS_READWRITE:
        return QStringLiteral("free");
    case GenTL::DEVICE_ACCESS_STATUS_READONLY:
        return QStringLiteral("readable only");
    case GenTL::DEVICE_ACCESS_STATUS_NOACCESS:
        return QStringLiteral("not accessible");
    case GenTL::DEVICE_ACCESS_STATUS_BUSY:
        return QStringLiteral("in use by another program");
    case GenTL::DEVICE_ACCESS_STATUS_OPEN_READWRITE:
    case GenTL::DEVICE_ACCESS_STATUS_OPEN_READONLY:
        return QStringLiteral("open in this program");
    default:
        return {};
    }
}

/// The hardware address of a camera in a network, which many producers make their ids of; empty when there is none in
/// it.
QString hardwareAddressIn(const QByteArray &id)
{
    static const QRegularExpression Form(
        QStringLiteral("(?<![0-9A-Fa-f])(?:[0-9A-Fa-f]{2}[:-]?){5}[0-9A-Fa-f]{2}(?![0-9A-Fa-f])"));
    return normalHardwareAddress(Form.match(QString::fromLatin1(id)).captured());
}

/// How people call a camera: the producer's words for it, or else what is known of it.
QString nameOf(const GentlDeviceInfo &info, const QByteArray &id)
{
    QString name = joined({info.vendor, info.model});
    if (name.isEmpty())
        name = info.displayName.isEmpty() ? textForPeople(id) : info.displayName;
    const QString which = info.userName.isEmpty() ? info.serial : info.userName;
    return which.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, which);
}

template <class Made>
FoundDevice foundDevice(const GentlIdentity &identity)
{
    FoundDevice found;
    found.id = identity.place.key();
    found.name = identity.displayName;
    found.transport = transportOf(identity.transport);
    found.create = [identity] { return std::make_unique<Made>(identity); };
    return found;
}

FoundDevice foundCard(const GentlPlace &place, const QString &name, const QString &transport)
{
    FoundDevice found = foundDevice<GentlModule>({place, name, transport});
    found.isCard = true;
    found.card = place.interfaceId.isEmpty() ? QString() : GentlPlace{place.producer}.key();
    found.model = name;
    return found;
}

} // namespace

ProducerWalk::ProducerWalk() = default;
ProducerWalk::~ProducerWalk() = default;

ProducerWalk::Result ProducerWalk::run(const QString &file, const StepTeller &step)
{
    Result result;
    result.report.file = file;
    if (guarded(&result.report.problem, [&] { lookAtSystem(file, step, &result); }))
        return result;
    m_interfaces.clear();
    m_system.reset();
    result.found.clear();
    return result;
}

void ProducerWalk::lookAtSystem(const QString &file, const StepTeller &step, Result *result)
{
    step(QStringLiteral("while it is loaded and initialised"));
    if (!m_system)
        m_system = SystemModule::open(Producer::load(file));
    const Producer::Info &info = m_system->producer()->info();
    ProducerReport &report = result->report;
    report.vendor = info.vendor;
    report.model = info.model;
    report.version = info.version;
    report.transport = info.transport;
    const QString name = info.name.isEmpty() ? joined({info.vendor, info.model}) : info.name;
    result->found.push_back(
        foundCard({file}, name.isEmpty() ? QFileInfo(file).completeBaseName() : name, info.transport));
    step(QStringLiteral("while it looks for interfaces"));
    m_system->updateInterfaces(SearchTime);
    const std::vector<QByteArray> ids = m_system->interfaceIds();
    for (auto opened = m_interfaces.begin(); opened != m_interfaces.end();) {
        const bool isThere = std::find(ids.begin(), ids.end(), opened->first) != ids.end();
        opened = isThere ? std::next(opened) : m_interfaces.erase(opened);
    }
    for (const QByteArray &id : ids) {
        step(QStringLiteral("while it looks for devices at ") + textForPeople(id));
        lookAtInterface(id, result);
    }
}

void ProducerWalk::lookAtInterface(const QByteArray &id, Result *result)
{
    const GentlInterfaceInfo info = m_system->interfaceInfo(id);
    const GentlPlace place{result->report.file, id};
    ProducerReport::SeenInterface seen;
    seen.id = textForPeople(id);
    seen.name = info.name.isEmpty() ? seen.id : info.name;
    seen.transport = info.transport;
    result->found.push_back(foundCard(place, seen.name, info.transport));
    result->report.interfaces.push_back(seen);
    const auto look = [&] {
        std::shared_ptr<InterfaceModule> &interface = m_interfaces[id];
        if (!interface)
            interface = m_system->openInterface(id);
        interface->updateDevices(SearchTime);
        for (const QByteArray &device : interface->deviceIds())
            lookAtDevice(*interface, device, place.key(), result);
    };
    if (!guarded(&result->report.interfaces.back().problem, look))
        m_interfaces.erase(id);
}

void ProducerWalk::lookAtDevice(const InterfaceModule &interface, const QByteArray &id, const QString &interfaceKey,
                                Result *result) const
{
    const GentlDeviceInfo info = interface.deviceInfo(id);
    ProducerReport::SeenInterface &seen = result->report.interfaces.back();
    const QString transport = info.transport.isEmpty() ? seen.transport : info.transport;
    seen.devices.push_back(
        {textForPeople(id), info.vendor, info.model, info.serial, transport, accessText(info.access)});
    FoundDevice found =
        foundDevice<GentlCamera>({{result->report.file, interface.id(), id}, nameOf(info, id), transport});
    found.vendor = info.vendor;
    found.model = info.model;
    found.serial = info.serial;
    found.card = interfaceKey;
    if (transport == QLatin1String(GenTL::TLTypeGEVName))
        found.hardwareAddress = hardwareAddressIn(id);
    found.route = QStringLiteral("%1, %2").arg(QFileInfo(result->report.file).fileName(), seen.name);
    result->found.push_back(std::move(found));
}
