// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QTemporaryDir>
#include <QTextStream>

#include <cstdio>

#include "Host/AravisDevice.h"
#include "Host/HostContext.h"
#include "Host/SimulatedDevices.h"
#include "Host/Viewer/DumpRun.h"
#include "Host/Viewer/MessageLog.h"
#include "Host/Viewer/Tour.h"
#include "Host/Viewer/ViewerOptions.h"
#include "Host/Viewer/ViewerStyle.h"
#include "Host/Viewer/ViewerWindow.h"

namespace {

constexpr int usageError = 2;

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

/// A tour starts like the first run of a new user and leaves no settings behind.
QString settingsFile(const ViewerOptions &options, const QTemporaryDir &scratch)
{
    const bool fresh = options.settings.isEmpty() && !options.tour.isEmpty();
    return fresh ? scratch.filePath(QStringLiteral("tour.ini")) : options.settings;
}

DeviceFinder finder(const ViewerOptions &options)
{
    const bool searches = options.tour.isEmpty() && !options.simulatedOnly;
    return searches ? aravisFinder(true) : DeviceFinder();
}

void addSimulatedDevices(HostContext &context)
{
    for (std::unique_ptr<Device> &device : makeSimulatedDevices())
        context.addDevice(std::move(device));
}

int show(HostContext &context, const ViewerOptions &options)
{
    if (!options.language.isEmpty())
        context.setLanguage(options.language);
    ViewerWindow window(context);
    window.show();
    if (!options.tour.isEmpty())
        return Tour(window, options.tour).run();
    if (!options.description.isEmpty())
        window.openDescription(options.description);
    if (!options.device.isEmpty())
        window.openWhenKnown(options.device);
    context.refreshDevices();
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    const ViewerOptions options = ViewerOptions::parse(argumentsOf(argc, argv));
    if (options.isTextOnly())
        qputenv("QT_QPA_PLATFORM", "offscreen");
    enableHighDpi();
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("ParamterWnd"));
    QApplication::setApplicationName(QStringLiteral("paramter-viewer"));
    QApplication::setApplicationVersion(QStringLiteral(PARAMTERWND_VERSION));
    if (!options.error.isEmpty())
        return print(options.error, stderr, usageError);
    if (options.help)
        return print(ViewerOptions::helpText(), stdout, 0);
    if (options.version)
        return print(QApplication::applicationVersion(), stdout, 0);
    const QTemporaryDir scratch;
    HostContext context({settingsFile(options, scratch), finder(options)});
    addSimulatedDevices(context);
    if (options.dump)
        return runDump(context, options);
    const MessageLog messages;
    applyViewerStyle(application);
    return show(context, options);
}
