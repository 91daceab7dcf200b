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

ExitCode runOn(const KnownDevice &known, Task &task)
{
    QString error;
    const std::unique_ptr<OpenDevice> device = OpenDevice::open(known.create(), &error);
    if (!device) {
        task.output.note(error);
        return NoDevice;
    }
    const Command &command = *task.options.command;
    const bool printsLines = (command.flags & Command::Json) != 0 && !task.output.isJson();
    if (!task.options.allOf.empty() && printsLines)
        task.output.line(QStringLiteral("# ") + device->id());
    return command.run(*device, task);
}

/// The command on all devices that were chosen; the first failure counts.
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
    ExitCode result = Done;
    for (const KnownDevice &known : chosen) {
        const ExitCode code = Interrupt::happened() ? Interrupted : runOn(known, task);
        result = result == Done ? code : result;
    }
    return result;
}

ExitCode run(const Options &options)
{
    Output output(options.isJson);
    Task task{options, options.words, output};
    ExitCode code = Done;
    if (options.command->run)
        code = runOnDevices(options, output);
    else if (options.command->flags & Command::Devices)
        code = compareSettings(task);
    else
        code = listDevices(task);
    if (options.isJson)
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
