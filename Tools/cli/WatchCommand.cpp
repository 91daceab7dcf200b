// SPDX-License-Identifier: MIT
#include <chrono>
#include <thread>

#include <QDateTime>

#include "Tools/SettingsLoad.h"
#include "Tools/cli/Interrupt.h"
#include "Tools/cli/Places.h"
#include "Tools/cli/Records.h"

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

/// A feature and what was told of it last.
struct Watched
{
    Persistence::Entry entry;
    Persistence::Outcome outcome;
    bool isTold = false;
};

/// A device, and its features.
struct Post
{
    std::unique_ptr<OpenDevice> device;
    std::vector<Watched> features;
};

void tell(const Post &post, const Watched &watched, Task &task)
{
    const QString time = QDateTime::currentDateTime().toString(Qt::ISODateWithMs);
    const bool isDone = watched.outcome.isDone();
    if (task.output.isJson()) {
        QJsonObject record = recordOf(watched.entry);
        record.insert(QStringLiteral("time"), time);
        record.insert(QStringLiteral("device"), post.device->id());
        if (!isDone)
            record.insert(QStringLiteral("reason"), wordsOf(watched.outcome));
        return task.output.record(record);
    }
    QStringList cells{time};
    if (!task.options.allOf.empty())
        cells += post.device->id();
    cells +=
        isDone ? lineOf(watched.entry) : QStringLiteral("%1: %2").arg(placeOf(watched.entry), wordsOf(watched.outcome));
    task.output.line(cells.join(QLatin1Char('\t')));
}

/// Selectors are back when this has ended. \returns the features that have changed
std::vector<const Watched *> look(Post &post)
{
    std::vector<const Watched *> changed;
    Selectors selectors(post.device->map());
    for (Watched &watched : post.features) {
        const Persistence::Outcome now = readNow(post.device->map(), watched.entry, selectors);
        const bool isSame = watched.isTold && now.result == watched.outcome.result && now.found == watched.outcome.found
            && now.reason == watched.outcome.reason;
        watched.isTold = true;
        watched.outcome = now;
        watched.entry.value = now.found;
        if (!isSame)
            changed.push_back(&watched);
    }
    return changed;
}

class Watch
{
public:
    Watch(OpenDevices devices, const std::vector<Persistence::Entry> &places, Task &task) : m_task(task)
    {
        for (std::unique_ptr<OpenDevice> &device : devices) {
            m_posts.push_back({std::move(device), {}});
            for (const Persistence::Entry &place : places)
                m_posts.back().features.push_back({place, {}, false});
        }
    }

    ExitCode run()
    {
        const auto interval =
            std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(m_task.options.interval));
        Clock::time_point next = Clock::now();
        for (int round = 1; waitUntil(next) && !m_task.output.isBroken(); ++round) {
            for (Post &post : m_posts)
                lookAt(post);
            if (round == m_task.options.rounds)
                break;
            next = std::max(next + interval, Clock::now());
        }
        return m_result; // Ctrl-C is the way to end it
    }

private:
    void lookAt(Post &post)
    {
        const std::vector<const Watched *> changed = look(post);
        for (const Watched *one : changed)
            tell(post, *one, m_task);
    }

    /// Waits and lets the devices report. False when there is nothing to go on with.
    bool waitUntil(Clock::time_point time)
    {
        dropLost();
        while (!m_posts.empty() && !Interrupt::happened() && Clock::now() < time) {
            std::this_thread::sleep_for(
                std::min<Clock::duration>(20ms, std::max<Clock::duration>(0ms, time - Clock::now())));
            dropLost();
        }
        return !m_posts.empty() && !Interrupt::happened();
    }

    /// The others are watched all the same.
    void dropLost()
    {
        const auto isLost = [this](const Post &post) {
            if (post.device->goesOn() || !post.device->isLost())
                return false;
            m_result = endOf(*post.device, m_task);
            return true;
        };
        m_posts.erase(std::remove_if(m_posts.begin(), m_posts.end(), isLost), m_posts.end());
    }

    Task &m_task;
    std::vector<Post> m_posts;
    ExitCode m_result = Done;
};

} // namespace

ExitCode watchFeatures(OpenDevices devices, Task &task)
{
    const std::optional<std::vector<Persistence::Entry>> places = placesOf(task);
    return places ? Watch(std::move(devices), *places, task).run() : BadUsage;
}
