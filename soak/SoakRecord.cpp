// SPDX-License-Identifier: MIT
#include "soak/SoakRecord.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstring>

#include <unistd.h>

// Of the sanitizers' runtime, if there is one.
extern "C" __attribute__((weak)) void
__sanitizer_set_death_callback(void (*callback)()); // NOLINT(bugprone-reserved-identifier)

namespace {

constexpr int KeptActions = 50;
constexpr unsigned StepLimit = 120; ///< s
constexpr std::array Signals = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGALRM};

SoakRecord *current = nullptr;
/// What is printed when the program dies; a dying program must not make it.
std::array<char, 32 * 1024> lastWords;

void sayLastWords()
{
    const ssize_t written = write(STDERR_FILENO, lastWords.data(), std::strlen(lastWords.data()));
    static_cast<void>(written); // nobody is left to be told
}

void die(int signal)
{
    constexpr char Reason[] = "The run died, or a step did not end.\n";
    const ssize_t written = write(STDERR_FILENO, Reason, sizeof Reason - 1);
    static_cast<void>(written);
    sayLastWords();
    std::signal(signal, SIG_DFL);
    std::raise(signal == SIGALRM ? SIGABRT : signal);
}

/// What the offscreen platform says of windows: it has no place for hints, order and grabs. And what the panel says of
/// a simulated device that is unplugged.
bool isAllowed(const QString &message)
{
    return message.contains(QLatin1String("This plugin does not support "))
        || (message.startsWith(QLatin1String("An error is raised"))
            && message.contains(QLatin1String("SimulatedPort")));
}

} // namespace

SoakRecord::SoakRecord(quint64 seed) : m_seed(seed)
{
    Q_ASSERT(!current);
    current = this;
    m_previous = qInstallMessageHandler(&SoakRecord::takeMessage);
    if (__sanitizer_set_death_callback)
        __sanitizer_set_death_callback(&sayLastWords);
    for (const int signal : Signals) {
        // A sanitizer's own report of a crash says more.
        if (signal == SIGALRM || !__sanitizer_set_death_callback)
            std::signal(signal, &die);
    }
}

SoakRecord::~SoakRecord()
{
    alarm(0);
    qInstallMessageHandler(m_previous);
    for (const int signal : Signals)
        std::signal(signal, SIG_DFL);
    lastWords[0] = '\0';
    current = nullptr;
}

void SoakRecord::begin(int step)
{
    m_step = step;
    alarm(StepLimit);
    m_actions << QString::number(step);
    if (m_actions.size() > KeptActions)
        m_actions.removeFirst();
}

void SoakRecord::note(const QString &deed)
{
    if (m_actions.isEmpty())
        m_actions << QString();
    m_actions.last() += QLatin1Char(' ') + deed;
    prepareLastWords();
}

void SoakRecord::fail(const QString &reason)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_failures << QStringLiteral("step %1: %2").arg(m_step).arg(reason);
}

bool SoakRecord::hasFailed() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return !m_failures.isEmpty();
}

QString SoakRecord::report() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    QStringList lines{QStringLiteral("The last actions:")};
    lines += m_actions;
    lines += m_failures;
    lines += QStringLiteral("seed %1, step %2").arg(m_seed).arg(m_step);
    return lines.join(QLatin1Char('\n'));
}

void SoakRecord::print(const QString &line)
{
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

void SoakRecord::prepareLastWords() const
{
    const QByteArray words = report().toUtf8() + '\n';
    const auto count = std::min(std::size_t(words.size()), lastWords.size() - 1);
    std::memcpy(lastWords.data(), words.constData() + (std::size_t(words.size()) - count), count);
    lastWords[count] = '\0';
}

void SoakRecord::takeMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (!current || isAllowed(text))
        return;
    if (type == QtWarningMsg || type == QtCriticalMsg)
        current->fail(QStringLiteral("message of %1: %2").arg(QLatin1String(context.category), text));
    if (current->m_previous)
        current->m_previous(type, context, text);
}
