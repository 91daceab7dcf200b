// SPDX-License-Identifier: MIT
#include "Simulation/Behaviour.h"
#include "Simulation/Firmware.h"
#include "Simulation/StructuredLightSettings.h"

namespace {

/// Passes the software trigger on, in the mode that waits for it.
class SoftwareTrigger : public Behaviour
{
public:
    void written(Firmware &firmware, const RegisterWrite &write) override
    {
        const RegisterMemory &memory = firmware.memory();
        const bool waits = memory.integer("Acquiring") == 1
            && memory.integer("AcquisitionMode") == StructuredLightSettings::SoftwareTrigger;
        if (write.is("TriggerSoftware") && waits)
            Q_EMIT firmware.triggered(0);
    }
};

} // namespace

Behaviours structuredLightBehaviours()
{
    Behaviours behaviours;
    addDeviceBehaviours(behaviours);
    addUserSetBehaviours(behaviours, 1, 4);
    addAcquisitionControl(behaviours);
    behaviours.push_back(std::make_unique<SoftwareTrigger>());
    return behaviours;
}
