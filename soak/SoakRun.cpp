// SPDX-License-Identifier: MIT
#include "soak/SoakRun.h"

#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <utility>

#include <unistd.h>

#include "Simulation/SimulatedPort.h"
#include "soak/EventWatch.h"
#include "soak/SoakActions.h"
#include "soak/SoakRecord.h"
#include "soak/SoakStage.h"

namespace {

constexpr int AnswerInterval = 15; ///< ms
constexpr qint64 Minute = 60'000; ///< ms
/// What the panel waits for after a command (100 ms) and after a write (50 ms), and for selectors (10 ms).
constexpr int PrescribedWaits = 160; ///< ms
constexpr int SettledMinutes = 5;
constexpr int LeastMinutes = 10; ///< of a run whose memory says something
constexpr double MostGrowth = 0.02;

/// Of the whole program, in bytes.
qint64 residentMemory()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    const QList<QByteArray> pages = file.open(QIODevice::ReadOnly) ? file.readAll().split(' ') : QList<QByteArray>();
    return pages.size() > 1 ? pages[1].toLongLong() * sysconf(_SC_PAGESIZE) : 0;
}

QString digest(const QString &text)
{
    constexpr int Shown = 12;
    const QByteArray hash = QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha1).toHex();
    return QString::fromLatin1(hash.left(Shown));
}

} // namespace

SoakRun::SoakRun(SoakStage &stage, EventWatch &watch, const SoakLimits &limits)
    : m_stage(stage), m_watch(watch), m_limits(limits)
{
    QObject::connect(&m_answers, &QTimer::timeout, &m_answers, [this] { answerNested(); });
    m_answers.start(AnswerInterval);
    m_watch.setDriver(&m_answers);
}

SoakRun::~SoakRun()
{
    m_watch.setDriver(nullptr);
    m_watch.setBounds(0, 0, {});
}

void SoakRun::setBounds()
{
    const int silence = m_stage.isAnySilent() ? int(SimulatedPort::Deadline.count()) : 0;
    m_watch.setBounds(m_limits.bound, PrescribedWaits + silence, [this](const QString &event, int taken, int computed) {
        m_stage.record().fail(QStringLiteral("%1 took %2 ms (computed %3 ms)").arg(event).arg(taken).arg(computed));
    });
}

/// A menu or a dialog that an action has opened keeps the action from returning. What answers it may open another one.
void SoakRun::answerNested()
{
    if (QThread::currentThread()->loopLevel() <= m_answeredLevel || !SoakStage::openAbove())
        return;
    const int outer = std::exchange(m_answeredLevel, QThread::currentThread()->loopLevel());
    QTimer further(&m_answers); // one does not fire again until it has been handled
    QObject::connect(&further, &QTimer::timeout, &further, [this] { answerNested(); });
    further.start(AnswerInterval);
    answerOpenAbove(m_stage);
    m_answeredLevel = outer;
}

void SoakRun::step(int number)
{
    m_stage.record().begin(number);
    setBounds();
    doSomething(m_stage);
    m_stage.settle();
    const QString displaced = m_stage.displacedDocks();
    if (!displaced.isEmpty())
        m_stage.record().fail(QStringLiteral("docks are not in place: ") + displaced);
    if (number % m_limits.looksEvery == 0) {
        m_looks << digest(m_stage.look());
        if (m_limits.looksEvery > 1)
            SoakRecord::print(QStringLiteral("step %1: %2").arg(number).arg(m_looks.last()));
    }
}

bool SoakRun::run()
{
    QElapsedTimer clock;
    clock.start();
    qint64 nextMinute = Minute;
    const auto isLeft = [&](int done) {
        return !m_stage.record().hasFailed() && (m_limits.steps == 0 || done < m_limits.steps)
            && (m_limits.seconds == 0 || clock.elapsed() < qint64(m_limits.seconds) * 1000);
    };
    for (int done = 0; isLeft(done); ++done) {
        step(done + 1);
        if (clock.elapsed() < nextMinute)
            continue;
        nextMinute += Minute;
        checkEachMinute();
    }
    return !m_stage.record().hasFailed();
}

void SoakRun::checkEachMinute()
{
    m_memory << residentMemory();
    SoakRecord::print(QStringLiteral("%1 min, step %2, %3 MB, longest event %4 ms")
                          .arg(m_memory.size())
                          .arg(m_stage.record().step())
                          .arg(double(m_memory.last()) / (1 << 20), 0, 'f', 1)
                          .arg(int(EventWatch::meter()->longest())));
    if (m_memory.size() <= LeastMinutes)
        return;
    const double growth = double(m_memory.last()) / double(m_memory[SettledMinutes - 1]) - 1;
    if (growth > MostGrowth)
        m_stage.record().fail(QStringLiteral("memory has grown by %1 %").arg(growth * 100));
}
