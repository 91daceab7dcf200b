// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QDateTime>
#include <QImage>
#include <QList>
#include <QObject>
#include <QSettings>
#include <QString>
#include <QStringList>
#include <QThreadPool>
#include <QTimer>

#include "Devices/Device.h"
#include "Devices/DeviceDiscovery.h"
#include "Host/DeviceAnnouncer.h"
#include "Host/HostListeners.h"
#include "Host/ImageRegions.h"
#include "Host/ProfilerHeights.h"
#include "Host/ProfilerRegions.h"
#include "Host/ShowModes.h"
#include "ParamterWnd/HostCore.h"

/// Which part of its sensor a camera shows.
struct ImagePlace
{
    QRect area; ///< in pixels of the images
    QSize largest; ///< of the images; binning and the like, which make other pixels, change it
};

/// The host behind HostCore: devices, focus, language, settings, listeners and log.
///
/// One at a time exists; HostCore forwards to it. It belongs to the GUI thread, and everything is called
/// there unless stated otherwise. Panels (ParamterWnd) must be destroyed before it.
class HostContext : public QObject
{
    Q_OBJECT

public:
    struct Options
    {
        /// An INI file for the settings; empty: the application's own settings (QSettings' default).
        QString settingsFile;
        /// Finds devices for refreshDevices(); empty: only devices given to addDevice() exist.
        DeviceFinder finder;
    };

    explicit HostContext(Options options, QObject *parent = nullptr);
    /// Closes every device. Waits for those that are being reached, which takes seconds for a dead one.
    ~HostContext() override;

    /// The context that HostCore forwards to; null before the first and after the last one.
    static HostContext *current();
    /// Has the current context do something on its thread, at once when called there. Any thread; without a context, or
    /// when it goes before its turn comes, nothing happens.
    static void callCurrent(const std::function<void(HostContext &)> &action);

    /// Devices that are known, open or not, in the order in which they became known. Owned by the context.
    QList<Device *> devices() const;
    /// Null when the id is unknown.
    Device *device(const QString &id) const;
    /// True from a successful open() to the begin of closing: the panel may use the device.
    bool isReady(const QString &id) const;

    /// Makes a device known (simulated devices, description files). False, and the device is dropped, when
    /// its id is already taken.
    bool addDevice(std::unique_ptr<Device> device);
    /// Searches for devices on the discovery thread; deviceListChanged() follows if something changed.
    /// Closed devices that are no longer found are forgotten; added devices stay.
    void refreshDevices();
    bool isRefreshing() const;
    /// Panels have still to follow what became of devices; until then one may stand in for another.
    bool isAnnouncing() const { return !m_announcer->isIdle(); }

    /// Opens a device and announces it to the panel, which follows soon. False on failure, which is logged; a device
    /// that is still being closed cannot be opened.
    bool open(const QString &id);
    /// The same, without making the caller wait for the device to be reached. Its state changes when that begins and
    /// when it has ended, one way or the other.
    void openLater(const QString &id);
    bool isOpening(const QString &id) const;
    /// Why the device could not be opened the last time; empty after a success and before the first try.
    QString openingError(const QString &id) const;
    /// Announces the device as closed and releases it when the event loop has removed its panel. A device that is not
    /// open, or still being opened, stays as it is.
    void close(const QString &id);
    /// Gives the focus to a device, open or not; an unknown or empty id takes it away from all.
    void setFocus(const QString &id);
    QString focus() const { return m_focusId; }
    /// False on failure, which is logged.
    bool startAcquisition(const QString &id);
    void stopAcquisition(const QString &id);

    /// "English" or "Chinese"; kept in the settings. Tells the panel even if nothing changes: a panel starts in
    /// English.
    void setLanguage(const QString &name);
    QString language() const;

    QSettings &settings() { return *m_store; }
    HostListeners &listeners() { return m_eventListeners; }
    ImageRegions &regions() { return m_imageRegions; }

    /// Appends a line to the log: forwards to logLine() on the GUI thread. Any thread.
    /// `module` names the reporting class, `level` 0 is an ordinary report.
    void log(const QString &module, const QString &message, int level = 0);

    // What HostCore answers from the context; see HostCore.h for the meaning.
    QString cameraInfo(const QString &id, HostCore::CAM_INFO item) const;
    void setCameraInfo(const QString &id, HostCore::CAM_INFO item, const QString &value);
    QString cardInfo(const QString &id, HostCore::CARD_INFO item) const;
    QString parameterInfo(HostCore::PARAMETER_INFO item) const;
    void setParameterInfo(HostCore::PARAMETER_INFO item, const QString &value);
    /// Null unless the device is of that kind and ready.
    GenApi::INodeMap *nodeMap(HostCore::FOCUS_TYPE type, const QString &id) const;
    /// False on failure, which is logged.
    bool readNode(const QString &id, const QString &node, QString *value);
    bool writeNode(const QString &id, const QString &node, const QString &value);
    /// The handle of a new region between two corners on the device's images; 0 on failure, which is logged.
    int drawRegion(const QString &id, const QPoint &corner, const QPoint &opposite);
    /// What the device does not tell is 0.
    ImagePlace imagePlace(const QString &id) const;
    /// A region that the device does not have is logged.
    void placeRegion(const QString &id, int handle, const QPoint &corner, const QPoint &opposite);
    void removeRegion(const QString &id, int handle);
    ProfilerRegions &profilerRegions() { return *m_numberedRegions; }
    const ProfilerHeights &profilerHeights() const { return *m_heights; }
    ShowModes &showModes() { return *m_modes; }

Q_SIGNALS:
    void logLine(const QDateTime &time, const QString &module, const QString &message, int level);
    /// Devices became known or were forgotten. A Device pointer obtained before may be gone.
    void deviceListChanged();
    /// A search started or ended.
    void refreshingChanged(bool refreshing);
    /// The id is empty when nothing has the focus.
    void focusChanged(const QString &id);
    /// A device is being opened or could not be, was opened, closed or lost, or started or stopped acquiring.
    void deviceStateChanged(const QString &id);
    void languageChanged(const QString &name);
    /// A frame of an acquiring device, on the GUI thread.
    void frameReady(const QString &id, const QImage &frame);
    /// The heights of the frame that the frameReady() right after this shows; only laser profilers and
    /// structured-light cameras send them.
    void heightReady(const QString &id, const HeightFrame &frame);
    /// A setting that is kept per camera has another value.
    void cameraInfoChanged(const QString &id, HostCore::CAM_INFO item);

private:
    struct Entry
    {
        std::unique_ptr<Device> device;
        bool discovered = false;
        bool opening = false; ///< being reached on another thread
        QString openingError;
        bool ready = false;
        bool closing = false; ///< announced as closed, not released yet
    };

    Entry *entry(const QString &id);
    const Entry *entry(const QString &id) const;
    void append(std::unique_ptr<Device> device, bool discovered);
    void connectDevice(Device *device);
    void finishOpening(const QString &id);
    void followAnnounced();
    void releaseAfterPanels(const QString &id);
    void finishClosing(const QString &id);
    /// `failure` has places %1 and %2 left for the id and the reason.
    bool accessNode(const QString &id, const QString &failure, const std::function<void(GenApi::INodeMap &)> &access);
    void logUnknownRegion(const QString &id, int handle);
    void mergeFound(const std::vector<FoundDevice> &found);
    void deviceLost(const QString &id, const QString &reason);
    void acquiringChanged(const QString &id);
    /// Tells panels that the device was opened or closed, or its acquisition started or stopped. Nobody hears of
    /// devices that stay closed: a panel shows nothing for a moment for each camera that is listed as closed.
    void announceDevice(const QString &id);
    /// The ids of the devices of a kind that are ready, `first` before all others even if it is not.
    QStringList devicesInUse(Device::Kind kind, const QString &first) const;
    void announceFocus();
    void pollFocused();

    std::vector<Entry> m_entries;
    QString m_focusId;
    QStringList m_closings; ///< announced as closed, not seen by every panel yet
    HostListeners m_eventListeners;
    ImageRegions m_imageRegions;
    std::unique_ptr<ProfilerRegions> m_numberedRegions;
    std::unique_ptr<ProfilerHeights> m_heights;
    std::unique_ptr<ShowModes> m_modes;
    std::unique_ptr<QSettings> m_store;
    std::unique_ptr<DeviceAnnouncer> m_announcer;
    std::unique_ptr<DeviceDiscovery> m_discovery;
    QThreadPool m_openings;
    QTimer m_pollTimer;
};
