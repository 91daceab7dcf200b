// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <GenApi/GenApi.h>

#include "Devices/LoadedNodeMap.h"
#include "Devices/gentl/DeviceLine.h"
#include "Devices/gentl/EventPump.h"
#include "Devices/gentl/ModulePort.h"

/// Lets nodes forget their values when the producer says that these have changed. A producer without such events is one
/// that has nothing to say.
class FeatureEvents
{
public:
    /// Takes some seconds when the producer does not come back. The nodes are left alone until goLive().
    FeatureEvents(const ModulePort::Target &target, std::shared_ptr<LoadedNodeMap> nodes,
                  std::shared_ptr<DeviceLine> line);
    ~FeatureEvents();

    /// The nodes belong to the GUI thread from now on.
    void goLive();

private:
    class Listening;
    std::shared_ptr<Listening> m_work;
    std::unique_ptr<EventPump> m_pump; ///< null without events
};
