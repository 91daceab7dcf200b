// SPDX-License-Identifier: MIT
#include <QJsonArray>

#include "Tools/cli/Places.h"
#include "Tools/cli/Records.h"

ExitCode getFeatures(OpenDevice &device, Task &task)
{
    std::optional<std::vector<Persistence::Entry>> places = placesOf(task);
    if (!places)
        return BadUsage;
    ExitCode code = Done;
    QJsonArray records;
    Selectors selectors(device.map());
    for (Persistence::Entry &entry : *places) {
        const Persistence::Outcome outcome = readNow(device.map(), entry, selectors);
        if (!device.goesOn())
            return endOf(device, task);
        entry.value = outcome.found;
        if (!outcome.isDone()) {
            noteFailure(task, entry, outcome);
            code = outcome.result == Persistence::Result::TimedOut ? DeviceLost : NotTaken;
        } else if (task.output.isJson()) {
            records.append(recordOf(entry));
        } else {
            task.output.line(task.options.valueOnly ? textOfBytes(entry.value) : lineOf(entry));
        }
    }
    task.output.add({{QStringLiteral("device"), device.id()}, {QStringLiteral("features"), records}});
    const ExitCode back = selectors.putBack(task);
    return code == Done ? back : code;
}
