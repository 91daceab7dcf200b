// SPDX-License-Identifier: MIT
#include "Viewer/TransportList.h"

#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QTextStream>

#include <cstdio>
#include <utility>

#include "Devices/gentl/GentlFinder.h"
#include "Host/HostContext.h"

namespace {

const char *originText(Producers::Origin origin)
{
    switch (origin) {
    case Producers::Origin::Environment:
        return "from the environment";
    case Producers::Origin::CommandLine:
        return "from the command line";
    default:
        return "from the settings";
    }
}

const QString LeftOut = QStringLiteral("left out: --simulated");

/// The words that are not empty, with commas between them.
QString joined(QStringList words)
{
    words.removeAll(QString());
    return words.join(QLatin1String(", "));
}

QString named(const char *name, const QString &value)
{
    return value.isEmpty() ? QString() : QStringLiteral("%1 %2").arg(QLatin1String(name), value);
}

void search(KnownDevices &devices)
{
    QEventLoop loop;
    QObject::connect(&devices, &KnownDevices::searched, &loop, &QEventLoop::quit);
    devices.refresh();
    loop.exec();
}

/// What the last search of a host has seen.
class Print
{
public:
    Print(HostContext &context, bool leavesOut) : m_context(context), m_out(stdout), m_leavesOut(leavesOut)
    {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
        m_out.setCodec("UTF-8");
#endif
    }

    void builtIn(const std::vector<FoundDevice> &seen)
    {
        line(0, QStringLiteral("Built-in search for GigE Vision and USB3 Vision cameras"));
        if (m_leavesOut)
            return line(1, LeftOut);
        for (const FoundDevice &one : seen)
            line(1,
                 one.id + QLatin1String(": ")
                     + joined({named("vendor", one.vendor), named("model", one.model), named("serial", one.serial),
                               named("address", one.address)}));
        if (seen.empty())
            line(1, QStringLiteral("no cameras"));
    }

    void environment()
    {
        const char *const name = "GENICAM_GENTL64_PATH";
        const QString value = qEnvironmentVariable(name);
        line(0, QStringLiteral("Directories of %1").arg(QLatin1String(name)));
        if (m_leavesOut)
            return line(1, LeftOut);
        const QStringList directories = value.split(QDir::listSeparator(), Qt::SkipEmptyParts);
        for (const QString &directory : directories)
            line(1, QStringLiteral("%1: %2").arg(directory, contentOf(directory)));
        if (directories.isEmpty())
            line(1, QStringLiteral("the variable is not set"));
    }

    void producers()
    {
        line(0, QStringLiteral("GenTL producers"));
        const QList<Producers::File> files = m_context.producers().files();
        const std::vector<ProducerReport> reports = m_context.producers().reports();
        for (const Producers::File &file : files) {
            line(1,
                 joined({file.path, QLatin1String(originText(file.origin)),
                         QLatin1String(file.isOn ? "on" : "switched off")}));
            for (const ProducerReport &report : reports) {
                if (file.isOn && report.file == file.path)
                    producer(report);
            }
        }
        if (files.isEmpty())
            line(1, QStringLiteral("there are none"));
    }

    /// Nothing when each camera was found once.
    void routes()
    {
        QList<const FoundDevice *> cameras;
        const QList<Device *> devices = m_context.devices().all();
        for (const Device *device : devices) {
            const FoundDevice *const found = m_context.devices().finding(device->id());
            if (found && found->routes.size() > 1)
                cameras << found;
        }
        if (!cameras.isEmpty())
            line(0, QStringLiteral("Cameras that were found more than once"));
        for (const FoundDevice *camera : std::as_const(cameras)) {
            line(1, camera->name);
            for (const DeviceRoute &route : camera->routes)
                line(2,
                     QStringLiteral("%1 %2 (%3)")
                         .arg(QLatin1String(route.id == camera->id ? "used:" : "also:"), route.name, route.id));
        }
    }

private:
    static QString contentOf(const QString &directory)
    {
        if (!QDir(directory).exists())
            return QStringLiteral("there is no such directory");
        QStringList names;
        for (const QString &file : producersIn(directory))
            names << QFileInfo(file).fileName();
        return names.isEmpty() ? QStringLiteral("no *.cti in it") : joined(names);
    }

    void producer(const ProducerReport &report)
    {
        const QString telling = joined({named("vendor", report.vendor), named("model", report.model),
                                        named("version", report.version), named("transport", report.transport)});
        if (!telling.isEmpty())
            line(2, telling);
        line(2, report.problem.isEmpty() ? QStringLiteral("used") : QStringLiteral("not used: ") + report.problem);
        for (const ProducerReport::SeenInterface &seen : report.interfaces)
            interface(seen);
        if (report.problem.isEmpty() && report.interfaces.empty())
            line(2, QStringLiteral("no interfaces"));
    }

    void interface(const ProducerReport::SeenInterface &seen)
    {
        line(2,
             QStringLiteral("interface ")
                 + joined({seen.id, seen.name == seen.id ? QString() : seen.name, named("transport", seen.transport)}));
        for (const ProducerReport::SeenDevice &device : seen.devices)
            line(3,
                 QStringLiteral("device ")
                     + joined({device.id, named("vendor", device.vendor), named("model", device.model),
                               named("serial", device.serial), named("transport", device.transport), device.access}));
        if (!seen.problem.isEmpty())
            line(3, QStringLiteral("it cannot be searched: ") + seen.problem);
        else if (seen.devices.empty())
            line(3, QStringLiteral("no devices"));
    }

    void line(int level, const QString &text)
    {
        m_out << QString(2 * level, QLatin1Char(' ')) << text << '\n';
    }

    HostContext &m_context;
    QTextStream m_out;
    const bool m_leavesOut; ///< only producers that the command line names are used
};

} // namespace

int listTransports(HostContext::Options options)
{
    const bool leavesOut = options.onlyGivenProducers;
    std::vector<FoundDevice> seen; // by the built-in search; the others are told by their producers
    options.finder = [builtIn = std::move(options.finder), &seen] {
        seen = builtIn();
        return seen;
    };
    HostContext context(std::move(options));
    search(context.devices());
    Print print(context, leavesOut);
    print.builtIn(seen);
    print.environment();
    print.producers();
    print.routes();
    return 0;
}
