// SPDX-License-Identifier: MIT
#include "Viewer/DumpRun.h"

#include <QEventLoop>
#include <QTextStream>

#include <cstdio>
#include <iostream>

#include "Devices/DescriptionDevice.h"
#include "Host/HostContext.h"
#include "Viewer/FeatureDump.h"
#include "Viewer/ViewerOptions.h"

namespace {

QString addDescription(HostContext &context, const QString &path)
{
    auto device = std::make_unique<DescriptionDevice>(path);
    const QString id = device->id();
    context.devices().add(std::move(device));
    return id;
}

/// Searches once when the device is not known yet.
void search(HostContext &context, const QString &id)
{
    if (context.devices().device(id))
        return;
    QEventLoop loop;
    QObject::connect(&context.devices(), &KnownDevices::refreshingChanged, &loop, [&loop](bool refreshing) {
        if (!refreshing)
            loop.quit();
    });
    context.devices().refresh();
    if (context.devices().isRefreshing())
        loop.exec();
}

} // namespace

int runDump(HostContext &context, const ViewerOptions &options)
{
    QTextStream errors(stderr);
    QObject::connect(&context.log(), &HostLog::lineAdded, &context,
                     [&errors](const QDateTime &, const QString &module, const QString &message) {
                         errors << module << ": " << message << '\n';
                     });
    const bool offline = !options.description.isEmpty();
    const QString id = offline ? addDescription(context, options.description) : options.device;
    search(context, id);
    if (!context.sessions().open(id)) {
        errors << (context.devices().device(id) ? "Cannot open " : "There is no device ") << id << '\n';
        return 1;
    }
    std::cout.rdbuf(std::cerr.rdbuf()); // the feature tree reports unreadable features there
    QTextStream out(stdout);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    out.setCodec("UTF-8");
#endif
    dumpFeatures(*context.devices().device(id)->nodeMap(), out);
    return 0;
}
