// SPDX-License-Identifier: MIT
#include "Host/HostContext.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <utility>

#include <QPointer>
#include <QThread>
#include <QUrl>

#include "Features/NodeGuard.h"
#include "Features/NodeText.h"

namespace {

std::atomic<HostContext *> theContext{nullptr};
std::mutex contextMutex; ///< held by other threads while they use the context, and while it goes

constexpr int PollInterval = 1000; // ms
constexpr int MostOpenings = 16; ///< devices that are reached at the same time
const QString Module = QStringLiteral("HostContext");
const QString LanguageKey = QStringLiteral("language");

const QString UserSetLoad = QStringLiteral("UserSetLoad");

/// What CARD_INFO_STATE reads for a card that can be used.
const QString UsableCard = QStringLiteral("4");

QString flagText(bool flag)
{
    return flag ? QStringLiteral("1") : QStringLiteral("0");
}

QString parameterKey(HostCore::PARAMETER_INFO item)
{
    return QStringLiteral("parameter/%1").arg(static_cast<int>(item));
}

/// Ids may hold slashes and other characters that have a meaning in a settings key.
QString cameraKey(const QString &id, HostCore::CAM_INFO item)
{
    const QString safeId = QString::fromLatin1(QUrl::toPercentEncoding(id));
    return QStringLiteral("camera/%1/%2").arg(safeId).arg(static_cast<int>(item));
}

bool isStored(HostCore::CAM_INFO item)
{
    return item >= HostCore::CAM_INFO_DISPLAY_FIRST && item <= HostCore::CAM_INFO_DISPLAY_LAST;
}

std::unique_ptr<QSettings> makeSettings(const QString &file)
{
    if (file.isEmpty())
        return std::make_unique<QSettings>();
    return std::make_unique<QSettings>(file, QSettings::IniFormat);
}

HostCore::FOCUS_TYPE focusType(const Device *device)
{
    if (!device)
        return HostCore::FOCUS_TYPE(0);
    return device->kind() == Device::Kind::Card ? HostCore::FOCUS_CARD : HostCore::FOCUS_CAMERA;
}

} // namespace

HostContext::HostContext(Options options, QObject *parent)
    : QObject(parent), m_store(makeSettings(options.settingsFile))
{
    m_announcer = std::make_unique<DeviceAnnouncer>([this](const QStringList &cards, const QStringList &cameras) {
        m_eventListeners.raiseDeviceList(cards, cameras);
    });
    m_discovery = std::make_unique<DeviceDiscovery>(std::move(options.finder));
    m_openings.setMaxThreadCount(MostOpenings);
    connect(m_discovery.get(), &DeviceDiscovery::found, this, &HostContext::mergeFound);
    connect(m_announcer.get(), &DeviceAnnouncer::announced, this, &HostContext::followAnnounced);
    connect(&m_imageRegions, &ImageRegions::movedByUser, this,
            [this](const QString &id, int handle, const QRect &area) {
                m_eventListeners.raiseRegionMoved(id, m_numberedRegions->numberOf(handle).value_or(handle), area);
            });
    m_numberedRegions = std::make_unique<ProfilerRegions>(*this);
    m_heights = std::make_unique<ProfilerHeights>(*this);
    m_modes = std::make_unique<ShowModes>(*this);
    connect(&m_pollTimer, &QTimer::timeout, this, &HostContext::pollFocused);
    m_pollTimer.start(PollInterval);
    theContext = this;
}

HostContext::~HostContext()
{
    {
        const std::lock_guard<std::mutex> lock(contextMutex);
        theContext = nullptr;
    }
    m_discovery.reset();
    m_openings.waitForDone();
    m_announcer->disconnect(this); // what it still serves must find nothing to announce
    for (const Entry &one : m_entries)
        one.device->disconnect(this);
    m_announcer.reset();
    for (const Entry &one : m_entries)
        one.device->close();
}

HostContext *HostContext::current()
{
    return theContext;
}

void HostContext::callCurrent(const std::function<void(HostContext &)> &action)
{
    std::unique_lock<std::mutex> lock(contextMutex);
    HostContext *const context = theContext;
    if (!context)
        return;
    if (context->thread() != QThread::currentThread()) {
        QMetaObject::invokeMethod(
            context, [=] { action(*context); }, Qt::QueuedConnection);
        return;
    }
    lock.unlock(); // it can only go on this thread
    action(*context);
}

QList<Device *> HostContext::devices() const
{
    QList<Device *> result;
    for (const Entry &one : m_entries)
        result.append(one.device.get());
    return result;
}

Device *HostContext::device(const QString &id) const
{
    const Entry *known = entry(id);
    return known ? known->device.get() : nullptr;
}

bool HostContext::isReady(const QString &id) const
{
    const Entry *known = entry(id);
    return known && known->ready;
}

bool HostContext::isOpening(const QString &id) const
{
    const Entry *known = entry(id);
    return known && known->opening;
}

QString HostContext::openingError(const QString &id) const
{
    const Entry *known = entry(id);
    return known ? known->openingError : QString();
}

HostContext::Entry *HostContext::entry(const QString &id)
{
    return const_cast<Entry *>(std::as_const(*this).entry(id));
}

const HostContext::Entry *HostContext::entry(const QString &id) const
{
    const auto sameId = [&id](const Entry &one) { return one.device->id() == id; };
    const auto place = std::find_if(m_entries.begin(), m_entries.end(), sameId);
    return place == m_entries.end() ? nullptr : &*place;
}

bool HostContext::addDevice(std::unique_ptr<Device> device)
{
    if (entry(device->id())) {
        log(Module, QStringLiteral("There is already a device %1").arg(device->id()));
        return false;
    }
    append(std::move(device), false);
    Q_EMIT deviceListChanged();
    return true;
}

void HostContext::append(std::unique_ptr<Device> device, bool discovered)
{
    connectDevice(device.get());
    Entry added;
    added.device = std::move(device);
    added.discovered = discovered;
    m_entries.push_back(std::move(added));
}

void HostContext::connectDevice(Device *device)
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
    connect(device, &Device::acquiringChanged, this, [this, id] { acquiringChanged(id); });
    connect(device, &Device::restarted, this, [this, id] {
        if (!isReady(id))
            return;
        m_numberedRegions->showDevice(id);
        m_eventListeners.raiseImport(id);
    });
    const QString reporter = QLatin1String(device->metaObject()->className());
    connect(
        device, &Device::reported, this, [this, reporter](const QString &line) { log(reporter, line); },
        Qt::DirectConnection);
    connect(device, &Device::lost, this, [this, id](const QString &reason) { deviceLost(id, reason); });
}

void HostContext::refreshDevices()
{
    m_discovery->search();
    Q_EMIT refreshingChanged(isRefreshing());
}

bool HostContext::isRefreshing() const
{
    return m_discovery->isSearching();
}

void HostContext::mergeFound(const std::vector<FoundDevice> &found)
{
    const auto isFound = [&found](const QString &id) {
        return std::any_of(found.begin(), found.end(), [&id](const FoundDevice &one) { return one.id == id; });
    };
    const auto vanished = [&isFound](const Entry &one) {
        return one.discovered && !one.opening && !one.device->isOpen() && !isFound(one.device->id());
    };
    const auto firstGone = std::stable_partition(m_entries.begin(), m_entries.end(), std::not_fn(vanished));
    bool changed = firstGone != m_entries.end();
    // Kept until everybody has heard of the new list.
    std::vector<Entry> gone(std::make_move_iterator(firstGone), std::make_move_iterator(m_entries.end()));
    m_entries.erase(firstGone, m_entries.end());
    for (const FoundDevice &one : found) {
        if (entry(one.id))
            continue;
        append(one.create(), true);
        changed = true;
    }
    Q_EMIT refreshingChanged(false);
    if (changed)
        Q_EMIT deviceListChanged();
}

void HostContext::setFocus(const QString &id)
{
    m_focusId = entry(id) ? id : QString();
    announceFocus();
    Q_EMIT focusChanged(m_focusId);
}

bool HostContext::startAcquisition(const QString &id)
{
    Device *const wanted = isReady(id) ? device(id) : nullptr;
    QString error = QStringLiteral("the device is not open");
    if (wanted && wanted->startAcquisition(&error))
        return true;
    log(Module, QStringLiteral("Starting acquisition of %1 failed: %2").arg(id, error));
    return false;
}

void HostContext::stopAcquisition(const QString &id)
{
    if (isReady(id))
        device(id)->stopAcquisition();
}

void HostContext::acquiringChanged(const QString &id)
{
    if (isReady(id))
        announceDevice(id);
    Q_EMIT deviceStateChanged(id);
}

/// A panel looks at the first card only, and where that one is new to it at no camera of the event.
void HostContext::announceDevice(const QString &id)
{
    const Device::Kind kind = device(id)->kind();
    if (kind == Device::Kind::Card)
        m_announcer->announce(devicesInUse(kind, id), {});
    else
        m_announcer->announce({}, devicesInUse(kind, id));
}

QStringList HostContext::devicesInUse(Device::Kind kind, const QString &first) const
{
    QStringList result{first};
    for (const Entry &one : m_entries) {
        if (one.device->kind() == kind && one.ready && one.device->id() != first)
            result += one.device->id();
    }
    return result;
}

void HostContext::announceFocus()
{
    m_eventListeners.raiseFocus(focusType(device(m_focusId)), m_focusId);
}

void HostContext::pollFocused()
{
    if (!isReady(m_focusId))
        return;
    QString error;
    if (!guarded(&error, [this] { device(m_focusId)->nodeMap()->Poll(PollInterval); }))
        log(Module, QStringLiteral("Polling %1 failed: %2").arg(m_focusId, error));
}

void HostContext::setLanguage(const QString &name)
{
    m_store->setValue(LanguageKey, name);
    m_eventListeners.raiseLanguage(name);
    Q_EMIT languageChanged(name);
}

QString HostContext::language() const
{
    return m_store->value(LanguageKey, QStringLiteral("English")).toString();
}

void HostContext::log(const QString &reporter, const QString &message, int level)
{
    const QDateTime time = QDateTime::currentDateTime();
    QMetaObject::invokeMethod(this, [=] { Q_EMIT logLine(time, reporter, message, level); });
}

QString HostContext::cameraInfo(const QString &id, HostCore::CAM_INFO item) const
{
    const Entry *known = entry(id);
    if (!known || known->device->kind() != Device::Kind::Camera)
        return {};
    switch (item) {
    case HostCore::CAM_INFO_OPENED:
    case HostCore::CAM_INFO_READY:
        return flagText(known->ready);
    case HostCore::CAM_INFO_TYPE_CODE:
        return known->device->typeCode();
    case HostCore::CAM_INFO_ACQUISITION:
        return flagText(known->device->isAcquiring());
    default:
        return isStored(item) ? m_store->value(cameraKey(id, item)).toString() : QString();
    }
}

void HostContext::setCameraInfo(const QString &id, HostCore::CAM_INFO item, const QString &value)
{
    if (!isStored(item) || value == cameraInfo(id, item))
        return;
    m_store->setValue(cameraKey(id, item), value);
    Q_EMIT cameraInfoChanged(id, item);
}

QString HostContext::cardInfo(const QString &id, HostCore::CARD_INFO item) const
{
    const Entry *known = entry(id);
    if (!known || known->device->kind() != Device::Kind::Card)
        return {};
    if (item == HostCore::CARD_INFO_STATE)
        return UsableCard;
    return item == HostCore::CARD_INFO_OPEN ? flagText(known->ready) : QString();
}

QString HostContext::parameterInfo(HostCore::PARAMETER_INFO item) const
{
    return m_store->value(parameterKey(item)).toString();
}

void HostContext::setParameterInfo(HostCore::PARAMETER_INFO item, const QString &value)
{
    m_store->setValue(parameterKey(item), value);
}

GenApi::INodeMap *HostContext::nodeMap(HostCore::FOCUS_TYPE type, const QString &id) const
{
    const Device *known = isReady(id) ? device(id) : nullptr;
    return known && focusType(known) == type ? known->nodeMap() : nullptr;
}

bool HostContext::readNode(const QString &id, const QString &node, QString *value)
{
    const auto read = [&](GenApi::INodeMap &map) { *value = readNodeText(map, node); };
    return accessNode(id, QStringLiteral("Reading %1 of %2 failed: %3").arg(node), read);
}

bool HostContext::writeNode(const QString &id, const QString &node, const QString &value)
{
    const auto write = [&](GenApi::INodeMap &map) { writeNodeText(map, node, value); };
    if (!accessNode(id, QStringLiteral("Writing %1 of %2 failed: %3").arg(node), write))
        return false;
    if (node == UserSetLoad)
        m_numberedRegions->showDevice(id);
    return true;
}

bool HostContext::accessNode(const QString &id, const QString &failure,
                             const std::function<void(GenApi::INodeMap &)> &access)
{
    // A device that is closing answers until its panels have gone.
    const Device *known = device(id);
    QString error = QStringLiteral("the device is not open");
    if (known && known->nodeMap() && guarded(&error, [&] { access(*known->nodeMap()); }))
        return true;
    log(Module, failure.arg(id, error));
    return false;
}

ImagePlace HostContext::imagePlace(const QString &id) const
{
    const Device *known = isReady(id) ? device(id) : nullptr;
    const auto number = [&](const char *node) {
        QString text, error;
        if (known)
            guarded(&error, [&] { text = readNodeText(*known->nodeMap(), QLatin1String(node)); });
        return text.toInt();
    };
    return {QRect(number("OffsetX"), number("OffsetY"), number("Width"), number("Height")),
            QSize(number("WidthMax"), number("HeightMax"))};
}

int HostContext::drawRegion(const QString &id, const QPoint &corner, const QPoint &opposite)
{
    QString reason = QStringLiteral("the device is not open");
    if (isReady(id)) {
        const QSize reach(std::max(corner.x(), opposite.x()), std::max(corner.y(), opposite.y()));
        const QSize image = imagePlace(id).area.size();
        if (const int handle = m_imageRegions.draw(id, image.isEmpty() ? reach : image, corner, opposite))
            return handle;
        reason = QStringLiteral("it has no pixel of the image");
    }
    log(Module, QStringLiteral("Drawing a region on %1 failed: %2").arg(id, reason));
    return 0;
}

void HostContext::placeRegion(const QString &id, int handle, const QPoint &corner, const QPoint &opposite)
{
    if (!m_imageRegions.place(id, handle, corner, opposite))
        logUnknownRegion(id, handle);
}

void HostContext::removeRegion(const QString &id, int handle)
{
    if (!m_imageRegions.remove(id, handle))
        logUnknownRegion(id, handle);
}

void HostContext::logUnknownRegion(const QString &id, int handle)
{
    log(Module, QStringLiteral("%1 has no region %2").arg(id).arg(handle));
}
