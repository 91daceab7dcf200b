// SPDX-License-Identifier: MIT
#include "Viewer/LinkFaults.h"

#include <utility>

#include "Simulation/SimulatedDevice.h"
#include "Viewer/DeviceTree.h"
#include "Viewer/ViewerCommands.h"

LinkFaults::LinkFaults(const DeviceTree &devices, ViewerCommands &commands)
    : QObject(&commands), m_devices(devices), m_commands(commands)
{
    connect(&m_commands, &ViewerCommands::triggered, this, &LinkFaults::apply);
    connect(&m_devices, &DeviceTree::currentItemChanged, this, &LinkFaults::show);
    show();
}

SimulatedDevice *LinkFaults::current() const
{
    return qobject_cast<SimulatedDevice *>(m_devices.currentDevice());
}

void LinkFaults::apply(Command command, bool on)
{
    SimulatedDevice *const device = current();
    if (!device)
        return;
    using Fault = SimulatedDevice::Fault;
    if (command == Command::LoseFrames)
        device->frameFaults().setLosing(on);
    else if (command == Command::EnlargeFrames)
        device->frameFaults().setEnlarging(on);
    else if (command == Command::Unplug)
        device->setFault(on ? Fault::Drop : Fault::None);
    else if (command == Command::Silence)
        device->setFault(on ? Fault::Timeout : Fault::None);
    show();
}

void LinkFaults::show()
{
    SimulatedDevice *const device = current();
    const std::pair<Command, bool> states[] = {
        {Command::LoseFrames, device && device->frameFaults().isLosing()},
        {Command::EnlargeFrames, device && device->frameFaults().isEnlarging()},
        {Command::Unplug, device && device->fault() == SimulatedDevice::Fault::Drop},
        {Command::Silence, device && device->fault() == SimulatedDevice::Fault::Timeout},
    };
    for (const auto &[command, isOn] : states) {
        m_commands.action(command)->setChecked(isOn);
        m_commands.action(command)->setEnabled(device != nullptr);
    }
}
