// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>

#include <QHash>
#include <QString>

/// Lets something that happens again and again be told once for each cause and minute. One thread at a time.
class OncePerMinute
{
public:
    /// The time since any moment; it never goes back.
    using Clock = std::function<std::chrono::milliseconds()>;
    static std::chrono::milliseconds steadyTime();

    explicit OncePerMinute(Clock clock = steadyTime) : m_clock(std::move(clock)) { }

    /// To be called when it happens, `times` at once. The result is 0 when it is not to be told now, else how often it
    /// has happened since it was told last.
    qint64 count(const QString &cause, qint64 times = 1);

private:
    struct Cause
    {
        std::chrono::milliseconds next{0}; ///< when it may be told again
        qint64 untold = 0;
    };

    Clock m_clock;
    QHash<QString, Cause> m_causes;
};
