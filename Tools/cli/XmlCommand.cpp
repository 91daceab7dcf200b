// SPDX-License-Identifier: MIT
#include "Tools/SettingsFile.h"
#include "Tools/cli/Commands.h"

ExitCode printDescription(OpenDevice &device, Task &task)
{
    const QByteArray description = device.device().description();
    if (task.words.empty() || task.words.front() == "-") {
        task.output.bytes(description);
        return Done;
    }
    QString error;
    if (SettingsFile::writeBytes(fileFor(device, task.words.front()), description, &error))
        return Done;
    task.output.note(error);
    return FileFailed;
}
