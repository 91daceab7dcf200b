// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <chrono>

#include <QHash>
#include <QObject>
#include <QTimer>

#include <GenApi/GenApi.h>

#include "Features/HandOver.h"
#include "Features/JobThread.h"

/// Asks a device that has fallen silent whether it answers again: after pauses that grow, on a thread of its own, by
/// reading what has not answered, and what has answered last before. A feature that alone does not answer is to be left
/// out for a while.
///
/// GUI thread only, but for the reads, which take the node map's lock as every access does.
class SilenceProbe : public QObject
{
    Q_OBJECT

public:
    using Clock = std::chrono::steady_clock;

    struct Timing
    {
        /// Before the tries, the last one again and again. A device that is silent again soon goes on where it was.
        std::array<std::chrono::milliseconds, 4> pauses{
            {std::chrono::seconds(2), std::chrono::seconds(4), std::chrono::seconds(8), std::chrono::seconds(10)}};
        /// A try that fails so fast costs nothing, so that this is the pause after it.
        std::chrono::milliseconds costless{50};
        std::chrono::milliseconds costlessPause{1000};
        /// How long a feature is left out that alone has not answered.
        std::chrono::milliseconds leftOut{60000};
    };

    explicit SilenceProbe(const Timing &timing);
    ~SilenceProbe() override;

    /// A feature was read from the device.
    void noteAnswer(GenApi::INode *node) { m_answered = node; }
    /// The device has fallen silent over a node, which may be null; that has cost the time.
    void begin(GenApi::INode *node, Clock::duration cost);
    /// Asks now, on the other thread, unless it is being asked.
    void ask();
    /// Asks at once, if the last try has cost nothing; true if the device answers.
    bool askAtOnce();
    /// The device was heard in another way.
    void end();
    bool isLeftOut(GenApi::INode *node) const;
    /// Nothing is asked any more. Waits for a read that is under way.
    void stop();

Q_SIGNALS:
    void answered();

private:
    struct Outcome
    {
        bool isAnswered;
        bool isOnlyOther; ///< what had not answered still does not
        Clock::duration cost;
    };
    static Outcome outcome(GenApi::INode *silent, GenApi::INode *other);
    void adopt(const Outcome &outcome);
    void pause(Clock::duration cost);

    const Timing m_timing;
    GenApi::INode *m_unanswered = nullptr;
    GenApi::INode *m_answered = nullptr;
    QHash<GenApi::INode *, Clock::time_point> m_leftOut; ///< until when
    QTimer m_pause;
    HandOver m_handOver;
    JobThread m_thread;
    Clock::time_point m_aliveSince;
    int m_tries = 0; ///< that took their time
    bool m_isCostless = false; ///< the last one did not
    bool m_isSilent = false; ///< from begin() to end()
    bool m_isAsking = false;
    bool m_isStopped = false;
};
