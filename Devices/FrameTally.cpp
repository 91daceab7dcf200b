// SPDX-License-Identifier: MIT
#include "Devices/FrameTally.h"

namespace {

struct FateSpec
{
    FrameFate fate;
    qint64 FrameCounts::*counter;
    const char *cause; ///< null: not worth a line
};

constexpr FateSpec Fates[] = {
    {FrameFate::Good, &FrameCounts::good, nullptr},
    {FrameFate::MissingPackets, &FrameCounts::incomplete, "incomplete frames, packets are missing"},
    {FrameFate::LatePackets, &FrameCounts::incomplete, "incomplete frames, packets did not come in time"},
    {FrameFate::WrongPackets, &FrameCounts::incomplete, "incomplete frames, packets have wrong numbers"},
    {FrameFate::Aborted, &FrameCounts::incomplete, "incomplete frames, they were aborted"},
    {FrameFate::Unknown, &FrameCounts::incomplete, "frames that cannot be used"},
    {FrameFate::Lost, &FrameCounts::lost, "lost frames, none of their packets came"},
    {FrameFate::TooLarge, &FrameCounts::tooLarge, "frames larger than announced"},
};

} // namespace

void FrameTally::restart()
{
    {
        const std::lock_guard<std::mutex> lock(m_lock);
        m_counts = FrameCounts();
    }
    Q_EMIT changed();
}

void FrameTally::count(FrameFate fate, qint64 frames)
{
    QString line;
    bool isNews = false;
    {
        const std::lock_guard<std::mutex> lock(m_lock);
        m_counts.*Fates[int(fate)].counter += frames;
        line = reportOf(fate, frames);
        isNews = fate != FrameFate::Good && !m_isTelling;
        m_isTelling = m_isTelling || isNews;
    }
    if (isNews)
        m_handOver.post([this] { tellChange(); });
    if (!line.isEmpty())
        Q_EMIT reported(line);
}

QString FrameTally::reportOf(FrameFate fate, qint64 frames)
{
    if (!Fates[int(fate)].cause)
        return {};
    const QString cause = QLatin1String(Fates[int(fate)].cause);
    const qint64 times = m_reports.count(cause, frames);
    return times > 0 ? QStringLiteral("%1: %2").arg(cause).arg(times) : QString();
}

void FrameTally::tellChange()
{
    {
        const std::lock_guard<std::mutex> lock(m_lock);
        m_isTelling = false;
    }
    Q_EMIT changed();
}

FrameCounts FrameTally::counts() const
{
    const std::lock_guard<std::mutex> lock(m_lock);
    return m_counts;
}

QString payloadChange(qint64 before, qint64 now)
{
    return QStringLiteral("payload %1 from %2 to %3 bytes")
        .arg(now > before ? QStringLiteral("grew") : QStringLiteral("shrank"))
        .arg(before)
        .arg(now);
}
