// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QTimer>

#include "Devices/CountingPort.h"

class HostContext;

/// A field of the status bar that tells how busy the GUI thread and the links to the devices are: the longest event,
/// the accesses a second, and the time-outs of all devices that are open. Works while it is shown; the figures begin
/// then.
class LoadStatus : public QLabel
{
    Q_OBJECT

public:
    /// `context` must outlive the field.
    explicit LoadStatus(HostContext &context, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    PortLoad portLoad() const;
    void refresh();

    HostContext &m_context;
    QTimer m_beat;
    uint64_t m_accessesBefore = 0; ///< at the beat before this one
};
