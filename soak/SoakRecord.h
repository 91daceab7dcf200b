// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <mutex>

/// What a run has done, and why it failed. The record of a run that dies (a sanitizer's finding, a failed assertion, a
/// hang) is printed by its last breath. One exists at a time.
class SoakRecord
{
public:
    explicit SoakRecord(quint64 seed);
    ~SoakRecord();
    SoakRecord(const SoakRecord &) = delete;
    SoakRecord &operator=(const SoakRecord &) = delete;

    /// Begins a step, which has to end within two minutes.
    void begin(int step);
    /// Adds to what the step is doing.
    void note(const QString &deed);
    int step() const { return m_step; }
    /// Any thread.
    void fail(const QString &reason);
    /// Qt's messages of that kind and what they stand for. Any thread.
    static void takeMessage(QtMsgType type, const QMessageLogContext &context, const QString &text);

    bool hasFailed() const;
    /// Seed, step, the last fifty actions and the failures.
    QString report() const;
    /// Any line, at once.
    static void print(const QString &line);

private:
    void prepareLastWords() const;

    const quint64 m_seed;
    int m_step = 0;
    QStringList m_actions;
    mutable std::mutex m_mutex;
    QStringList m_failures;
    QtMessageHandler m_previous = nullptr;
};
