// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QStringList>
#include <QTimer>

class EventWatch;
class SoakStage;

/// How long a run lasts and what it may take.
struct SoakLimits
{
    int seconds = 60; ///< 0: without end
    int steps = 0; ///< 0: without end
    int bound = 1000; ///< of an event, in ms
    int looksEvery = 100; ///< steps between two looks
};

/// Steps on a stage until a limit is reached or one of them fails.
class SoakRun
{
public:
    SoakRun(SoakStage &stage, EventWatch &watch, const SoakLimits &limits);
    ~SoakRun();

    /// False when it failed; the record knows why.
    bool run();
    /// Digests of what was seen from time to time, which a replay sees again.
    const QStringList &looks() const { return m_looks; }

private:
    void step(int number);
    void rest();
    void answerNested();
    void setBounds();

    SoakStage &m_stage;
    EventWatch &m_watch;
    const SoakLimits m_limits;
    QTimer m_answers; ///< fires while an action waits for what it has opened
    int m_answeredLevel = 0; ///< of nested event loops
    QStringList m_looks;
    QElapsedTimer m_clock;
    qint64 m_settledHeap = 0; ///< bytes in use at the last rest of the first minutes
    qint64 m_settledMemory = 0; ///< of the whole program, then
};
