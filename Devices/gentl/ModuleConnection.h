// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>

#include <QByteArray>

#include "Devices/FailFastPort.h"
#include "Devices/LoadedNodeMap.h"
#include "Devices/gentl/DeviceLine.h"
#include "Devices/gentl/FeatureEvents.h"
#include "Devices/gentl/ModulePort.h"
#include "Devices/gentl/Pulse.h"

/// The node map of an open module, or of the camera behind one, and what keeps it up to date.
///
/// Nobody who uses the nodes waits for a producer that does not come back (FailFastPort). A device that is gone is told
/// to the line. The module is closed when this has gone, on another thread.
class ModuleConnection
{
public:
    struct Plan
    {
        ModulePort::Target target;
        bool wantsWords = false; ///< its registers are read in whole words, as GEV has it
        std::chrono::milliseconds deadline{500}; ///< of one access
    };

    /// On any thread. Throws when there is no usable description.
    ModuleConnection(const Plan &plan, const std::shared_ptr<DeviceLine> &line);
    ~ModuleConnection();

    ModuleConnection(const ModuleConnection &) = delete;
    ModuleConnection &operator=(const ModuleConnection &) = delete;

    LoadedNodeMap &nodes() const { return *m_nodes; }
    /// See LoadedNodeMap. Before goLive(), on any thread.
    void readAhead(const std::atomic_bool &cancelled, const ReadProgress &progress);
    const QByteArray &description() const { return m_description; }
    /// From now on the nodes belong to the GUI thread, and a camera that goes is noticed even if nobody asks it
    /// anything.
    void goLive();

private:
    void load(const Plan &plan, const std::shared_ptr<DeviceLine> &line);

    QByteArray m_description;
    std::unique_ptr<FailFastPort> m_port;
    std::shared_ptr<LoadedNodeMap> m_nodes;
    std::unique_ptr<FeatureEvents> m_events;
    std::optional<uint64_t> m_readable;
    std::unique_ptr<Pulse> m_pulse;
    StackedRead m_stacked; ///< until the nodes are live: it holds the module
};
