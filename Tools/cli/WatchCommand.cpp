// SPDX-License-Identifier: MIT
#include <chrono>
#include <thread>

#include <QDateTime>

#include "Tools/SettingsLoad.h"
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

void tell(const Watched &watched, Task &task)
{
    const QString time = QDateTime::currentDateTime().toString(Qt::ISODateWithMs);
    const bool isDone = watched.outcome.isDone();
    if (task.output.isJson()) {
        QJsonObject record = recordOf(watched.entry);
        record.insert(QStringLiteral("time"), time);
        if (!isDone)
            record.insert(QStringLiteral("reason"), wordsOf(watched.outcome));
        task.output.record(record);
    } else if (isDone) {
        task.output.line(time + QLatin1Char('\t') + lineOf(watched.entry));
    } else {
        task.output.line(time + QLatin1Char('\t') + placeOf(watched.entry) + QStringLiteral(": ")
                         + wordsOf(watched.outcome));
    }
}

/// Selectors are back when this has ended. \returns the rows that have changed
std::vector<const Watched *> look(OpenDevice &device, std::vector<Watched> &all)
{
    std::vector<const Watched *> changed;
    Persistence::SelectorGuard guard(device.map());
    for (Watched &watched : all) {
        const Persistence::Outcome now = readNow(device.map(), watched.entry, guard);
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

/// Waits and lets the device report. False when there is nothing to go on with.
bool waitUntil(Clock::time_point time, OpenDevice &device)
{
    while (device.goesOn() && Clock::now() < time)
        std::this_thread::sleep_for(
            std::min<Clock::duration>(20ms, std::max<Clock::duration>(0ms, time - Clock::now())));
    return device.goesOn();
}

} // namespace

ExitCode watchFeatures(OpenDevice &device, Task &task)
{
    const std::optional<std::vector<Persistence::Entry>> places = placesOf(task);
    if (!places)
        return BadUsage;
    std::vector<Watched> all;
    for (const Persistence::Entry &place : *places)
        all.push_back({place, {}, false});
    const auto interval =
        std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(task.options.interval));
    Clock::time_point next = Clock::now();
    for (int round = 1; waitUntil(next, device) && !task.output.isBroken(); ++round) {
        for (const Watched *one : look(device, all))
            tell(*one, task);
        if (round == task.options.rounds)
            return Done;
        next = std::max(next + interval, Clock::now());
    }
    return device.isLost() ? endOf(device, task) : Done; // Ctrl-C is the way to end it
}
