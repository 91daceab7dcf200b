// SPDX-License-Identifier: MIT
#include "Viewer/LoadStatus.h"

#include <QLocale>

#include "Host/HostContext.h"
#include "Viewer/MeteredApplication.h"

LoadStatus::LoadStatus(HostContext &context, QWidget *parent) : QLabel(parent), m_context(context)
{
    setObjectName(QStringLiteral("loadStatus"));
    m_beat.setInterval(1000);
    connect(&m_beat, &QTimer::timeout, this, &LoadStatus::refresh);
}

void LoadStatus::showEvent(QShowEvent *event)
{
    if (StallMeter *const meter = MeteredApplication::meter())
        meter->restart();
    m_accessesBefore = portLoad().accesses;
    refresh();
    m_beat.start();
    QLabel::showEvent(event);
}

void LoadStatus::hideEvent(QHideEvent *event)
{
    m_beat.stop();
    QLabel::hideEvent(event);
}

PortLoad LoadStatus::portLoad() const
{
    PortLoad sum;
    for (const Device *device : m_context.devices().all()) {
        const PortLoad one = device->portLoad();
        sum.accesses += one.accesses;
        sum.timeouts += one.timeouts;
    }
    return sum;
}

void LoadStatus::refresh()
{
    const PortLoad load = portLoad();
    const uint64_t recent = load.accesses - std::min(m_accessesBefore, load.accesses); // less when one was closed
    m_accessesBefore = load.accesses;
    const StallMeter *const meter = MeteredApplication::meter();
    setText(tr("longest event %1 ms, %2 accesses/s, %3 time-outs")
                .arg(meter ? locale().toString(meter->longest(), 'f', 0) : QStringLiteral("?"),
                     locale().toString(qulonglong(recent)), locale().toString(qulonglong(load.timeouts))));
}
