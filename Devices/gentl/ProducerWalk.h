// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "Devices/DeviceDiscovery.h"
#include "Devices/gentl/ProducerReport.h"

class InterfaceModule;
class SystemModule;

/// Looks at everything that one producer sees. Keeps its system and interfaces open from one look to the next: opening
/// them may take long, and some producers see nothing right after it. One thread at a time.
class ProducerWalk
{
public:
    struct Result
    {
        ProducerReport report;
        std::vector<FoundDevice> found;
    };
    /// Told what is done next, as the end of a sentence that begins with "it does not come back".
    using StepTeller = std::function<void(const QString &step)>;

    ProducerWalk();
    ~ProducerWalk();

    Result run(const QString &file, const StepTeller &step);

private:
    void lookAtSystem(const QString &file, const StepTeller &step, Result *result);
    void lookAtInterface(const QByteArray &id, Result *result);
    void lookAtDevice(const InterfaceModule &interface, const QByteArray &id, const QString &interfaceKey,
                      Result *result) const;

    std::shared_ptr<SystemModule> m_system;
    std::map<QByteArray, std::shared_ptr<InterfaceModule>> m_interfaces; ///< by id
};
