// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QImage>
#include <QMainWindow>

#include "Viewer/Translators.h"

class Device;
class DeviceTree;
class FrameStatus;
class HeightDisplay;
class HostContext;
class ImageView;
class LogView;
class ParamterWnd;
class QDockWidget;
class SensorPictures;
class ViewerCommands;
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

    HostContext &host() { return m_context; }
    DeviceTree &devices() { return *m_devices; }
    ImageView &image() { return *m_image; }
    /// On which the regions of the current device lie: under a height map it is another one than that of the images.
    ImageView &regionView() const;
    FrameStatus &frameStatus() { return *m_status; }
    LogView &log() { return *m_log; }
    ParamterWnd &panel() { return *m_panel; }
    ViewerCommands &commands() { return *m_commands; }

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    QDockWidget *addDock(const QString &name, Qt::DockWidgetArea area, QWidget *content);
    void buildViews();
    void buildDocks();
    void buildCommands();
    void connectHost();
    void run(Command command, bool checked);
    void closeDevice();
    void startAcquisition();
    void stopAcquisition();
    void takeNextStep();
    void askForDescription();
    void showDeviceMenu(const QPoint &position);
    void showAbout();
    void followFocus();
    /// The size of the image that a region of the current device is drawn on; empty when its picture is just that.
    QSize canvasSize() const;
    void showSensor();
    /// Shows the image on which regions lie, with what the last picture of the sensor covers of it.
    void showCanvas(ImageView &view);
    void showPicture();
    void followRegions(const QString &id);
    void followHeights(const QString &id);
    void followState(const QString &id);
    void showFrame(const QString &id, const QImage &frame);
    QString imageHint() const;
    QString currentId() const;
    void showFormat();
    void updateCommands();
    void openPending();
    void followSearch(bool searching);
    void retranslate();
    void restoreLayout();

    HostContext &m_context;
    Translators m_translators;
    DeviceTree *m_devices;
    ImageView *m_image;
    ImageView *m_sensor;
    HeightDisplay *m_heights;
    SensorPictures *m_pictures;
    FrameStatus *m_status;
    QString m_cameraFormat; ///< the PixelFormat of the current camera while it acquires, else empty
    LogView *m_log;
    ParamterWnd *m_panel;
    ViewerCommands *m_commands = nullptr;
    QDockWidget *m_deviceDock = nullptr;
    QDockWidget *m_panelDock = nullptr;
    QDockWidget *m_logDock = nullptr;
    QHash<QString, QImage> m_frames; ///< last frame of each open camera
    bool m_showsHeights = false; ///< of the current device; its regions lie on the view of the sensor
    QString m_pendingId; ///< to be opened once it is known
};
