// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>

#include <QElapsedTimer>
#include <QObject>

#include "Simulation/Behaviour.h"
#include "Simulation/RegisterMemory.h"

/// The inside of a simulated device: its registers and what it does with them. Knows nothing of node maps.
///
/// The public functions lock the firmware and may be called on any thread. Signals are raised on the thread that
/// caused them, with the firmware locked: connect them queued.
class Firmware : public QObject
{
    Q_OBJECT

public:
    /// `powerUpTables`: the contents of value tables, the last one wins.
    Firmware(const QByteArray &description, QByteArrayList powerUpTables, Behaviours behaviours);
    ~Firmware() override;

    /// Switches the device on: registers get their power-up values, except those that the device keeps.
    void powerUp();
    /// Lines of the value tables that make no sense.
    QByteArrayList oddLines() const { return m_odd; }

    /// The host's accesses. False when the range is not in the memory.
    bool read(void *buffer, qint64 address, qint64 length) const;
    /// A refused write leaves the memory as it is and gives the device's words in `objection`.
    bool write(const void *buffer, qint64 address, qint64 length, QString *objection);

    void elapse(std::chrono::milliseconds time);
    void frameTaken();
    /// Ends a running acquisition.
    void stopAcquisition();

    /// Calls `look` with the registers, locked.
    template <class Look>
    auto inspect(Look look) const
    {
        const std::lock_guard<std::recursive_mutex> hold(m_lock);
        return look(m_registers);
    }
    template <class Change>
    void change(Change change)
    {
        const std::lock_guard<std::recursive_mutex> hold(m_lock);
        change(m_registers);
    }

    /// For behaviours, which are called with the firmware locked.
    RegisterMemory &memory() { return m_registers; }
    const RegisterMemory &memory() const { return m_registers; }
    /// Nanoseconds since the time stamp was set to zero.
    qint64 timestamp() const { return m_clock.nsecsElapsed(); }
    void resetTimestamp() { m_clock.start(); }
    /// Begins or ends an acquisition; nothing happens when the device is already in that state.
    void setAcquiring(bool acquiring);

Q_SIGNALS:
    void acquisitionChanged(bool acquiring);
    /// An active trigger has fired; `kind` is its place in TriggerSelector.
    void triggered(int kind);
    /// The device has switched itself off and on: every register may have changed.
    void restarted();

private:
    mutable std::recursive_mutex m_lock;
    RegisterMemory m_registers;
    const QByteArrayList m_tables;
    const Behaviours m_behaviours;
    QByteArrayList m_odd;
    QElapsedTimer m_clock;
    bool m_switchedOn = false;
};
