// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "Devices/DeviceDiscovery.h"
#include "Host/HostContext.h"
#include "Viewer/MessageLog.h"
#include "Viewer/ViewerWindow.h"
#include "soak/Dice.h"
#include "soak/SoakFiles.h"
#include "soak/SoakRecord.h"
#include "soak/SoakStage.h"

/// The viewer as after an installation, on all simulated devices, with what a run needs around it.
class SoakSession
{
public:
    explicit SoakSession(quint64 seed, DeviceFinder finder = {});
    /// Closes the window as a person does.
    ~SoakSession();

    SoakStage &stage() { return *m_stage; }
    SoakRecord &record() { return m_record; }

private:
    SoakRecord m_record;
    Dice m_dice;
    const SoakFiles m_files;
    HostContext m_context;
    const MessageLog m_messages;
    std::unique_ptr<ViewerWindow> m_window;
    std::unique_ptr<SoakStage> m_stage;
};
