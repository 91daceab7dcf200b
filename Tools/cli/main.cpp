// SPDX-License-Identifier: MIT
#include <cstdio>
#include <cstdlib>

#include <QCoreApplication>
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QTextCodec>
#endif

#include "Tools/cli/Commands.h"
#include "Tools/cli/DeviceChoice.h"
#include "Tools/cli/Interrupt.h"

namespace {

/// Names of files and arguments are UTF-8, whatever the locale says.
void useUtf8()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
#endif
}

std::unique_ptr<OpenDevice> opened(const KnownDevice &known, Output &output)
{
    QString error;
    std::unique_ptr<OpenDevice> device = OpenDevice::open(known.create(), &error);
    if (!device)
        output.note(error);
    return device;
}

ExitCode runOn(const KnownDevice &known, Task &task)
{
    const std::unique_ptr<OpenDevice> device = opened(known, task.output);
    if (!device)
        return NoDevice;
    const Command &command = *task.options.command;
    const bool printsLines = (command.flags & Command::Json) != 0 && !task.output.isJson();
    if (!task.options.allOf.empty() && printsLines)
        task.output.line(QStringLiteral("# ") + device->id());
    return command.run(*device, task);
}

/// The command on one device after the other; the first failure counts.
ExitCode runOnEach(const std::vector<KnownDevice> &chosen, Task &task)
{
    ExitCode result = Done;
    for (const KnownDevice &known : chosen) {
        const ExitCode code = Interrupt::happened() ? Interrupted : runOn(known, task);
        result = result == Done ? code : result;
    }
    return result;
}

ExitCode runOnAll(const std::vector<KnownDevice> &chosen, Task &task)
{
    OpenDevices devices;
    for (const KnownDevice &known : chosen) {
        if (std::unique_ptr<OpenDevice> device = opened(known, task.output))
            devices.push_back(std::move(device));
    }
    const bool isComplete = devices.size() == chosen.size();
    const ExitCode code = devices.empty() ? NoDevice : task.options.command->runOnAll(std::move(devices), task);
    return code == Done && !isComplete ? NoDevice : code;
}

/// The devices would all write the same file.
bool isFileShared(const Task &task)
{
    const bool writesFile = (task.options.command->flags & Command::FilePerDevice) && !task.words.empty();
    return writesFile && task.words.back() != "-" && task.words.back().find("{id}") == std::string::npos;
}

ExitCode runOnDevices(const Options &options, Output &output)
{
    QString error;
    Task task{options, options.words, output};
    std::vector<KnownDevice> chosen;
    if (options.namesDevices()) {
        chosen = devicesOfOptions(options, &error);
    } else {
        chosen = devicesNamed(options.words.front(), options, &error);
        task.words.erase(task.words.begin());
    }
    if (chosen.empty()) {
        output.note(error);
        return NoDevice;
    }
    if (chosen.size() > 1 && isFileShared(task)) {
        output.note(
            QStringLiteral("all %1 devices would write the same file: put {id} into its name").arg(chosen.size()));
        return BadUsage;
    }
    return options.command->run ? runOnEach(chosen, task) : runOnAll(chosen, task);
}

ExitCode run(const Options &options)
{
    Output output(options.isJson);
    Task task{options, options.words, output};
    ExitCode code = Done;
    if (!options.command->choosesItself())
        code = runOnDevices(options, output);
    else if (options.command->flags & Command::Devices)
        code = compareSettings(task);
    else
        code = listDevices(task);
    if (options.isJson && !(options.command->flags & Command::Watching)) // which prints lines of JSON
        output.document(!options.allOf.empty() || !(options.command->flags & Command::Devices));
    return output.isBroken() && code == Done ? FileFailed : code;
}

} // namespace

int main(int argc, char **argv)
{
    const Options options = Options::parse(argc, argv);
    if (!options.command) {
        std::fputs(options.text.c_str(), options.exitCode == Done ? stdout : stderr);
        return options.exitCode;
    }
    const QCoreApplication application(argc, argv);
    useUtf8();
    Interrupt::watch();
    const ExitCode code = run(options);
    if (isSearchHanging())
        std::_Exit(code);
    return code;
}
