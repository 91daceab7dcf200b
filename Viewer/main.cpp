// SPDX-License-Identifier: MIT
#include <QTextStream>

#include <cstdio>

#include "Devices/AravisDevice.h"
#include "Host/HostContext.h"
#include "Simulation/SimulatedDevices.h"
#include "Viewer/DumpRun.h"
#include "Viewer/MessageLog.h"
#include "Viewer/MeteredApplication.h"
#include "Viewer/TransportList.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/ViewerOptions.h"
#include "Viewer/ViewerStyle.h"
#include "Viewer/ViewerWindow.h"

namespace {

constexpr int UsageError = 2;

int print(const QString &text, FILE *stream, int result)
{
    QTextStream(stream) << text << QLatin1Char('\n');
    return result;
}

QStringList argumentsOf(int argc, char **argv)
{
    QStringList result;
    for (int i = 0; i < argc; ++i)
        result << QString::fromLocal8Bit(argv[i]);
    return result;
}

HostContext::Options hostOptions(const ViewerOptions &options)
{
    const DeviceFinder nothing = [] { return std::vector<FoundDevice>(); }; // producers may still be added
    HostContext::Options result;
    result.settingsFile = options.settings;
    result.finder = options.simulatedOnly ? nothing : aravisFinder(true);
    result.producers = options.producers;
    result.onlyGivenProducers = options.simulatedOnly;
    return result;
}

void addSimulatedDevices(HostContext &context)
{
    for (std::unique_ptr<Device> &device : makeSimulatedDevices())
        context.devices().add(std::move(device));
}

int show(HostContext &context, const ViewerOptions &options)
{
    if (!options.language.isEmpty())
        context.setLanguage(options.language);
    ViewerWindow window(context);
    if (options.developer)
        window.commands().showDeveloperMenu();
    window.show();
    if (!options.description.isEmpty())
        window.openDescription(options.description);
    if (!options.device.isEmpty())
        window.openWhenKnown(options.device);
    context.devices().refresh();
    context.automaticSearch().start();
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    const ViewerOptions options = ViewerOptions::parse(argumentsOf(argc, argv));
    if (options.isTextOnly())
        qputenv("QT_QPA_PLATFORM", "offscreen");
    enableHighDpi();
    MeteredApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("ParamterWnd"));
    QApplication::setApplicationName(QStringLiteral("paramter-viewer"));
    QApplication::setApplicationVersion(QStringLiteral(PARAMTERWND_VERSION));
    if (!options.error.isEmpty())
        return print(options.error, stderr, UsageError);
    if (options.help)
        return print(ViewerOptions::helpText(), stdout, 0);
    if (options.version)
        return print(QApplication::applicationVersion(), stdout, 0);
    if (options.transports)
        return listTransports(hostOptions(options));
    HostContext context(hostOptions(options));
    addSimulatedDevices(context);
    if (options.dump)
        return runDump(context, options);
    const MessageLog messages;
    applyViewerStyle(application);
    return show(context, options);
}
