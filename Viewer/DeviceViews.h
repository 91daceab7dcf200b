// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QImage>
#include <QSplitter>

class Device;
class DeviceTree;
class HeightDisplay;
class HostContext;
class ImageView;
class MissingFrames;
class SensorPictures;

/// What the current device sends: its newest image, and below a height map the sensor on which its regions lie, as long
/// as there are regions.
class DeviceViews : public QSplitter
{
    Q_OBJECT

public:
    /// Both must outlive the views.
    DeviceViews(HostContext &context, const DeviceTree &devices);

    ImageView &image() const { return *m_image; }
    /// Where the regions of the current device are drawn: image(), or the view of the sensor below a height map.
    ImageView &regionView() const;
    /// The PFNC name of what is shown, where `sent` names what the current camera sends.
    QString pixelFormat(const QString &sent) const;

    /// Shows what there is of the current device, which may be another one than before.
    void showCurrent();
    /// Of a device that is closed or lost.
    void forgetFrame(const QString &id) { m_frames.remove(id); }
    void retranslate();

Q_SIGNALS:
    /// The picture may have another pixel format.
    void pictureChanged();
    /// There is an image now, or another canvas in place of one.
    void contentChanged();

private:
    void adoptFrame(const QString &id, const QImage &frame);
    void adoptRegions(const QString &id);
    void adoptHeights(const QString &id);
    QString currentId() const;
    /// The size of the image that a region of the current device is drawn on; empty when its picture is just that.
    QSize canvasSize() const;
    /// Shows the image on which regions lie, with what the last picture of the sensor covers of it.
    void showCanvas(ImageView &view);
    void showSensor();
    QString imageHint() const;
    QString lostHint(const Device &device, const QString &error) const;

    HostContext &m_context;
    const DeviceTree &m_devices;
    ImageView *m_image;
    ImageView *m_sensor;
    MissingFrames *m_missing;
    HeightDisplay *m_heights;
    SensorPictures *m_pictures;
    QHash<QString, QImage> m_frames; ///< last frame of each open camera
    bool m_showsHeights = false; ///< of the current device; its regions lie on the view of the sensor
};
