// SPDX-License-Identifier: MIT
#include "support/FatalMessages.h"

#include <QtTest>

#include <mutex>

namespace {

std::mutex mutex;
FatalMessages *active = nullptr;

} // namespace

FatalMessages::FatalMessages()
{
    // The offscreen platform reports this for every window; it says nothing about the code under test.
    allow(QStringLiteral("does not support propagateSizeHints"));
    // The style text of plain buttons writes a colour with an alpha value as rgb(), which Qt understands.
    allow(QStringLiteral("^QCssParser::parseColorValue: Specified color without alpha value"));
    const std::lock_guard<std::mutex> lock(mutex);
    Q_ASSERT(!active);
    active = this;
    m_previous = qInstallMessageHandler(&FatalMessages::handle);
}

FatalMessages::~FatalMessages()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        qInstallMessageHandler(m_previous);
        active = nullptr;
    }
    for (const QString &message : std::as_const(m_unexpected))
        QTest::qFail(qPrintable(QStringLiteral("Unexpected message: ") + message), __FILE__, __LINE__);
}

void FatalMessages::allow(const QRegularExpression &pattern)
{
    const std::lock_guard<std::mutex> lock(mutex);
    m_allowed << pattern;
}

QStringList FatalMessages::seen() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return m_seen;
}

void FatalMessages::handle(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    QtMessageHandler previous = nullptr;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (!active)
            return;
        if (type == QtWarningMsg || type == QtCriticalMsg) {
            active->m_seen << message;
            for (const QRegularExpression &pattern : std::as_const(active->m_allowed)) {
                if (pattern.match(message).hasMatch())
                    return;
            }
            active->m_unexpected << message;
        }
        previous = active->m_previous;
    }
    if (previous)
        previous(type, context, message);
}
