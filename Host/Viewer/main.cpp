// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QTextStream>

#include <cstdio>

#include "Host/AravisDevice.h"
#include "Host/DescriptionDevice.h"
#include "Host/FeatureDump.h"
#include "Host/HostContext.h"
#include "Host/SimulatedDevices.h"
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

HostContext::Options hostOptions(const ViewerOptions &options)
{
    HostContext::Options result;
    result.settingsFile = options.settings;
    return result;
}

int show(HostContext &context, const ViewerOptions &options)
{
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
    applyViewerStyle(application);
    return 0;
}
