// SPDX-License-Identifier: MIT
#include "PanelBase/DeviceReading.h"

#include <algorithm>
#include <array>

#include "Features/NodeGuard.h"
#include "PanelBase/HostCall.h"

using namespace std::chrono_literals;

namespace {

constexpr const char *Module = "DeviceReading";

/// Whether the device says anything about the node, be it a refusal.
bool answers(GenApi::INode *node)
{
    bool isAnswered = true;
    const auto ask = [node] {
        const GenApi::CValuePtr value(node);
        if (value.IsValid() && GenApi::IsReadable(value))
            value->ToString(false, true); // past the cache
    };
    guardNode(
        ask,
        [&](const GenICam::GenericException &error) {
            isAnswered = dynamic_cast<const GenICam::TimeoutException *>(&error) == nullptr;
        },
        [](const char *) {});
    return isAnswered;
}

} // namespace

DeviceReading::DeviceReading() : DeviceReading(Timing()) { }

DeviceReading::DeviceReading(const Timing &timing) : m_timing(timing), m_limit(timing.budget)
{
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, &DeviceReading::nextTurn);
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &DeviceReading::probe);
    m_probes.setMaxThreadCount(1);
}

DeviceReading::~DeviceReading()
{
    stop();
}

/// A read that would probably go beyond the budget waits, unless it is the first one.
bool DeviceReading::hasTime()
{
    if (m_isSilent)
        tryAtOnce();
    return !m_isSilent && (m_spent == 0ms || m_spent + m_usual <= m_limit);
}

/// Reads that the cache answers say little of the next one.
void DeviceReading::count(Clock::duration duration)
{
    constexpr int Forgetting = 8;
    m_spent += duration;
    m_usual = std::max(duration, m_usual - (m_usual - duration) / Forgetting);
    startTurn();
}

void DeviceReading::startTurn()
{
    if (!m_turn.isActive())
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
}

void DeviceReading::nextTurn()
{
    m_spent = 0ms;
    m_isTried = false;
    m_limit = m_timing.slice;
    QVector<Job *> served;
    while (!m_jobs.isEmpty() && hasTime()) {
        Job *const job = nextJob();
        if (!served.contains(job))
            served.append(job);
        if (!job->readNext())
            forget(job);
    }
    for (Job *job : qAsConst(served))
        job->endSlice();
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
void DeviceReading::fallSilent(const std::string &reason, Clock::duration cost)
{
    if (m_isSilent || m_isStopped)
        return;
    m_isSilent = true;
    m_isTried = true;
    m_tries = 0;
    startTurn();
    logToHost(Module, m_deviceName.toStdString() + " does not answer, what was read last is shown: " + reason);
    pause(cost);
    QMetaObject::invokeMethod(this, &DeviceReading::silenced, Qt::QueuedConnection);
}

void DeviceReading::pause(Clock::duration cost)
{
    const auto index = std::min(size_t(m_tries), m_timing.pauses.size() - 1);
    m_isCostless = cost < m_timing.costless;
    m_pause.start(m_isCostless ? m_timing.costlessPause : std::chrono::milliseconds(m_timing.pauses[index]));
    if (!m_isCostless)
        ++m_tries;
}

void DeviceReading::retry()
{
    if (m_isSilent && !m_isCostless)
        probe();
}

void DeviceReading::tryAtOnce()
{
    if (!m_isCostless || m_isTried || m_isProbing || m_isStopped)
        return;
    m_isTried = true;
    startTurn();
    const auto begin = Clock::now();
    const bool isAnswered = answers(m_asked);
    const Clock::duration cost = Clock::now() - begin;
    adoptProbe(isAnswered && cost <= m_timing.longest, cost);
}

void DeviceReading::probe()
{
    if (m_isStopped || m_isProbing)
        return;
    m_pause.stop();
    m_isProbing = true;
    m_probes.start([this, node = m_asked] {
        const auto begin = Clock::now();
        const bool isAnswered = answers(node);
        const Clock::duration cost = Clock::now() - begin;
        QMetaObject::invokeMethod(
            this, [this, isAnswered, cost] { adoptProbe(isAnswered && cost <= m_timing.longest, cost); },
            Qt::QueuedConnection);
    });
}

void DeviceReading::adoptProbe(bool isAnswered, Clock::duration cost)
{
    m_isProbing = false;
    if (m_isStopped)
        return;
    if (!isAnswered) {
        pause(cost);
        return;
    }
    m_isSilent = false;
    m_usual = 0ms;
    m_pause.stop();
    logToHost(Module, "The values of " + m_deviceName.toStdString() + " are live again");
    QMetaObject::invokeMethod(this, &DeviceReading::revived, Qt::QueuedConnection);
    startTurn();
}

void DeviceReading::stop()
{
    m_isStopped = true;
    m_isSilent = true;
    m_jobs.clear();
    m_turn.stop();
    m_pause.stop();
    m_probes.waitForDone();
}
