// SPDX-License-Identifier: MIT
#include "Devices/gentl/DeviceLine.h"

#include <utility>

DeviceLine::DeviceLine(Device *receiver, HandOver *handOver, QString name)
    : m_name(std::move(name)), m_receiver(receiver), m_handOver(handOver)
{ }

void DeviceLine::hangUp()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_receiver = nullptr;
}

void DeviceLine::lost(const QString &reason)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (std::exchange(m_isLost, true) || !m_receiver)
        return;
    m_handOver->post([receiver = m_receiver, reason] { Q_EMIT receiver->lost(reason); });
}

bool DeviceLine::isLost() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_isLost;
}

void DeviceLine::answering(bool answers)
{
    report(answers ? QStringLiteral("answers again") : QStringLiteral("does not answer"));
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_receiver)
        m_handOver->post([receiver = m_receiver, answers] { Q_EMIT receiver->answeringChanged(answers); });
}

void DeviceLine::report(const QString &line)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_receiver)
        Q_EMIT m_receiver->reported(QStringLiteral("%1: %2").arg(m_name, line));
}

void DeviceLine::post(HandOver::Function function)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_receiver)
        m_handOver->post(std::move(function));
}
