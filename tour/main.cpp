// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QCommandLineParser>
#include <QTemporaryDir>

#include "Host/AutomaticSearch.h"
#include "Host/HostContext.h"
#include "Simulation/SimulatedDevices.h"
#include "Viewer/MessageLog.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/ViewerStyle.h"
#include "Viewer/ViewerWindow.h"
#include "tour/Tour.h"

namespace {

/// The directory for the screenshots; explains itself and ends the program when there is none.
QString parse(QCommandLineParser &parser, const QCommandLineOption &language)
{
    parser.setApplicationDescription(QStringLiteral("Walks through the viewer and saves a screenshot of each step."));
    parser.addHelpOption();
    parser.addOption(language);
    parser.addPositionalArgument(QStringLiteral("DIR"), QStringLiteral("Where the screenshots go."));
    parser.process(*QCoreApplication::instance());
    const QStringList languages = {QStringLiteral("English"), QStringLiteral("Chinese")};
    if (parser.positionalArguments().size() != 1 || !languages.contains(parser.value(language)))
        parser.showHelp(2);
    return parser.positionalArguments().first();
}

} // namespace

int main(int argc, char **argv)
{
    enableHighDpi();
    QApplication application(argc, argv);
    QApplication::setApplicationVersion(QStringLiteral(PARAMTERWND_VERSION));
    QCommandLineParser parser;
    const QCommandLineOption language(QStringLiteral("language"), QStringLiteral("English (default) or Chinese."),
                                      QStringLiteral("NAME"), QStringLiteral("English"));
    const QString directory = parse(parser, language);
    // A tour starts like the first run of a new user and leaves no settings behind.
    const QTemporaryDir scratch;
    const DeviceFinder nothing = [] { return std::vector<FoundDevice>(); }; // searches see what is added here
    HostContext::Options options{scratch.filePath(QStringLiteral("tour.ini")), nothing};
    options.producers.emplace(); // those that the steps add
    options.onlyGivenProducers = true;
    HostContext context(std::move(options));
    for (std::unique_ptr<Device> &device : makeSimulatedDevices())
        context.devices().add(std::move(device));
    const MessageLog messages;
    applyViewerStyle(application);
    context.setLanguage(parser.value(language));
    ViewerWindow window(context);
    window.commands().showDeveloperMenu();
    window.show();
    context.automaticSearch().start();
    return Tour(window, directory).run();
}
