// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/GenApi.h>

#include "Host/SessionHold.h"
#include "Viewer/WalkDialog.h"

class HostContext;

/// A walk through the settings of an open device on the GUI thread, in slices between events. The device stays open
/// until it has ended. Then panels read the device anew if they may have seen its selectors in other places.
class SettingsWalk
{
public:
    SettingsWalk(HostContext &context, const QString &id, const QString &title, QWidget *parent);
    ~SettingsWalk();
    SettingsWalk(const SettingsWalk &) = delete;
    SettingsWalk &operator=(const SettingsWalk &) = delete;

    /// Null when the device is not open.
    GenApi::INodeMap *map() const;
    /// After each step. False when the walk shall end: the user has cancelled, or the device is lost.
    bool goOn(const QString &phase, std::size_t done, std::size_t total = 0);
    bool isCancelled() const { return m_dialog->isCancelled(); }
    bool isLost() const { return !m_hold.isOpen(); }
    /// Something was written: panels read anew in any case.
    void noteWritten() { m_isWritten = true; }

private:
    HostContext &m_context;
    const QString m_id;
    SessionHold m_hold;
    std::unique_ptr<WalkDialog> m_dialog;
    bool m_isWritten = false;
};
