// SPDX-License-Identifier: MIT
#include "Tools/cli/Options.h"

#include <sstream>

#include <CLI/CLI.hpp>

#include "Tools/cli/Commands.h"

namespace {

constexpr char Footer[] =
    "DEVICE is an id, a serial number or an IP address, as list prints them. --genicam FILE stands for a camera that "
    "has\n"
    "this description and a memory of zeros, --all-of MODEL for all devices of a model, one after the other.\n"
    "FEATURE is a name, or a name with the positions of its selectors, which are put back: 'Gain[GainSelector=Red]'.\n"
    "A simulated device starts anew with each command.\n"
    "\n"
    "Exit codes:\n"
    "  0    done; compare: no differences\n"
    "  1    compare: there are differences\n"
    "  2    wrong usage\n"
    "  3    there is no such device, or it cannot be opened\n"
    "  4    some settings could not be read or written\n"
    "  5    a file or the output cannot be read or written\n"
    "  6    the device was lost\n"
    "  7    the file is of another model\n"
    "  130  interrupted; selectors are back in their places\n";

class HelpText : public CLI::Formatter
{
public:
    HelpText()
    {
        column_width(26);
        label("REQUIRED", "");
        label("TEXT", "");
    }
    std::string make_usage(const CLI::App *app, std::string name) const override
    {
        for (const Command &command : commands()) {
            if (app->get_name() == command.name)
                return "Usage: " + name + ' ' + command.arguments + (*command.arguments ? " " : "") + "[OPTIONS]\n";
        }
        return "Usage: " + name + " COMMAND ...\n";
    }
    std::string make_positionals(const CLI::App *) const override { return {}; }
    std::string make_option_opts(const CLI::Option *option) const override
    {
        return option->get_type_name().empty() ? "" : " " + option->get_type_name();
    }
};

struct FlagText
{
    unsigned flag;
    const char *name;
    const char *text;
    bool Options::*target;
};

const FlagText Flags[] = {
    {Command::Json, "--json", "Print data as JSON.", &Options::isJson},
    {Command::DryRun, "--dry-run", "Print what would change and change nothing.", &Options::isDryRun},
    {Command::AnyModel, "--other-model", "Load a file of another model, too.", &Options::takesOtherModel},
    {Command::WriteAll, "--all", "Write also what the device has already, without reading it before.",
     &Options::takesAll},
    {Command::ShowAll, "--all", "Print equal settings, too.", &Options::takesAll},
    {Command::Readings, "--readings", "Print the values of what cannot be written, too.", &Options::withReadings},
    {Command::ValueOnly, "-n,--value-only", "Print VALUE instead of FEATURE=VALUE.", &Options::valueOnly},
};

void addOptions(CLI::App &app, const Command &command, Options &options)
{
    if (*command.arguments)
        app.add_option("arguments", options.words, command.arguments);
    for (const FlagText &flag : Flags) {
        if (command.flags & flag.flag)
            app.add_flag(flag.name, options.*flag.target, flag.text);
    }
    if (command.flags & Command::Watching) {
        app.add_option("--interval", options.interval, "Time between two looks, 0.5 if it is not given.")
            ->type_name("SECONDS")
            ->check(CLI::Range(0.001, 86400.0).description(""));
        app.add_option("--rounds", options.rounds, "End after so many looks.")
            ->type_name("NUMBER")
            ->check(CLI::Range(1, 1 << 30).description(""));
    }
    if (command.flags & Command::Devices) {
        app.add_option("--genicam", options.genicam, "A description file instead of DEVICE.")->type_name("FILE");
        app.add_option("--all-of", options.allOf, "All devices of a model instead of DEVICE.")->type_name("MODEL");
    }
    app.add_option("--search-time", options.searchTime, "Longest wait for the search for cameras, 5 if not given.")
        ->type_name("SECONDS")
        ->check(CLI::Range(0.001, 3600.0).description(""));
}

/// Why the words do not fit the command; empty if they do.
std::string wrongWords(const Options &options)
{
    const Command &command = *options.command;
    const bool hasDevice = (command.flags & Command::Devices) != 0;
    if (!options.genicam.empty() && !options.allOf.empty())
        return "--genicam and --all-of exclude each other";
    const bool isCompare = hasDevice && command.choosesItself(); // whose sides count as words
    const std::size_t before = isCompare ? (options.namesDevices() ? 1 : 0) : 0;
    const std::size_t device = hasDevice && !isCompare && !options.namesDevices() ? 1 : 0;
    const std::size_t count = options.words.size() + before;
    if (count < command.leastWords + device)
        return "there are words missing: " + std::string(command.name) + ' ' + command.arguments;
    if (command.mostWords <= count && count - command.mostWords > device)
        return "there are words too many: " + std::string(command.name) + ' ' + command.arguments;
    return {};
}

void parseInto(Options &options, CLI::App &app, int argc, char **argv)
{
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        std::ostringstream help;
        std::ostringstream complaint;
        options.exitCode = app.exit(error, help, complaint) == 0 ? Done : BadUsage;
        options.text = options.exitCode == Done ? help.str() : complaint.str();
        return;
    }
    for (const Command &command : commands()) {
        if (app.got_subcommand(command.name))
            options.command = &command;
    }
    const std::string wrong = wrongWords(options);
    if (wrong.empty())
        return;
    options.command = nullptr;
    options.exitCode = BadUsage;
    options.text = "paramter: " + wrong + "\nRun with --help for more information.\n";
}

} // namespace

Options Options::parse(int argc, char **argv)
{
    Options options;
    CLI::App app("Settings of GenICam cameras: show, change, save, load and compare them.", "paramter");
    app.formatter(std::make_shared<HelpText>());
    app.footer(Footer);
    app.set_help_flag("-h,--help", "Print this text and exit.");
    app.set_version_flag("--version", PARAMTERWND_VERSION, "Print the version and exit.");
    app.require_subcommand(1);
    for (const Command &command : commands()) {
        CLI::App *sub = app.add_subcommand(command.name, command.summary);
        sub->footer(std::string("Examples:\n") + command.examples + "\nExit codes: see paramter --help.\n");
        addOptions(*sub, command, options);
    }
    parseInto(options, app, argc, argv);
    return options;
}
