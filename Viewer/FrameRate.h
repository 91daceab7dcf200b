// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <deque>

/// How often frames come. Counts them over the last second, and takes two seconds without one as their end.
class FrameRate : public QObject
{
    Q_OBJECT

public:
    explicit FrameRate(QObject *parent = nullptr);

    /// A frame has come.
    void count();
    /// The next frame is the first one again.
    void restart() { m_arrivals.clear(); }
    /// Over the last second, or between the last two frames; 0 when none came for two seconds.
    double framesPerSecond() const;

Q_SIGNALS:
    /// Frames have stopped coming.
    void ended();

private:
    QElapsedTimer m_clock;
    QTimer m_silence; ///< fires when frames have stopped coming
    std::deque<qint64> m_arrivals; ///< ms of the frames that count for the rate
};
