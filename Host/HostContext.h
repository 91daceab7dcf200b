// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QObject>
#include <QSettings>
#include <QString>

#include "Features/HandOver.h"
#include "Host/AutomaticSearch.h"
#include "Host/CameraModules.h"
#include "Host/DeviceReturn.h"
#include "Host/DeviceSessions.h"
#include "Host/DeviceValues.h"
#include "Host/DeviceWrites.h"
#include "Host/HostFocus.h"
#include "Host/HostListeners.h"
#include "Host/HostLog.h"
#include "Host/ImageRegions.h"
#include "Host/InfoItems.h"
#include "Host/KnownDevices.h"
#include "Host/PanelRegions.h"
#include "Host/Producers.h"
#include "Host/ProfilerHeights.h"
#include "Host/ProfilerRegions.h"
#include "Host/ShowModes.h"
#include "Host/SilentDevices.h"

/// The host behind HostCore: it owns the parts, joins them and hands them out. A part knows those it needs, never this.
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
        /// Finds devices for KnownDevices::refresh(); empty: only devices given to KnownDevices::add() exist.
        DeviceFinder finder;
        /// For waits between tries.
        DeviceReturn::Clock clock = OncePerMinute::steadyTime;
        /// Searches with GenTL producers, too: these and those of environment and settings.
        std::optional<QStringList> producers = std::nullopt;
        /// Leaves the producers of environment and settings out; see Producers.
        bool onlyGivenProducers = false;
    };

    explicit HostContext(Options options, QObject *parent = nullptr);
    /// Closes every device. Waits for those that are being reached, which takes seconds for a dead one.
    ~HostContext() override;

    /// The context that HostCore forwards to; null before the first and after the last one.
    static HostContext *current();
    /// Has the current context do something on its thread, at once when called there. Any thread; without a context, or
    /// when it goes before its turn comes, nothing happens.
    static void callCurrent(const std::function<void(HostContext &)> &action);

    QSettings &settings() { return *m_settings; }
    HostListeners &listeners() { return m_listeners; }
    HostLog &log() { return m_log; }

    Producers &producers() { return m_producers; }
    KnownDevices &devices() { return m_devices; }
    DeviceSessions &sessions() { return m_sessions; }
    AutomaticSearch &automaticSearch() { return m_automaticSearch; }
    SilentDevices &silentDevices() { return m_silentDevices; }
    DeviceReturn &deviceReturn() { return m_deviceReturn; }
    CameraModules &cameraModules() { return m_cameraModules; }
    HostFocus &focus() { return m_focus; }
    InfoItems &infoItems() { return m_infoItems; }
    DeviceValues &values() { return m_values; }
    DeviceWrites &writes() { return m_writes; }
    WriteLog &writeLog() { return m_writes.log(); }

    ImageRegions &regions() { return m_regions; }
    PanelRegions &panelRegions() { return m_panelRegions; }
    ProfilerRegions &profilerRegions() { return m_profilerRegions; }
    ProfilerHeights &profilerHeights() { return m_profilerHeights; }
    ShowModes &showModes() { return m_showModes; }

    /// "English" or "Chinese"; kept in the settings. Tells the panel even if nothing changes: a panel starts in
    /// English.
    void setLanguage(const QString &name);
    QString language() const;

private:
    void connectParts();

    // In the order in which they need each other. In the end the devices close as the last but log and listeners: they
    // have nobody left to tell, and sessions were ended before.
    HandOver m_handOver;
    HostLog m_log;
    HostListeners m_listeners;
    std::unique_ptr<QSettings> m_settings;
    Producers m_producers;
    KnownDevices m_devices;
    HostFocus m_focus;
    DeviceSessions m_sessions;
    SilentDevices m_silentDevices;
    DeviceReturn m_deviceReturn;
    CameraModules m_cameraModules;
    AutomaticSearch m_automaticSearch;
    InfoItems m_infoItems;
    DeviceValues m_values;
    DeviceWrites m_writes;
    ImageRegions m_regions;
    PanelRegions m_panelRegions;
    ProfilerRegions m_profilerRegions;
    ProfilerHeights m_profilerHeights;
    ShowModes m_showModes;
};
