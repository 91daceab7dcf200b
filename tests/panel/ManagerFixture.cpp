// SPDX-License-Identifier: MIT
#include "ManagerFixture.h"

void ManagerFixture::start()
{
    m_host.reset();
    m_messages = std::make_unique<FatalMessages>();
    m_camera = std::make_unique<PanelCamera>();
    m_window = std::make_unique<ParamterWnd>();
    m_window->show();
}

void ManagerFixture::end()
{
    m_window.reset();
    m_camera.reset();
    m_messages.reset();
}

void ManagerFixture::setCamera(const std::string &key, bool ready)
{
    m_host.setCameraInfo(key, HostCore::CAM_INFO_OPENED, ready ? "1" : "0");
    m_host.setCameraInfo(key, HostCore::CAM_INFO_READY, "1");
    m_host.setNodeMap(HostCore::FOCUS_CAMERA, key, m_camera->map);
}

void ManagerFixture::setCard(const std::string &key, bool open)
{
    m_host.setCardInfo(key, HostCore::CARD_INFO_STATE, "4");
    m_host.setCardInfo(key, HostCore::CARD_INFO_OPEN, open ? "1" : "0");
    m_host.setNodeMap(HostCore::FOCUS_CARD, key, m_camera->map);
}

void ManagerFixture::sendDeviceList(const std::vector<std::string> &cards, const std::vector<std::string> &cameras,
                                    int source)
{
    m_host.listeners.deviceList->OnUpdate(source, cards, cameras);
}

void ManagerFixture::sendFocus(int type, const std::string &id)
{
    m_host.listeners.focus->OnUpdate(static_cast<HostCore::FOCUS_TYPE>(type), id);
}

ParamterWidget *ManagerFixture::panelOf(const std::string &device, bool card) const
{
    for (ParamterWidget *panel : panels()) {
        if (panel->deviceName().toStdString() == device && panel->isCard() == card)
            return panel;
    }
    return nullptr;
}

QString ManagerFixture::shown() const
{
    QStringList visible;
    for (ParamterWidget *panel : panels()) {
        if (panel->isVisible())
            visible << panel->deviceName();
    }
    return visible.size() == 1 ? visible.first() : "%1 panels are visible"_s.arg(visible.size());
}
