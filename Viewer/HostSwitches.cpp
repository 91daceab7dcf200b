// SPDX-License-Identifier: MIT
#include "Viewer/HostSwitches.h"

#include "Host/HostContext.h"
#include "Viewer/ViewerCommands.h"

namespace {

struct Switch
{
    Command command;
    bool (*isOn)(HostContext &);
    void (*set)(HostContext &, bool on);
};

constexpr Switch Switches[] = {
    {Command::SearchAutomatically, [](HostContext &host) { return host.automaticSearch().isEnabled(); },
     [](HostContext &host, bool on) { host.automaticSearch().setEnabled(on); }},
    {Command::OpenLostAgain, [](HostContext &host) { return host.deviceReturn().isEnabled(); },
     [](HostContext &host, bool on) { host.deviceReturn().setEnabled(on); }},
    {Command::AcquireAgain, [](HostContext &host) { return host.deviceReturn().isAcquiringAgain(); },
     [](HostContext &host, bool on) { host.deviceReturn().setAcquiringAgain(on); }},
};

} // namespace

HostSwitches::HostSwitches(HostContext &context, ViewerCommands &commands) : QObject(&commands)
{
    for (const Switch &one : Switches) {
        QAction *const action = commands.action(one.command);
        action->setChecked(one.isOn(context));
        connect(action, &QAction::toggled, this, [&context, set = one.set](bool on) { set(context, on); });
    }
}
