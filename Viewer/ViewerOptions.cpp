// SPDX-License-Identifier: MIT
#include "Viewer/ViewerOptions.h"

#include <QCommandLineParser>
#include <QHash>

namespace {

struct OptionSpec
{
    const char *name;
    const char *value; ///< what stands for the value in the usage text; empty: a flag
    const char *text;
    QString ViewerOptions::*target;
    bool ViewerOptions::*flag;
    QStringList ViewerOptions::*list = nullptr; ///< of an option that may stand there several times
};

const OptionSpec Specs[] = {
    {"genicam", "FILE", "Open the GenICam camera description FILE (XML or ZIP) without a camera.",
     &ViewerOptions::description, nullptr},
    {"device", "ID", "Open the device ID at the start.", &ViewerOptions::device, nullptr},
    {"dump", "", "Print the rows of the feature tree of --genicam or --device and exit.", nullptr,
     &ViewerOptions::dump},
    {"simulated", "", "Do not search for cameras; offer the simulated devices only, and what --producer reaches.",
     nullptr, &ViewerOptions::simulatedOnly},
    {"producer", "FILE",
     "Search with the GenTL producer FILE, too. May be given several times. Those in the directories of "
     "GENICAM_GENTL64_PATH, and those that were added in the viewer, need no option.",
     nullptr, nullptr, &ViewerOptions::producers},
    {"list-transports", "",
     "Print what each way to cameras sees, or why it sees nothing: the built-in search and each GenTL producer; and "
     "exit.",
     nullptr, &ViewerOptions::transports},
    {"developer", "", "Offer the switches for developers of the panel in the View menu.", nullptr,
     &ViewerOptions::developer},
    {"language", "NAME", "Language of the user interface: English or Chinese.", &ViewerOptions::language, nullptr},
    {"settings", "FILE", "Keep the settings in FILE.", &ViewerOptions::settings, nullptr},
    {"help", "", "Print this text and exit.", nullptr, &ViewerOptions::help},
    {"version", "", "Print the version and exit.", nullptr, &ViewerOptions::version},
};

void addOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(QStringLiteral("Shows and edits the features of GenICam cameras."));
    for (const OptionSpec &spec : Specs) {
        const QStringList names = spec.flag == &ViewerOptions::help
            ? QStringList({QStringLiteral("h"), QStringLiteral("help")})
            : QStringList(QLatin1String(spec.name));
        parser.addOption({names, QLatin1String(spec.text), QLatin1String(spec.value)});
    }
}

/// A sentence when the options do not fit together.
QString contradiction(const ViewerOptions &options)
{
    const QStringList languages = {QString(), QStringLiteral("English"), QStringLiteral("Chinese")};
    if (!languages.contains(options.language))
        return QStringLiteral("Unknown language \"%1\": English or Chinese is possible.").arg(options.language);
    if (options.dump && options.transports)
        return QStringLiteral("--dump and --list-transports exclude each other.");
    if (options.dump && options.description.isEmpty() == options.device.isEmpty())
        return QStringLiteral("--dump needs either --genicam or --device.");
    return QString();
}

} // namespace

ViewerOptions ViewerOptions::parse(const QStringList &arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    ViewerOptions result;
    if (!parser.parse(arguments))
        result.error = parser.errorText();
    else if (!parser.positionalArguments().isEmpty())
        result.error = QStringLiteral("Unexpected argument \"%1\".").arg(parser.positionalArguments().first());
    for (const OptionSpec &spec : Specs) {
        const QString name = QLatin1String(spec.name);
        if (spec.flag)
            result.*spec.flag = parser.isSet(name);
        else if (spec.list)
            result.*spec.list = parser.values(name);
        else
            result.*spec.target = parser.value(name);
    }
    if (result.error.isEmpty())
        result.error = contradiction(result);
    return result;
}

QString ViewerOptions::helpText()
{
    QCommandLineParser parser;
    addOptions(parser);
    return parser.helpText();
}
