// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "PanelDescription.h"
#include "ParamterWidget/ParamterWidget.h"
#include "support/FakeHostCore.h"
#include "support/FatalMessages.h"

/// Tests of a panel of a PanelCamera, "cam", whose pages each test opens.
class PanelCameraFixture : public QObject
{
protected:
    void start()
    {
        end();
        m_host.reset();
        m_messages = std::make_unique<FatalMessages>();
        m_camera = std::make_unique<PanelCamera>();
        m_host.setNodeMap(HostCore::FOCUS_CAMERA, "cam", m_camera->map);
        m_panel = std::make_unique<ParamterWidget>();
    }
    void end()
    {
        m_panel.reset();
        m_camera.reset();
        m_messages.reset();
    }

    FakeHostCore &m_host = FakeHostCore::instance();
    std::unique_ptr<FatalMessages> m_messages;
    std::unique_ptr<PanelCamera> m_camera;
    std::unique_ptr<ParamterWidget> m_panel;
};
