// SPDX-License-Identifier: MIT
#include "Devices/gentl/ModuleConnection.h"

#include <QFileInfo>

#include "Devices/AlignedPort.h"
#include "Devices/gentl/ModuleDescription.h"
#include "Devices/gentl/StackedReads.h"

namespace {

const QString Gone = QStringLiteral("the producer no longer reaches it");

std::unique_ptr<GenApi::IPort> registers(const ModuleConnection::Plan &plan, std::optional<uint64_t> readable,
                                         ModulePort::GoneHandler onGone)
{
    ModulePort::Target target = plan.target;
    target.readable = readable;
    auto port = std::make_unique<ModulePort>(std::move(target), std::move(onGone));
    if (plan.wantsWords)
        return std::make_unique<AlignedPort>(std::move(port));
    return port;
}

/// How the description calls its port; empty where the producer does not tell.
QByteArray portName(const ModulePort::Target &target)
{
    const Producer &gentl = *target.module->producer();
    return askInfo([&](GenTL::INFO_DATATYPE *type, void *buffer, std::size_t *size) {
               return gentl->GCGetPortInfo(target.handle, GenTL::PORT_INFO_PORTNAME, type, buffer, size);
           })
        .text();
}

} // namespace

ModuleConnection::ModuleConnection(const Plan &plan, const std::shared_ptr<DeviceLine> &line)
{
    load(plan, line);
    m_stacked = stackedReads(plan.target, plan.wantsWords, plan.deadline);
    m_events = std::make_unique<FeatureEvents>(plan.target, m_nodes, line);
}

ModuleConnection::~ModuleConnection() = default;

void ModuleConnection::load(const Plan &plan, const std::shared_ptr<DeviceLine> &line)
{
    const Producer &gentl = *plan.target.module->producer();
    DescriptionPorts direct;
    direct.push_back(std::make_unique<ModulePort>(plan.target));
    if (plan.wantsWords)
        direct.push_back(registers(plan, std::nullopt, {}));
    const QByteArray port = portName(plan.target);
    const auto use = [&](const QByteArray &description, const PortUrl &url) {
        if (url.place == PortUrl::Place::Registers)
            m_readable = url.address;
        FailFastPort::Timing timing;
        timing.deadline = plan.deadline;
        m_port = std::make_unique<FailFastPort>(registers(plan, m_readable, [line] { line->lost(Gone); }), timing,
                                                [line](bool answers) { line->answering(answers); });
        m_nodes = std::make_shared<LoadedNodeMap>(description, *m_port, port);
        m_description = description;
    };
    const auto report = [&line](const QString &text) { line->report(text); };
    useDescription(portUrls(gentl, plan.target.handle), QFileInfo(gentl.file()).dir(), direct, use, report);
}

void ModuleConnection::readAhead(const std::atomic_bool &cancelled, const ReadProgress &progress)
{
    m_nodes->readAhead(cancelled, progress, m_stacked);
}

void ModuleConnection::goLive()
{
    m_stacked = nullptr;
    m_events->goLive();
    if (m_readable)
        m_pulse = std::make_unique<Pulse>(*m_port, static_cast<int64_t>(*m_readable));
}
