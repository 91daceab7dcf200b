// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>

#include <QObject>
#include <QString>

#include "Devices/FrameCounts.h"
#include "Devices/OncePerMinute.h"
#include "Features/HandOver.h"

/// Counts what becomes of the frames of one device. Frames are counted on any thread, the rest is of the GUI thread.
class FrameTally : public QObject
{
    Q_OBJECT

public:
    explicit FrameTally(OncePerMinute::Clock clock = OncePerMinute::steadyTime) : m_reports(std::move(clock)) { }

    /// An acquisition starts. On the GUI thread.
    void restart();
    /// Any thread.
    void count(FrameFate fate, qint64 frames = 1);
    FrameCounts counts() const;

Q_SIGNALS:
    /// Faulty frames have come, or none are counted any more. On the GUI thread, once for all that came meanwhile.
    void changed();
    /// What a person should find in the log. On the thread that counts.
    void reported(const QString &line);

private:
    /// The line for the log, if one is due. Under the lock.
    QString reportOf(FrameFate fate, qint64 frames);
    void tellChange();

    HandOver m_handOver;
    mutable std::mutex m_lock; ///< guards what follows
    FrameCounts m_counts;
    OncePerMinute m_reports;
    bool m_isTelling = false; ///< changed() is on its way
};

/// How reports name that a frame has got another size, in bytes.
QString payloadChange(qint64 before, qint64 now);
