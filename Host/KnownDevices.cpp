// SPDX-License-Identifier: MIT
#include "Host/KnownDevices.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

#include "Host/HostLog.h"

KnownDevices::KnownDevices(DeviceFinder finder, HostLog &log)
    : m_log(log), m_discovery(std::make_unique<DeviceDiscovery>(std::move(finder)))
{
    connect(m_discovery.get(), &DeviceDiscovery::found, this, &KnownDevices::adoptFound);
}

KnownDevices::~KnownDevices()
{
    silence();
    for (const Entry &one : m_entries)
        one.device->close();
}

QList<Device *> KnownDevices::all() const
{
    QList<Device *> result;
    for (const Entry &one : m_entries)
        result.append(one.device.get());
    return result;
}

Device *KnownDevices::device(const QString &id) const
{
    const Entry *known = entry(id);
    return known ? known->device.get() : nullptr;
}

KnownDevices::State KnownDevices::state(const QString &id) const
{
    const Entry *known = entry(id);
    return known ? known->state : State::Closed;
}

QString KnownDevices::openingError(const QString &id) const
{
    const Entry *known = entry(id);
    return known ? known->openingError : QString();
}

QStringList KnownDevices::inUse(Device::Kind kind, const QString &first) const
{
    QStringList result{first};
    for (const Entry &one : m_entries) {
        if (one.device->kind() == kind && one.state == State::Ready && one.device->id() != first)
            result += one.device->id();
    }
    return result;
}

KnownDevices::Entry *KnownDevices::entry(const QString &id)
{
    return const_cast<Entry *>(std::as_const(*this).entry(id));
}

const KnownDevices::Entry *KnownDevices::entry(const QString &id) const
{
    const auto sameId = [&id](const Entry &one) { return one.device->id() == id; };
    const auto place = std::find_if(m_entries.begin(), m_entries.end(), sameId);
    return place == m_entries.end() ? nullptr : &*place;
}

bool KnownDevices::add(std::unique_ptr<Device> device)
{
    if (entry(device->id())) {
        m_log.add(HostModule, QStringLiteral("There is already a device %1").arg(device->id()));
        return false;
    }
    append(std::move(device));
    Q_EMIT listChanged();
    return true;
}

void KnownDevices::remove(const QString &id)
{
    const auto isIt = [&id](const Entry &one) { return one.device->id() == id; };
    const auto place = std::find_if(m_entries.begin(), m_entries.end(), isIt);
    if (place == m_entries.end() || place->finding || place->state != State::Closed)
        return;
    const Entry gone = std::move(*place); // until everybody has heard of it
    m_entries.erase(place);
    Q_EMIT listChanged();
}

const FoundDevice *KnownDevices::finding(const QString &id) const
{
    const Entry *const known = entry(id);
    return known && known->finding ? &*known->finding : nullptr;
}

void KnownDevices::append(std::unique_ptr<Device> device, std::optional<FoundDevice> finding)
{
    connectDevice(device.get());
    Entry added;
    added.device = std::move(device);
    added.finding = std::move(finding);
    m_entries.push_back(std::move(added));
}

void KnownDevices::connectDevice(Device *device)
{
    const QString id = device->id();
    connect(device, &Device::frameReady, this, [this, id](const QImage &frame) {
        if (isReady(id))
            Q_EMIT frameReady(id, frame);
    });
    connect(device, &Device::heightReady, this, [this, id](const HeightFrame &frame) {
        if (isReady(id))
            Q_EMIT heightReady(id, frame);
    });
    connect(device, &Device::restarted, this, [this, id] {
        if (isReady(id))
            Q_EMIT restarted(id);
    });
    connect(device, &Device::framesCounted, this, [this, id] {
        if (isReady(id))
            Q_EMIT framesCounted(id);
    });
    connect(device, &Device::answeringChanged, this, [this, id](bool answering) {
        if (isReady(id))
            Q_EMIT answeringChanged(id, answering);
    });
    connect(device, &Device::acquiringChanged, this, [this, id] { Q_EMIT acquiringChanged(id); });
    connect(device, &Device::lost, this, [this, id](const QString &reason) { Q_EMIT lost(id, reason); });
    const QString reporter = QLatin1String(device->metaObject()->className());
    connect(
        device, &Device::reported, this, [this, reporter](const QString &line) { m_log.add(reporter, line); },
        Qt::DirectConnection);
}

void KnownDevices::refresh()
{
    m_discovery->search();
    m_isSearchWanted = m_discovery->isSearching();
    Q_EMIT refreshingChanged(isRefreshing());
}

void KnownDevices::refreshAnew()
{
    m_isSearchDue = m_discovery->isSearching();
    refresh();
}

bool KnownDevices::isRefreshing() const
{
    return m_isSearchWanted;
}

void KnownDevices::searchQuietly()
{
    if (!m_discovery)
        return;
    m_discovery->search();
    if (!m_discovery->isSearching()) // there is nothing to search with
        tellPresent({});
}

void KnownDevices::adoptFound(const std::vector<FoundDevice> &found)
{
    std::vector<Entry> gone; // kept until everybody has heard of the new list
    const bool changed = takeOver(found, &gone);
    if (std::exchange(m_isSearchWanted, false))
        Q_EMIT refreshingChanged(false);
    if (changed)
        Q_EMIT listChanged();
    tellPresent(found);
    if (std::exchange(m_isSearchDue, false))
        refresh();
}

bool KnownDevices::takeOver(const std::vector<FoundDevice> &found, std::vector<Entry> *gone)
{
    const std::size_t known = m_entries.size();
    for (const FoundDevice &one : found)
        takeOver(one, gone);
    const auto isFound = [&found](const QString &id) {
        return std::any_of(found.begin(), found.end(), [&id](const FoundDevice &one) { return one.id == id; });
    };
    const auto vanished = [&isFound](const Entry &one) {
        return one.finding && !one.isInUse() && !isFound(one.device->id());
    };
    const bool isMore = m_entries.size() > known;
    const auto firstGone = std::stable_partition(m_entries.begin(), m_entries.end(), std::not_fn(vanished));
    gone->insert(gone->end(), std::make_move_iterator(firstGone), std::make_move_iterator(m_entries.end()));
    m_entries.erase(firstGone, m_entries.end());
    return isMore || !gone->empty();
}

/// A camera that is listed by another way now takes the place of what it was, unless that is in use.
void KnownDevices::takeOver(const FoundDevice &found, std::vector<Entry> *gone)
{
    if (Entry *const known = entry(found.id)) {
        if (known->finding)
            known->finding = found;
        return;
    }
    Entry *const other = entryByOtherWay(found);
    if (!other)
        return append(found.create(), found);
    other->finding->routes = found.routes;
    other->finding->camera = found.camera;
    if (other->isInUse())
        return;
    const auto place = other - m_entries.data();
    append(found.create(), found);
    std::swap(m_entries[std::size_t(place)], m_entries.back());
    gone->push_back(std::move(m_entries.back()));
    m_entries.pop_back();
}

KnownDevices::Entry *KnownDevices::entryByOtherWay(const FoundDevice &found)
{
    for (const DeviceRoute &route : found.routes) {
        Entry *const known = entry(route.id);
        if (known && known->finding)
            return known;
    }
    return nullptr;
}

void KnownDevices::tellPresent(const std::vector<FoundDevice> &found)
{
    QStringList present;
    for (const FoundDevice &one : found) {
        present += one.id;
        for (const DeviceRoute &route : one.routes)
            present += route.id;
    }
    present.removeDuplicates();
    for (const Entry &one : m_entries) {
        if (!one.finding && one.device->isPresent())
            present += one.device->id();
    }
    Q_EMIT searched(present);
}

void KnownDevices::keep(const QString &id, bool kept)
{
    entry(id)->kept = kept;
}

bool KnownDevices::isAnyOpening() const
{
    return std::any_of(m_entries.begin(), m_entries.end(),
                       [](const Entry &one) { return one.state == State::Opening; });
}

void KnownDevices::setState(const QString &id, State state)
{
    entry(id)->state = state;
}

void KnownDevices::setOpeningError(const QString &id, const QString &reason)
{
    entry(id)->openingError = reason;
}

void KnownDevices::endSearch()
{
    m_discovery.reset();
}

void KnownDevices::silence()
{
    for (const Entry &one : m_entries)
        one.device->disconnect(this);
}
