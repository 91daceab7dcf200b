// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class HostContext;
class ViewerCommands;

/// The menu entries that switch what the host does by itself: they show and change its settings.
class HostSwitches : public QObject
{
    Q_OBJECT

public:
    /// Owned by the commands, which the context must outlive.
    HostSwitches(HostContext &context, ViewerCommands &commands);
};
