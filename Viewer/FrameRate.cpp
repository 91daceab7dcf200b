// SPDX-License-Identifier: MIT
#include "Viewer/FrameRate.h"

namespace {

constexpr qint64 RateWindow = 1000; // ms
constexpr int Silence = 2000; // ms without a frame

} // namespace

FrameRate::FrameRate(QObject *parent) : QObject(parent)
{
    m_clock.start();
    m_silence.setSingleShot(true);
    m_silence.setInterval(Silence);
    connect(&m_silence, &QTimer::timeout, this, [this] {
        restart();
        Q_EMIT ended();
    });
}

void FrameRate::count()
{
    const qint64 now = m_clock.elapsed();
    m_arrivals.push_back(now);
    while (m_arrivals.size() > 2 && m_arrivals.front() < now - RateWindow)
        m_arrivals.pop_front();
    m_silence.start();
}

double FrameRate::framesPerSecond() const
{
    if (m_arrivals.size() < 2 || m_arrivals.back() == m_arrivals.front())
        return 0;
    return 1000.0 * double(m_arrivals.size() - 1) / double(m_arrivals.back() - m_arrivals.front());
}
