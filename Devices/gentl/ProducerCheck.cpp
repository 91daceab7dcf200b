// SPDX-License-Identifier: MIT
#include "Devices/gentl/ProducerCheck.h"

#include <utility>

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include "Devices/gentl/Producer.h"

namespace {

constexpr int KillLimit = 1000; // ms
const QString Step = QStringLiteral("step ");

/// What a text member of a verdict is called in a document.
struct Member
{
    const char *name;
    QString ProducerVerdict::*text;
};

constexpr Member Members[] = {
    {"problem", &ProducerVerdict::problem},     {"vendor", &ProducerVerdict::vendor},
    {"model", &ProducerVerdict::model},         {"version", &ProducerVerdict::version},
    {"transport", &ProducerVerdict::transport},
};

ProducerVerdict verdictOf(const QJsonObject &object)
{
    ProducerVerdict verdict;
    for (const Member &member : Members)
        verdict.*member.text = object[QLatin1String(member.name)].toString();
    verdict.isGood = verdict.problem.isEmpty();
    return verdict;
}

QJsonObject objectOf(const ProducerVerdict &verdict)
{
    QJsonObject object;
    for (const Member &member : Members)
        object[QLatin1String(member.name)] = verdict.*member.text;
    return object;
}

/// Changes when the file does.
QString stampOf(const QString &file)
{
    const QFileInfo info(file);
    return QStringLiteral("%1 %2").arg(info.size()).arg(info.lastModified().toMSecsSinceEpoch());
}

ProducerVerdict bad(const QString &problem)
{
    ProducerVerdict verdict;
    verdict.problem = problem;
    return verdict;
}

/// The verdict in what the program has written: steps that it begins, and one line of JSON at its end.
ProducerVerdict verdictIn(const QStringList &lines, const QString &ending)
{
    QString step = QStringLiteral("at its start");
    for (const QString &line : lines) {
        const QJsonDocument document = QJsonDocument::fromJson(line.toUtf8());
        if (document.isObject())
            return verdictOf(document.object());
        if (line.startsWith(Step))
            step = line.mid(Step.size());
    }
    return bad(QStringLiteral("%1 %2").arg(ending, step));
}

/// A crash or a hang is worth remembering; everything else that is wrong with a file costs little and may be mended
/// elsewhere: a library that it needs, a driver.
bool isLasting(const ProducerVerdict &verdict, bool isTold)
{
    return verdict.isGood || !isTold;
}

} // namespace

ProducerCheck::ProducerCheck(Store store, std::chrono::milliseconds timeLimit)
    : m_store(std::move(store)), m_limit(timeLimit)
{ }

ProducerVerdict ProducerCheck::verdict(const QString &file)
{
    const QString stamp = stampOf(file);
    const auto known = [&](const QByteArray &kept) {
        const QJsonObject object = QJsonDocument::fromJson(kept).object();
        return object[QLatin1String("file")].toString() == stamp
            ? std::optional(verdictOf(object[QLatin1String("verdict")].toObject()))
            : std::nullopt;
    };
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        QByteArray &kept = m_verdicts[file];
        if (kept.isEmpty() && m_store.read)
            kept = m_store.read(file);
        if (const std::optional<ProducerVerdict> before = known(kept))
            return *before;
    }
    bool isTold = false;
    const ProducerVerdict verdict = tried(file, &isTold);
    const QByteArray document =
        QJsonDocument(QJsonObject{{QStringLiteral("file"), stamp}, {QStringLiteral("verdict"), objectOf(verdict)}})
            .toJson(QJsonDocument::Compact);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_verdicts[file] = document;
    if (m_store.write && isLasting(verdict, isTold))
        m_store.write(file, document);
    return verdict;
}

void ProducerCheck::forget(const QString &file)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_verdicts.erase(file);
    if (m_store.write)
        m_store.write(file, {});
}

ProducerVerdict ProducerCheck::tried(const QString &file, bool *isTold) const
{
    *isTold = true;
    const QString problem = libraryProblem(file);
    if (!problem.isEmpty())
        return bad(problem);
    const QString program = producerCheckProgram();
    if (program.isEmpty())
        return bad(QStringLiteral("it cannot be tried: the program paramter-producer-check is missing"));
    QProcess process;
    process.start(program, {file});
    const auto limit = static_cast<int>(m_limit.count());
    const bool hasEnded = process.waitForStarted(limit) && process.waitForFinished(limit);
    if (process.error() == QProcess::FailedToStart)
        return bad(QStringLiteral("it cannot be tried: ") + process.errorString());
    if (!hasEnded) {
        process.kill();
        process.waitForFinished(KillLimit);
    }
    *isTold = hasEnded && process.exitStatus() == QProcess::NormalExit;
    const QStringList lines = QString::fromUtf8(process.readAllStandardOutput()).split(QLatin1Char('\n'));
    return verdictIn(lines, hasEnded ? QStringLiteral("it crashes") : QStringLiteral("it does not come back"));
}

QString producerCheckProgram()
{
    const QDir here(QCoreApplication::applicationDirPath());
    for (const char *place : {".", "../libexec", "../Devices", "../../Devices"}) {
        const QFileInfo program(here, QLatin1String(place) + QStringLiteral("/paramter-producer-check"));
        if (program.isExecutable())
            return program.canonicalFilePath();
    }
    return {};
}
