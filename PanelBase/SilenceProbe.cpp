// SPDX-License-Identifier: MIT
#include "PanelBase/SilenceProbe.h"

#include <algorithm>
#include <optional>

#include "Features/NodeGuard.h"

namespace {

/// Whether the device says anything about a node, be it a refusal; nothing for one that cannot be asked.
std::optional<bool> isAnswered(GenApi::INode *node)
{
    std::optional<bool> isHeard;
    const auto ask = [&] {
        const GenApi::CValuePtr value(node);
        if (!value.IsValid() || !GenApi::IsReadable(value) || node->GetPrincipalInterfaceType() == GenApi::intfICommand)
            return;
        value->ToString(false, true); // past the cache
        isHeard = true;
    };
    guardNode(
        ask,
        [&](const GenICam::GenericException &error) {
            isHeard = dynamic_cast<const GenICam::TimeoutException *>(&error) == nullptr;
        },
        [&](const char *) { isHeard = true; });
    return isHeard;
}

} // namespace

SilenceProbe::SilenceProbe(const Timing &timing) : m_timing(timing)
{
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &SilenceProbe::ask);
}

SilenceProbe::~SilenceProbe()
{
    stop();
}

void SilenceProbe::begin(GenApi::INode *node, Clock::duration cost)
{
    if (Clock::now() - m_aliveSince > m_timing.pauses.back())
        m_tries = 0;
    m_unanswered = node;
    m_isSilent = true;
    pause(cost);
}

void SilenceProbe::pause(Clock::duration cost)
{
    m_isCostless = cost < m_timing.costless;
    if (m_isCostless) {
        m_pause.start(m_timing.costlessPause);
        return;
    }
    m_pause.start(m_timing.pauses[std::min(size_t(m_tries), m_timing.pauses.size() - 1)]);
    ++m_tries;
}

/// Without anything to ask, the next read tells.
SilenceProbe::Outcome SilenceProbe::outcome(GenApi::INode *silent, GenApi::INode *other)
{
    const auto begin = Clock::now();
    const std::optional<bool> again = isAnswered(silent);
    if (again.value_or(false))
        return {true, false, Clock::now() - begin};
    const std::optional<bool> otherwise = other == silent ? std::nullopt : isAnswered(other);
    return {otherwise.value_or(!again), again.has_value(), Clock::now() - begin};
}

void SilenceProbe::ask()
{
    if (m_isStopped || m_isAsking)
        return;
    m_pause.stop();
    m_isAsking = true;
    m_thread.add([this, silent = m_unanswered, other = m_answered] {
        m_handOver.post([this, found = outcome(silent, other)] {
            m_isAsking = false;
            adopt(found);
        });
    });
}

bool SilenceProbe::askAtOnce()
{
    if (m_isStopped || m_isAsking || !m_isCostless)
        return false;
    const Outcome found = outcome(m_unanswered, m_answered);
    adopt(found);
    return found.isAnswered;
}

void SilenceProbe::adopt(const Outcome &found)
{
    if (m_isStopped || !m_isSilent) // heard in another way meanwhile
        return;
    if (!found.isAnswered) {
        pause(found.cost);
        return;
    }
    if (found.isOnlyOther)
        m_leftOut[m_unanswered] = Clock::now() + m_timing.leftOut;
    end();
    Q_EMIT answered();
}

void SilenceProbe::end()
{
    m_isSilent = false;
    m_pause.stop();
    m_aliveSince = Clock::now();
}

bool SilenceProbe::isLeftOut(GenApi::INode *node) const
{
    return !m_leftOut.isEmpty() && m_leftOut.value(node) > Clock::now();
}

void SilenceProbe::stop()
{
    m_isStopped = true;
    m_pause.stop();
    m_thread.end();
}
