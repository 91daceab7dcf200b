// SPDX-License-Identifier: MIT
#include "Tools/cli/DeviceChoice.h"

#include <algorithm>
#include <chrono>
#include <future>
#include <thread>

#include <QRegularExpression>
#include <QStringList>

#include <GenApi/PersistenceDevice.h>

#include "Devices/AravisDevice.h"
#include "Devices/DescriptionDevice.h"
#include "Features/NodeGuard.h"
#include "Features/NodeText.h"
#include "Simulation/SimulatedDevices.h"
#include "Tools/BytesText.h"
#include "Tools/cli/Options.h"

namespace {

using Found = std::vector<FoundDevice>;
const QLatin1String FileScheme("file:"); // in front of the path in a description's id
bool g_isSearchHanging = false;

/// What a search would tell of the device.
void describe(Device &device, KnownDevice &known)
{
    QString ignored;
    if (!device.open(&ignored))
        return;
    GenApi::INodeMap &map = *device.nodeMap();
    const Persistence::DeviceInfo info = Persistence::deviceInfo(map);
    known.vendor = textOfBytes(info.vendor);
    known.model = textOfBytes(info.model);
    guarded(&ignored, [&] { known.serial = readNodeText(map, QStringLiteral("DeviceSerialNumber")); });
    device.close();
}

std::vector<KnownDevice> simulatedDevices(bool isDescribed)
{
    std::vector<KnownDevice> result;
    for (std::unique_ptr<Device> &device : makeSimulatedDevices()) {
        KnownDevice known;
        known.id = device->id();
        known.transport = device->transport();
        known.name = device->displayName();
        if (isDescribed)
            describe(*device, known);
        const auto owner = std::make_shared<std::unique_ptr<Device>>(std::move(device));
        known.create = [owner] { return std::move(*owner); };
        result.push_back(std::move(known));
    }
    return result;
}

KnownDevice knownOf(const FoundDevice &found)
{
    return {found.id,    found.transport, found.name,    found.vendor,
            found.model, found.serial,    found.address, found.create};
}

/// A search on a thread of its own.
std::future<Found> startSearch()
{
    auto promise = std::make_shared<std::promise<Found>>();
    std::future<Found> found = promise->get_future();
    std::thread([promise] { promise->set_value(aravisFinder(true)()); }).detach();
    return found;
}

Found endSearch(std::future<Found> &search, const Options &options, QString *warning)
{
    if (search.wait_for(std::chrono::duration<double>(options.searchTime)) == std::future_status::ready)
        return search.get();
    g_isSearchHanging = true;
    *warning = QStringLiteral("the search for cameras was given up after %1 s").arg(options.searchTime);
    return {};
}

bool isAddress(const QString &text)
{
    static const QRegularExpression Address(QStringLiteral("^[0-9]{1,3}(\\.[0-9]{1,3}){3}$"));
    return Address.match(text).hasMatch();
}

KnownDevice addressed(const QString &address)
{
    KnownDevice known;
    known.id = address;
    known.transport = Device::Transport::GigEVision;
    known.create = [address] {
        const AravisDevice::Identity identity{address, address, Device::Transport::GigEVision};
        return std::make_unique<AravisDevice>(identity);
    };
    return known;
}

KnownDevice described(const QString &file)
{
    KnownDevice known;
    known.id = file;
    known.transport = Device::Transport::DescriptionFile;
    known.create = [file] { return std::make_unique<DescriptionDevice>(file); };
    return known;
}

template <class Predicate>
std::vector<KnownDevice> filtered(const std::vector<KnownDevice> &devices, Predicate predicate)
{
    std::vector<KnownDevice> result;
    std::copy_if(devices.begin(), devices.end(), std::back_inserter(result), predicate);
    return result;
}

QString idsOf(const std::vector<KnownDevice> &devices)
{
    QStringList ids;
    for (const KnownDevice &one : devices)
        ids += one.id;
    return ids.join(QStringLiteral(", "));
}

/// The one device that is meant, or nothing and why.
std::vector<KnownDevice> only(std::vector<KnownDevice> matching, const QString &name, const QString &warning,
                              QString *error)
{
    if (matching.size() == 1)
        return matching;
    *error = matching.empty() ? QStringLiteral("there is no device %1%2")
                                    .arg(name, warning.isEmpty() ? QString() : QStringLiteral("; ") + warning)
                              : QStringLiteral("%1 may be any of %2").arg(name, idsOf(matching));
    return {};
}

} // namespace

bool isDescription(const QString &name)
{
    return name.startsWith(FileScheme);
}

std::vector<KnownDevice> knownDevices(const Options &options, QString *warning)
{
    std::future<Found> search = startSearch();
    std::vector<KnownDevice> known = simulatedDevices(true);
    for (const FoundDevice &one : endSearch(search, options, warning))
        known.push_back(knownOf(one));
    return known;
}

std::vector<KnownDevice> devicesNamed(const std::string &name, const Options &options, QString *error)
{
    const QString text = QString::fromStdString(name);
    const std::vector<KnownDevice> simulation =
        filtered(simulatedDevices(false), [&](const KnownDevice &one) { return one.id == text; });
    if (!simulation.empty())
        return simulation;
    if (isAddress(text))
        return {addressed(text)};
    if (isDescription(text))
        return {described(text.mid(FileScheme.size()))};
    QString warning;
    const std::vector<KnownDevice> all = knownDevices(options, &warning);
    const std::vector<KnownDevice> same = filtered(all, [&](const KnownDevice &one) { return one.id == text; });
    if (!same.empty())
        return same;
    return only(filtered(all,
                         [&](const KnownDevice &one) {
                             return !text.isEmpty() && (one.serial == text || one.address == text);
                         }),
                text, warning, error);
}

std::vector<KnownDevice> devicesOfOptions(const Options &options, QString *error)
{
    if (!options.genicam.empty())
        return {described(QString::fromStdString(options.genicam))};
    const QString model = QString::fromStdString(options.allOf);
    QString warning;
    const std::vector<KnownDevice> all = knownDevices(options, &warning);
    std::vector<KnownDevice> matching =
        filtered(all, [&](const KnownDevice &one) { return one.model.compare(model, Qt::CaseInsensitive) == 0; });
    if (matching.empty())
        *error = QStringLiteral("there is no device of the model %1").arg(model);
    return matching;
}

QString transportName(Device::Transport transport)
{
    switch (transport) {
    case Device::Transport::Simulated:
        return QStringLiteral("simulated");
    case Device::Transport::GigEVision:
        return QStringLiteral("GigE Vision");
    case Device::Transport::Usb3Vision:
        return QStringLiteral("USB3 Vision");
    case Device::Transport::Fake:
        return QStringLiteral("fake");
    case Device::Transport::DescriptionFile:
        return QStringLiteral("description file");
    case Device::Transport::Other:
        break;
    }
    return QStringLiteral("other");
}

bool isSearchHanging()
{
    return g_isSearchHanging;
}
