// SPDX-License-Identifier: MIT
#include "PanelBase/DeviceReading.h"

#include <algorithm>

#include "PanelBase/HostCall.h"

namespace {

constexpr const char *Module = "DeviceReading";

} // namespace

DeviceReading::DeviceReading() : DeviceReading(Timing()) { }

DeviceReading::DeviceReading(const Timing &timing) : m_timing(timing), m_limit(timing.budget), m_probe(timing.silence)
{
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, &DeviceReading::nextTurn);
    connect(&m_probe, &SilenceProbe::answered, this, &DeviceReading::revive);
}

DeviceReading::~DeviceReading()
{
    stop();
}

/// A read that would probably go beyond the budget waits, unless it is the first one.
bool DeviceReading::hasTime()
{
    if (m_isSilent && !m_isTried && !m_isStopped) {
        m_isTried = true;
        startTurn();
        m_probe.askAtOnce();
    }
    return !m_isSilent && (m_spent == Clock::duration::zero() || m_spent + m_usual <= m_limit);
}

void DeviceReading::refuseLeftOut(GenApi::INode *node) const
{
    if (node && m_probe.isLeftOut(node))
        throw TIMEOUT_EXCEPTION("'%s' alone did not answer a short while ago", node->GetName().c_str());
}

/// Reads that the cache answers say little of the next one.
void DeviceReading::count(Clock::duration duration)
{
    constexpr int Forgetting = 8;
    m_usual = std::max(duration, m_usual - (m_usual - duration) / Forgetting);
    spend(duration);
}

void DeviceReading::spend(Clock::duration duration)
{
    m_spent += duration;
    startTurn();
}

void DeviceReading::startTurn()
{
    if (!m_turn.isActive() && !m_isStopped)
        m_turn.start(0);
}

void DeviceReading::later(Job *job)
{
    if (m_isStopped || m_jobs.contains(job))
        return;
    m_jobs.append(job);
    if (!m_isSilent)
        startTurn();
}

void DeviceReading::forget(Job *job)
{
    m_jobs.removeAll(job);
    m_served.removeAll(job);
}

/// Jobs of a silent device wait: whoever hears it again starts the next turn.
void DeviceReading::nextTurn()
{
    m_spent = Clock::duration::zero();
    m_isTried = false;
    if (m_isSilent)
        return;
    m_limit = m_timing.slice;
    while (!m_jobs.isEmpty() && hasTime()) {
        Job *const job = nextJob();
        if (!m_served.contains(job))
            m_served.append(job);
        if (!job->readNext())
            m_jobs.removeAll(job);
    }
    while (!m_served.isEmpty())
        m_served.takeFirst()->endSlice();
    m_limit = m_timing.budget;
    if (!m_jobs.isEmpty() && !m_isSilent)
        startTurn();
}

DeviceReading::Job *DeviceReading::nextJob() const
{
    const auto inView = std::find_if(m_jobs.begin(), m_jobs.end(), [](const Job *job) { return job->isInView(); });
    return inView == m_jobs.end() ? m_jobs.first() : *inView;
}

/// Whoever is reading is in the middle of something, so that the signal waits for the event loop.
void DeviceReading::fallSilent(GenApi::INode *node, const std::string &reason, Clock::duration cost)
{
    if (m_isSilent || m_isStopped)
        return;
    m_isSilent = true;
    m_isTried = true;
    startTurn();
    m_probe.begin(node, cost);
    logToHost(Module, m_deviceName.toStdString() + " does not answer, what was read last is shown: " + reason);
    QMetaObject::invokeMethod(this, &DeviceReading::silenced, Qt::QueuedConnection);
}

void DeviceReading::hear()
{
    if (!m_isSilent || m_isStopped)
        return;
    m_probe.end();
    revive();
}

void DeviceReading::revive()
{
    if (m_isStopped || !m_isSilent)
        return;
    m_isSilent = false;
    m_usual = Clock::duration::zero();
    logToHost(Module, "The values of " + m_deviceName.toStdString() + " are live again");
    QMetaObject::invokeMethod(this, &DeviceReading::revived, Qt::QueuedConnection);
    startTurn();
}

void DeviceReading::retry()
{
    if (m_isSilent)
        m_probe.ask();
}

void DeviceReading::stop()
{
    m_isStopped = true;
    m_isSilent = true;
    m_jobs.clear();
    m_served.clear();
    m_turn.stop();
    m_probe.stop();
}
