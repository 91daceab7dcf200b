// SPDX-License-Identifier: MIT
#include "Devices/gentl/GentlFinder.h"

#include <algorithm>
#include <condition_variable>
#include <thread>
#include <utility>

#include <QDir>
#include <QFileInfo>

#include "Devices/gentl/BoundedCall.h"
#include "Devices/gentl/ProducerWalk.h"

namespace {

constexpr std::chrono::seconds CheckSlack(5); // of trying a file, which has a limit of its own
constexpr std::chrono::seconds CloseLimit(1);

QString canonical(const QString &file)
{
    const QString path = QFileInfo(file).canonicalFilePath();
    return path.isEmpty() ? file : path;
}

} // namespace

/// One producer. Lives until both the search and the threads have let go of it.
class ProducerSearch::Worker : public std::enable_shared_from_this<Worker>
{
public:
    Worker(QString path, std::shared_ptr<ProducerCheck> producerCheck, const Options &options)
        : m_file(std::move(path)), m_check(std::move(producerCheck)), m_tell(options.report),
          m_usualLimit(options.stepLimit), m_checkLimit(options.checkLimit + CheckSlack)
    { }

    const QString &file() const { return m_file; }

    /// Does nothing while a search is running.
    void start()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (std::exchange(m_isBusy, true))
            return;
        m_stepEnd = Clock::now() + m_checkLimit;
        std::thread([shared = shared_from_this()] { shared->run(); }).detach();
    }

    /// Returns when the search has ended, or one step of it takes too long.
    void await()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        while (m_isBusy && Clock::now() < m_stepEnd)
            m_changed.wait_until(lock, m_stepEnd);
        if (std::exchange(m_isHung, m_isBusy) == m_isBusy)
            return;
        const QString line = m_isHung ? QStringLiteral("does not come back %1 and is left alone").arg(m_step)
                                      : QStringLiteral("has come back");
        lock.unlock();
        tell(line);
    }

    /// What the last search has seen; nothing of a producer that hangs.
    std::pair<ProducerReport, std::vector<FoundDevice>> result() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_isBusy)
            return {m_report, m_found};
        ProducerReport report;
        report.file = m_file;
        report.problem = QStringLiteral("it does not come back ") + m_step;
        return {report, {}};
    }

private:
    using Clock = std::chrono::steady_clock;

    void run()
    {
        ProducerWalk::Result result;
        result.report.file = m_file;
        step(QStringLiteral("while it is tried"), m_checkLimit);
        const ProducerVerdict verdict = m_check->verdict(m_file);
        if (verdict.isGood)
            result = m_walk.run(m_file, [this](const QString &name) { step(name, m_usualLimit); });
        else
            result.report.problem = verdict.problem;
        const QString problem = result.report.problem;
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (std::exchange(m_toldProblem, problem) != problem && !problem.isEmpty())
            tell(QStringLiteral("is not used: ") + problem);
        m_report = std::move(result.report);
        m_found = std::move(result.found);
        m_isBusy = false;
        m_changed.notify_all();
    }

    void step(const QString &name, std::chrono::milliseconds limit)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_step = name;
        m_stepEnd = Clock::now() + limit;
        m_changed.notify_all();
    }

    void tell(const QString &line) const
    {
        if (m_tell)
            m_tell(QStringLiteral("The producer %1 %2").arg(m_file, line));
    }

    const QString m_file;
    const std::shared_ptr<ProducerCheck> m_check;
    const std::function<void(const QString &line)> m_tell;
    const std::chrono::milliseconds m_usualLimit; ///< of a step
    const std::chrono::milliseconds m_checkLimit;
    ProducerWalk m_walk; ///< of the thread
    mutable std::mutex m_mutex; ///< guards what follows
    std::condition_variable m_changed;
    QString m_step;
    Clock::time_point m_stepEnd; ///< when it takes too long
    bool m_isBusy = false;
    bool m_isHung = false;
    QString m_toldProblem;
    ProducerReport m_report;
    std::vector<FoundDevice> m_found;
};

ProducerSearch::ProducerSearch(Options options)
    : m_options(std::move(options)), m_check(std::make_shared<ProducerCheck>(m_options.verdicts, m_options.checkLimit))
{ }

ProducerSearch::~ProducerSearch()
{
    release(std::move(m_workers));
}

std::vector<FoundDevice> ProducerSearch::find()
{
    takeFiles();
    for (const std::shared_ptr<Worker> &worker : m_workers)
        worker->start();
    std::vector<FoundDevice> all;
    std::vector<ProducerReport> reports;
    for (const std::shared_ptr<Worker> &worker : m_workers) {
        worker->await();
        auto [report, found] = worker->result();
        reports.push_back(std::move(report));
        all.insert(all.end(), found.begin(), found.end());
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_reports = std::move(reports);
    return all;
}

void ProducerSearch::takeFiles()
{
    std::vector<std::shared_ptr<Worker>> before = std::exchange(m_workers, {});
    for (const QString &name : m_options.files ? m_options.files() : QStringList()) {
        const QString file = canonical(name);
        const auto isOf = [&file](const std::shared_ptr<Worker> &worker) { return worker->file() == file; };
        if (std::any_of(m_workers.begin(), m_workers.end(), isOf))
            continue;
        const auto known = std::find_if(before.begin(), before.end(), isOf);
        m_workers.push_back(known != before.end() ? std::move(*known)
                                                  : std::make_shared<Worker>(file, m_check, m_options));
        if (known != before.end())
            before.erase(known);
    }
    release(std::move(before));
}

void ProducerSearch::release(std::vector<std::shared_ptr<Worker>> workers)
{
    if (workers.empty())
        return;
    boundedCall(CloseLimit, [released = std::move(workers)]() mutable {
        released.clear();
        return true;
    });
}

std::vector<ProducerReport> ProducerSearch::reports() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_reports;
}

void ProducerSearch::checkAgain(const QString &file)
{
    m_check->forget(canonical(file));
}

DeviceFinder gentlFinder(std::shared_ptr<ProducerSearch> search)
{
    return [search = std::move(search)] { return search->find(); };
}

QStringList producersIn(const QString &directory)
{
    QStringList files;
    for (const QFileInfo &file : QDir(directory).entryInfoList({QStringLiteral("*.cti")}, QDir::Files, QDir::Name))
        files << file.absoluteFilePath();
    return files;
}

QStringList producersOfEnvironment()
{
    QStringList files;
    const QString path = qEnvironmentVariable("GENICAM_GENTL64_PATH");
    for (const QString &directory : path.split(QDir::listSeparator(), Qt::SkipEmptyParts))
        files << producersIn(directory);
    files.removeDuplicates();
    return files;
}
