// SPDX-License-Identifier: MIT
#include "soak/SoakSession.h"

#include "Simulation/SimulatedDevices.h"
#include "Viewer/ViewerCommands.h"

SoakSession::SoakSession(quint64 seed, DeviceFinder finder)
    : m_record(seed), m_dice(seed), m_files(seed), m_context({m_files.settings(), std::move(finder)})
{
    for (std::unique_ptr<Device> &device : makeSimulatedDevices())
        m_context.devices().add(std::move(device));
    m_context.setLanguage(QStringLiteral("English"));
    m_window = std::make_unique<ViewerWindow>(m_context);
    m_window->commands().showDeveloperMenu();
    m_window->show();
    m_window->activateWindow();
    m_stage = std::make_unique<SoakStage>(*m_window, m_record, m_dice, m_files);
    m_stage->settle();
}

SoakSession::~SoakSession()
{
    m_window->close();
}
