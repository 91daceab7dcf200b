// SPDX-License-Identifier: MIT
#pragma once

#include <QRegularExpression>
#include <QStringList>

/// Fails the running test when a warning or a critical message that nobody allowed was printed during the
/// life of this object (from any thread). Create it in a test function, or in init() and destroy it in
/// cleanup(). At most one exists at a time.
///
/// It sees messages before QtTest does: use allow() in place of QTest::ignoreMessage().
class FatalMessages
{
public:
    FatalMessages();
    /// Restores the previous message handler, then fails the test once per unexpected message.
    ~FatalMessages();
    FatalMessages(const FatalMessages &) = delete;
    FatalMessages &operator=(const FatalMessages &) = delete;

    /// Swallows every message from now on that the pattern matches somewhere.
    void allow(const QRegularExpression &pattern);
    void allow(const QString &pattern) { allow(QRegularExpression(pattern)); }
    /// Every warning and critical message so far, allowed ones too.
    QStringList seen() const;

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &message);

    QList<QRegularExpression> m_allowed;
    QStringList m_seen;
    QStringList m_unexpected; ///< those of them that nobody allowed before
    QtMessageHandler m_previous = nullptr;
};
