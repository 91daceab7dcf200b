// SPDX-License-Identifier: MIT
#include "Viewer/MissingFrames.h"

#include <QStringList>

#include "Features/NodeGuard.h"
#include "Features/NodeText.h"

namespace {

/// Empty when the device has no such feature or does not tell.
QString valueOf(GenApi::INodeMap &nodes, const char *feature)
{
    QString text, ignored;
    guarded(&ignored, [&] {
        if (GenApi::IsReadable(nodes.GetNode(feature)))
            text = readNodeText(nodes, QLatin1String(feature));
    });
    return text;
}

} // namespace

MissingFrames::MissingFrames(QObject *parent) : QObject(parent), m_timer(this)
{
    m_timer.setObjectName(QStringLiteral("missingFrames"));
    m_timer.setInterval(Patience);
    connect(&m_timer, &QTimer::timeout, this, &MissingFrames::look);
}

void MissingFrames::watch(Device *device)
{
    if (m_device == device && m_timer.isActive() == (device != nullptr))
        return;
    m_device = device;
    if (device)
        m_timer.start();
    else
        m_timer.stop();
    setMissing(false);
}

void MissingFrames::noteFrame()
{
    if (m_timer.isActive())
        m_timer.start();
    setMissing(false);
}

void MissingFrames::look()
{
    GenApi::INodeMap *const nodes = m_device ? m_device->nodeMap() : nullptr;
    m_causes = Causes();
    if (nodes)
        m_causes = {valueOf(*nodes, "TriggerMode"), valueOf(*nodes, "TriggerSource"),
                    valueOf(*nodes, "GevSCPSPacketSize")};
    setMissing(nodes != nullptr);
}

void MissingFrames::setMissing(bool missing)
{
    if (!missing && !m_isMissing)
        return;
    m_isMissing = missing;
    Q_EMIT changed();
}

QString MissingFrames::triggerText() const
{
    if (m_causes.triggerMode != QLatin1String("On"))
        return {};
    if (m_causes.triggerSource.isEmpty())
        return tr("Trigger: TriggerMode is On, so the camera waits for a trigger.");
    return tr("Trigger: TriggerMode is On, so the camera waits for a trigger from %1 (TriggerSource).")
        .arg(m_causes.triggerSource);
}

QString MissingFrames::text() const
{
    if (!m_isMissing)
        return {};
    QStringList lines{tr("No image for %1 seconds. What to look at:").arg(Patience / 1000), triggerText()};
    if (!m_causes.packetSize.isEmpty())
        lines << tr("Packet size: GevSCPSPacketSize is %1; every part of the network must let such packets pass.")
                     .arg(m_causes.packetSize);
    lines << tr("Another controller: a program that controls the camera can keep its images from coming here.");
    lines.removeAll(QString());
    return lines.join(QLatin1Char('\n'));
}
