// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "PanelDescription.h"
#include "ParamterWidget/ParamterWidget.h"
#include "ParamterWnd/ParamterWnd.h"
#include "support/FakeHostCore.h"
#include "support/FatalMessages.h"
#include "support/Rows.h"

/// Tests of the exported window and its manager, as a host sees them: a window over the fake host, whose devices all
/// have the nodes of a PanelCamera.
class ManagerFixture : public QObject
{
protected:
    void start();
    void end();

    void setCamera(const std::string &key, bool ready);
    void setCard(const std::string &key, bool open);
    void sendDeviceList(const std::vector<std::string> &cards, const std::vector<std::string> &cameras, int source = 1);
    void sendFocus(int type, const std::string &id);
    QList<ParamterWidget *> panels() const { return m_window->findChildren<ParamterWidget *>(); }
    ParamterWidget *panelOf(const std::string &device, bool card = false) const;
    /// The device of the visible panel ("" is the default panel), or a text that says why there is none.
    QString shown() const;

    FakeHostCore &m_host = FakeHostCore::instance();
    std::unique_ptr<FatalMessages> m_messages;
    std::unique_ptr<PanelCamera> m_camera;
    std::unique_ptr<ParamterWnd> m_window;
};
