// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class DeviceTree;
class SimulatedDevice;
class ViewerCommands;
enum class Command;

/// The developers' menu entries that make the link of a simulated device fail: they show and change the faults of the
/// current device.
class LinkFaults : public QObject
{
    Q_OBJECT

public:
    /// Owned by the commands, which the tree must outlive.
    LinkFaults(const DeviceTree &devices, ViewerCommands &commands);

private:
    SimulatedDevice *current() const;
    void apply(Command command, bool on);
    void show();

    const DeviceTree &m_devices;
    ViewerCommands &m_commands;
};
