// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <string>

#include <QObject>
#include <QTimer>
#include <QVector>

#include <GenApi/GenApi.h>

#include "PanelBase/ReadingTime.h"
#include "PanelBase/SilenceProbe.h"

/// How much of its device a panel reads when, so that neither a slow device nor a silent one freezes the panel.
///
/// Reading goes on at once as long as it is fast. When the device has kept the panel waiting for 50 ms in one turn of
/// the event loop, what is left joins a queue and is read in slices between events, what is in view first. A
/// TimeoutException, or a read that waits more than a second, makes the device silent: a SilenceProbe asks when it is
/// back, after 2, 4, 8 and from then on 10 seconds. Behind a port that fails fast a try costs nothing, so it is made
/// each second and whenever something is to be read. What the user asks for is never held back. Whoever reads what can
/// wait asks hasTime() before.
///
/// GUI thread only. No lock of a node map may be held when stop() is called.
class DeviceReading : public QObject
{
    Q_OBJECT

public:
    struct Timing
    {
        std::chrono::milliseconds budget{50}; ///< of reads in one turn of the event loop
        std::chrono::milliseconds slice{25}; ///< of those that have waited
        std::chrono::milliseconds longest{1000}; ///< of one read
        SilenceProbe::Timing silence;
    };

    /// Something that can wait for its turn to read. Must forget() itself before it goes.
    class Job
    {
    public:
        virtual ~Job() = default;
        /// Whether what it reads next is to be seen now.
        virtual bool isInView() const = 0;
        /// Reads a little, through read(). False when there is nothing left to read.
        virtual bool readNext() = 0;
        /// A slice has read for it: shows what is new. Reads nothing.
        virtual void endSlice() { }
    };

    DeviceReading();
    explicit DeviceReading(const Timing &timing);
    ~DeviceReading() override;

    /// What log lines call the device.
    void setDeviceName(const QString &device) { m_deviceName = device; }
    const QString &deviceName() const { return m_deviceName; }

    /// Whether something may be read now that can wait: the device answers and there is time left in this turn.
    bool hasTime();
    /// The device does not answer. Stays true once stop() was called.
    bool isSilent() const { return m_isSilent; }
    /// Runs `access`, which reads `node` (null: none that could be read again), and counts its time. Passes on what
    /// it throws; a TimeoutException makes the device silent. Throws one for a node that is left out for a while, since
    /// it alone does not answer.
    template <class Access>
    void read(GenApi::INode *node, Access &&access);
    /// Runs `reads`, whose calls of read() are either all made in one turn or not at all: for hasTime() they count as
    /// one.
    template <class Reads>
    void readTogether(Reads &&reads)
    {
        const Measured measured(*this);
        reads();
    }
    /// The same as read() for writes, which may take as long as the device needs for them. One that succeeds ends a
    /// silence.
    template <class Access>
    void write(GenApi::INode *node, Access &&access);
    /// The same for a write by name, `call`, which returns 0 on success: one that fails after more than a second makes
    /// the device silent. Returns what it returns. A silent device is tried once in a turn, further calls are refused
    /// with -1. What it has cost is time of this turn.
    template <class Call>
    int writeByName(Call &&call);

    /// Queues a job; one that is queued stays in its place.
    void later(Job *job);
    void forget(Job *job);
    /// Whether jobs wait, or would if the device answered.
    bool isBusy() const { return !m_jobs.isEmpty(); }
    /// The device may be back: a silent one is asked at once.
    void retry();
    /// The device must not be touched any more: all jobs are dropped. Waits for a read that a silent device has not
    /// answered yet.
    void stop();

Q_SIGNALS:
    /// The device has stopped answering: what was read last is old. Never during a read.
    void silenced();
    /// It answers again. Never during a read.
    void revived();
    /// A feature was just written, or refused to be, by the functions of NodeWrites, which say what they tell. Raised
    /// in the middle of that write.
    void written(const QString &device, const QString &feature, const QString &value, const QString &refusal);

private:
    using Clock = ReadingTime::Clock;

    /// Counts the time of one outermost read, however it ends.
    class Measured
    {
    public:
        explicit Measured(DeviceReading &reading) : m_reading(reading) { ++m_reading.m_depth; }
        ~Measured()
        {
            if (--m_reading.m_depth == 0)
                m_reading.count(m_time.elapsed());
        }
        Clock::duration elapsed() const { return m_time.elapsed(); }

    private:
        DeviceReading &m_reading;
        const ReadingTime m_time;
    };

    template <class Access>
    void attempt(GenApi::INode *node, Access &&access);
    void refuseLeftOut(GenApi::INode *node) const;
    void count(Clock::duration duration);
    void spend(Clock::duration duration);
    void startTurn();
    void nextTurn();
    Job *nextJob() const;
    void fallSilent(GenApi::INode *node, const std::string &reason, Clock::duration cost);
    void revive();
    void hear();

    const Timing m_timing;
    QString m_deviceName;
    QTimer m_turn; ///< fires when the events of this turn are done; runs while time was spent or jobs wait
    Clock::duration m_spent{0}; ///< by reads, and writes by name, in this turn
    Clock::duration m_limit; ///< of that
    Clock::duration m_usual{0}; ///< what a read has taken lately
    int m_depth = 0; ///< of reads within reads
    QVector<Job *> m_jobs;
    QVector<Job *> m_served; ///< in this slice
    SilenceProbe m_probe;
    bool m_isSilent = false;
    bool m_isStopped = false;
    bool m_isTried = false; ///< a silent device, in this turn
};

template <class Access>
void DeviceReading::attempt(GenApi::INode *node, Access &&access)
{
    const Clock::time_point begin = Clock::now();
    try {
        access();
    } catch (const GenICam::TimeoutException &error) {
        fallSilent(node, error.GetDescription(), Clock::now() - begin);
        throw;
    }
}

template <class Access>
void DeviceReading::read(GenApi::INode *node, Access &&access)
{
    refuseLeftOut(node);
    const Measured measured(*this);
    attempt(node, access);
    const Clock::duration waited = measured.elapsed();
    if (waited > m_timing.longest)
        fallSilent(node, "a read took more than a second", waited);
    else if (node && waited > Clock::duration::zero())
        m_probe.noteAnswer(node);
}

template <class Access>
void DeviceReading::write(GenApi::INode *node, Access &&access)
{
    attempt(node, access);
    hear();
}

template <class Call>
int DeviceReading::writeByName(Call &&call)
{
    if (m_isSilent && m_isTried)
        return -1;
    const Clock::time_point begin = Clock::now();
    const ReadingTime time;
    const int result = call();
    m_isTried = true;
    spend(time.elapsed());
    if (result == 0)
        hear();
    else if (Clock::now() - begin > m_timing.longest)
        fallSilent(nullptr, "a write failed after more than a second", Clock::now() - begin);
    return result;
}
