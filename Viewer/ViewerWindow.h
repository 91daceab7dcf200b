// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QMainWindow>

#include "Viewer/Translators.h"

class Device;
class DeviceTree;
class DeviceViews;
class DeviceWays;
class FrameStatus;
class HostContext;
class ImageView;
class LoadStatus;
class LogView;
class ParamterWnd;
class QDockWidget;
class SettingsCommands;
class ViewerCommands;
class WriteLogDock;
enum class Command;

/// The main window of the demo host: devices, image, the parameter panel, log.
class ViewerWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// `context` must outlive the window.
    explicit ViewerWindow(HostContext &context);
    /// Removes the panel before the devices' node maps go.
    ~ViewerWindow() override;

    /// Opens a camera description without a camera and selects it. False on failure, which is logged.
    bool openDescription(const QString &path);
    /// Opens and selects a device as soon as it is known.
    void openWhenKnown(const QString &id);
    void useLanguage(const QString &language);
    /// Opens a camera description, or loads settings into the current device.
    void take(const QString &file);

    HostContext &host() { return m_context; }
    DeviceTree &devices() { return *m_devices; }
    ImageView &image() const;
    /// Where the regions of the current device are drawn: image(), or the view of the sensor below a height map.
    ImageView &regionView() const;
    FrameStatus &frameStatus() { return *m_status; }
    LogView &log() { return *m_log; }
    ParamterWnd &panel() { return *m_panel; }
    ViewerCommands &commands() { return *m_commands; }
    SettingsCommands &settingsCommands() { return *m_settings; }

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    QDockWidget *addDock(const QString &name, Qt::DockWidgetArea area, QWidget *content);
    void buildDocks();
    void buildCommands();
    void connectHost();
    void run(Command command, bool checked);
    void startAcquisition();
    void takeNextStep();
    void askForDescription();
    void showDeviceMenu(const QPoint &position);
    void showProducers();
    void showAbout();
    void adoptFocus();
    void adoptState(const QString &id);
    QString currentId() const;
    void showFormat();
    void showFrameCounts();
    void updateCommands();
    void openPending();
    void adoptSearch(bool searching);
    void retranslate();
    void restoreLayout();

    HostContext &m_context;
    Translators m_translators;
    DeviceTree *m_devices;
    DeviceViews *m_views;
    FrameStatus *m_status;
    LoadStatus *m_load;
    QString m_cameraFormat; ///< the PixelFormat of the current camera while it acquires, else empty
    LogView *m_log;
    ParamterWnd *m_panel;
    ViewerCommands *m_commands = nullptr;
    SettingsCommands *m_settings = nullptr;
    std::unique_ptr<DeviceWays> m_ways;
    QDockWidget *m_deviceDock = nullptr;
    QDockWidget *m_panelDock = nullptr;
    QDockWidget *m_logDock = nullptr;
    WriteLogDock *m_writeLogDock = nullptr;
    QString m_pendingId; ///< to be opened once it is known
};
