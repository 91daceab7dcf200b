// SPDX-License-Identifier: MIT
#include "Viewer/SettingsWalk.h"

#include "Host/HostContext.h"

SettingsWalk::SettingsWalk(HostContext &context, const QString &id, const QString &title, QWidget *parent)
    : m_context(context), m_id(id), m_hold(context.sessions(), id),
      m_dialog(std::make_unique<WalkDialog>(title, parent))
{ }

SettingsWalk::~SettingsWalk()
{
    const bool isToBeReadAgain = m_isWritten || m_dialog->hasLetEventsHappen();
    m_dialog.reset();
    if (isToBeReadAgain && m_hold.isOpen())
        m_context.listeners().raiseImport(m_id);
}

GenApi::INodeMap *SettingsWalk::map() const
{
    return m_hold.isOpen() ? m_context.devices().device(m_id)->nodeMap() : nullptr;
}

bool SettingsWalk::goOn(const QString &phase, std::size_t done, std::size_t total)
{
    return m_dialog->goOn(phase, done, total) && m_hold.isOpen();
}
