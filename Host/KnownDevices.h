// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <QImage>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include "Devices/Device.h"
#include "Devices/DeviceDiscovery.h"

class HostLog;

/// The devices that the host knows, how far each of them is, and what they tell. GUI thread.
class KnownDevices : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Closed,
        Opening, ///< being reached on another thread
        Ready, ///< from its opening to the begin of its closing: the panel may use it
        Closing, ///< announced as closed, not released yet
    };

    /// Without a finder only devices given to add() exist. The log must outlive this.
    KnownDevices(DeviceFinder finder, HostLog &log);
    ~KnownDevices() override;

    /// Open or not, in the order in which they became known. Owned by this.
    QList<Device *> all() const;
    /// Null when the id is unknown.
    Device *device(const QString &id) const;
    /// Of an unknown device: Closed.
    State state(const QString &id) const;
    bool isReady(const QString &id) const { return state(id) == State::Ready; }
    bool isOpening(const QString &id) const { return state(id) == State::Opening; }
    bool isAnyOpening() const;
    /// Why the device could not be opened the last time; empty after a success and before the first try.
    QString openingError(const QString &id) const;
    /// The ids of the devices of a kind that are ready, `first` before all others even if it is not.
    QStringList inUse(Device::Kind kind, const QString &first) const;

    /// Makes a device known (simulated devices, description files). False, and the device is dropped, when
    /// its id is already taken.
    bool add(std::unique_ptr<Device> device);
    /// For CameraModules: forgets a device that was given to add() and is closed.
    void remove(const QString &id);
    /// What the last search has told of a device; null for one that was given to add().
    const FoundDevice *finding(const QString &id) const;
    /// Searches for devices on the discovery thread; listChanged() follows if something changed.
    /// Closed devices that are no longer found are forgotten; added devices stay.
    void refresh();
    /// The same with what was changed right now: a search that is running is followed by another.
    void refreshAnew();
    bool isRefreshing() const;
    /// The same for a search that nobody has asked for: refreshingChanged() does not tell of it.
    void searchQuietly();

    /// For DeviceSessions, which tells of it. Of a known device.
    void setState(const QString &id, State state);
    void setOpeningError(const QString &id, const QString &reason);

    /// For DeviceReturn: the device, which must be known, stays known even where a search does not find it.
    void keep(const QString &id, bool kept);

    /// For the end of the host. Waits for a running search.
    void endSearch();
    /// For the end of the host: nothing is told any more.
    void silence();

Q_SIGNALS:
    /// Devices became known or were forgotten. A Device pointer obtained before may be gone.
    void listChanged();
    /// A search that somebody asked for started or ended.
    void refreshingChanged(bool refreshing);
    /// Any search has ended; `present` are the ids of all devices that are there now.
    void searched(const QStringList &present);

    /// A frame of a device that is ready, on the GUI thread.
    void frameReady(const QString &id, const QImage &frame);
    /// The heights of the frame that the frameReady() right after this shows; only laser profilers and
    /// structured-light cameras send them.
    void heightReady(const QString &id, const HeightFrame &frame);
    /// A device that is ready has other faulty frames than before (Device::frameCounts()).
    void framesCounted(const QString &id);
    /// A device that is ready has fallen silent, or answers again.
    void answeringChanged(const QString &id, bool answering);
    /// A device that is ready has started anew, with other values than before.
    void restarted(const QString &id);
    /// For DeviceSessions. The device may be closed.
    void acquiringChanged(const QString &id);
    void lost(const QString &id, const QString &reason);

private:
    struct Entry
    {
        std::unique_ptr<Device> device;
        std::optional<FoundDevice> finding; ///< none: it was added
        bool kept = false; ///< whether it is found or not
        State state = State::Closed;
        QString openingError;

        bool isInUse() const { return kept || state == State::Opening || device->isOpen(); }
    };

    Entry *entry(const QString &id);
    const Entry *entry(const QString &id) const;
    void append(std::unique_ptr<Device> device, std::optional<FoundDevice> finding = std::nullopt);
    void connectDevice(Device *device);
    void adoptFound(const std::vector<FoundDevice> &found);
    /// The entry of a camera that was found by another way than the one by which it is known; null when there is none.
    Entry *entryByOtherWay(const FoundDevice &found);
    void takeOver(const FoundDevice &found, std::vector<Entry> *gone);
    /// True when something became known or was forgotten, which is left in `gone`.
    bool takeOver(const std::vector<FoundDevice> &found, std::vector<Entry> *gone);
    void tellPresent(const std::vector<FoundDevice> &found);

    HostLog &m_log;
    std::vector<Entry> m_entries;
    std::unique_ptr<DeviceDiscovery> m_discovery; ///< null in the end
    bool m_isSearchWanted = false; ///< somebody has asked for the search that is running
    bool m_isSearchDue = false; ///< another one, after it
};
