// SPDX-License-Identifier: MIT
#include "Host/Openings.h"

#include "Devices/Device.h"

namespace {

constexpr int MostOpenings = 16; ///< devices that are reached at the same time

} // namespace

Openings::Openings() : m_places(MostOpenings) { }

Openings::~Openings()
{
    end();
}

void Openings::start(const QString &id, Device &device)
{
    const auto opening = std::make_shared<Opening>();
    m_running[id] = opening;
    opening->thread = std::thread([this, id, opening = opening.get(), &device] { reach(id, device, *opening); });
}

/// On the thread of the opening.
void Openings::reach(const QString &id, Device &device, Opening &opening)
{
    m_places.acquire();
    const auto progress = [&](int done, int all) { tell(id, opening, all > 0 ? 100 * done / all : 0); };
    if (!opening.cancelled)
        device.reach(opening.cancelled, progress);
    m_places.release();
    m_handOver.post([this, id] { finish(id); });
}

/// On the thread of the opening.
void Openings::tell(const QString &id, Opening &opening, int percent)
{
    if (opening.percent.exchange(percent) == percent)
        return;
    m_handOver.post([this, id] { Q_EMIT progressed(id); });
}

void Openings::finish(const QString &id)
{
    const bool cancelled = isCancelled(id);
    if (const auto place = m_running.find(id); place != m_running.end() && place->second->thread.joinable())
        place->second->thread.join();
    m_running.erase(id);
    Q_EMIT ended(id, cancelled);
}

void Openings::cancel(const QString &id)
{
    const auto place = m_running.find(id);
    if (place == m_running.end() || place->second->cancelled.exchange(true))
        return;
    Q_EMIT progressed(id);
}

const Openings::Opening *Openings::find(const QString &id) const
{
    const auto place = m_running.find(id);
    return place == m_running.end() ? nullptr : place->second.get();
}

bool Openings::isCancelled(const QString &id) const
{
    const Opening *const opening = find(id);
    return opening && opening->cancelled;
}

int Openings::percent(const QString &id) const
{
    const Opening *const opening = find(id);
    return opening ? opening->percent.load() : 0;
}

void Openings::end()
{
    for (const auto &[id, opening] : m_running)
        opening->cancelled = true;
    for (const auto &[id, opening] : m_running) {
        if (opening->thread.joinable())
            opening->thread.join();
    }
}
