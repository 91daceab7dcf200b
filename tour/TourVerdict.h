// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// A text of ASCII characters.
inline QString say(const char *text)
{
    return QString::fromLatin1(text);
}

/// Why a step of the tour did not do what it should.
class TourVerdict
{
public:
    /// Remembers `what` as the reason for a failure unless `holds`, or there is a reason already; returns `holds`.
    bool expect(bool holds, const QString &what)
    {
        if (!holds && m_failure.isEmpty())
            m_failure = what;
        return holds;
    }
    QString failure() const { return m_failure; }
    void forget() { m_failure.clear(); }

private:
    QString m_failure;
};
