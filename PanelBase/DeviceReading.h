// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <chrono>
#include <string>
#include <utility>

#include <QObject>
#include <QThreadPool>
#include <QTimer>
#include <QVector>

#include <GenApi/GenApi.h>

/// How much of its device a panel reads when, so that neither a slow device nor a silent one freezes the panel.
///
/// Reading goes on at once as long as it is fast. When it has taken 50 ms in one turn of the event loop, what is left
/// joins a queue and is read in slices between events, what is in view first. A TimeoutException, or a read that takes
/// more than a second, makes the device silent: nothing is read then but one feature after 2, 4, 8 and from then on 10
/// seconds, on a thread of this object, until the device answers. Behind a port that fails fast a try costs nothing, so
/// it is made each second and whenever something is to be read. What the user asks for is never held back.
///
/// GUI thread only, but for the reads of a silent device, which take the node map's lock as every access does.
class DeviceReading : public QObject
{
    Q_OBJECT

public:
    /// How long what may take. All times are those of the GUI thread.
    struct Timing
    {
        std::chrono::milliseconds budget{50}; ///< of reads in one turn of the event loop
        std::chrono::milliseconds slice{25}; ///< of those that have waited
        std::chrono::milliseconds longest{1000}; ///< of one read
        /// Between tries to read a silent device, the last one again and again.
        std::array<std::chrono::milliseconds, 4> pauses{
            {std::chrono::seconds(2), std::chrono::seconds(4), std::chrono::seconds(8), std::chrono::seconds(10)}};
        /// A try that fails so fast costs nothing, so that this is the pause after it.
        std::chrono::milliseconds costless{50};
        std::chrono::milliseconds costlessPause{1000};
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

    /// Whether something may be read now that can wait: the device answers and there is time left in this turn.
    bool hasTime();
    /// Nothing is read but what the user asks for. Stays true once stop() was called.
    bool isSilent() const { return m_isSilent; }
    /// Runs `access`, which reads `node` (null: none that could be read again), and counts its time. Passes on what
    /// it throws; a TimeoutException makes the device silent.
    template <class Access>
    void read(GenApi::INode *node, Access &&access);
    /// The same for writes, which may take as long as the device needs for them.
    template <class Access>
    void write(GenApi::INode *node, Access &&access);
    /// The same for a write by name, `call`, which returns 0 on success: one that fails after more than a second makes
    /// the device silent. Returns what it returns; -1, and nothing is called, for a silent device.
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
    /// It answers again, or is back in time.
    void revived();

private:
    using Clock = std::chrono::steady_clock;
    class Measured;

    void count(Clock::duration duration);
    void fallSilent(const std::string &reason, Clock::duration cost);
    void pause(Clock::duration cost);
    void probe();
    void adoptProbe(bool isAnswered, Clock::duration cost);
    void tryAtOnce();
    void startTurn();
    void nextTurn();
    Job *nextJob() const;

    const Timing m_timing;
    QString m_deviceName;
    QTimer m_turn; ///< fires when the events of this turn are done; runs while time was spent or jobs wait
    Clock::duration m_spent{0}; ///< by reads in this turn
    Clock::duration m_limit; ///< of that
    Clock::duration m_usual{0}; ///< what a read has taken lately
    int m_depth = 0; ///< of reads within reads
    QVector<Job *> m_jobs;

    bool m_isSilent = false;
    bool m_isStopped = false;
    int m_tries = 0; ///< that took their time since the device fell silent
    bool m_isCostless = false; ///< the last try failed at once
    bool m_isTried = false; ///< in this turn
    GenApi::INode *m_asked = nullptr; ///< was read last; what is read to see whether a silent device answers
    QTimer m_pause;
    bool m_isProbing = false;
    QThreadPool m_probes;
};

/// Counts the time of one outermost read, however it ends.
class DeviceReading::Measured
{
public:
    explicit Measured(DeviceReading &reading) : m_reading(reading), m_begin(Clock::now()) { ++m_reading.m_depth; }
    ~Measured()
    {
        if (--m_reading.m_depth == 0)
            m_reading.count(duration());
    }
    Clock::duration duration() const { return Clock::now() - m_begin; }

private:
    DeviceReading &m_reading;
    const Clock::time_point m_begin;
};

template <class Access>
void DeviceReading::read(GenApi::INode *node, Access &&access)
{
    const Measured measured(*this);
    write(node, std::forward<Access>(access));
    if (measured.duration() > m_timing.longest)
        fallSilent("a read took too long", measured.duration());
}

template <class Access>
void DeviceReading::write(GenApi::INode *node, Access &&access)
{
    const Clock::time_point begin = Clock::now();
    if (node && !m_isSilent)
        m_asked = node;
    try {
        access();
    } catch (const GenICam::TimeoutException &error) {
        fallSilent(error.GetDescription(), Clock::now() - begin);
        throw;
    }
}

template <class Call>
int DeviceReading::writeByName(Call &&call)
{
    if (m_isSilent)
        return -1;
    const Clock::time_point begin = Clock::now();
    const int result = call();
    if (result != 0 && Clock::now() - begin > m_timing.longest)
        fallSilent("a write failed after too long a time", Clock::now() - begin);
    return result;
}
