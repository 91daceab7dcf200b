// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QImage>
#include <QObject>

#include "Host/HostContext.h"

class HeightDisplay;

/// The newest picture of each camera's sensor, and where it lies on it: on images of another part of the sensor it
/// still shows what is there. Height maps are none.
class SensorPictures : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive this. `heights` is made first, so that it knows of a frame when the frame comes here.
    SensorPictures(HostContext &host, const HeightDisplay &heights, QObject *parent = nullptr);

    /// Null without one.
    QImage of(const QString &id) const { return m_pictures.value(id).image; }
    /// Where it lies on an image of the device that has this size now, in pixels of the image; empty when that is not
    /// known.
    QRect placeOn(const QString &id, const QSize &image) const;

private:
    struct Picture
    {
        QImage image;
        ImagePlace place; ///< empty as long as the device still acquires
    };

    void keep(const QString &id, const QImage &frame);
    void adoptState(const QString &id);
    void locate(const QString &id);

    HostContext &m_host;
    const HeightDisplay &m_heights;
    QHash<QString, Picture> m_pictures;
};
