// SPDX-License-Identifier: MIT
#include "Viewer/SensorPictures.h"

#include "Viewer/HeightDisplay.h"

SensorPictures::SensorPictures(HostContext &host, const HeightDisplay &heights, QObject *parent)
    : QObject(parent), m_host(host), m_heights(heights)
{
    connect(&host.devices(), &KnownDevices::frameReady, this, &SensorPictures::keep);
    connect(&host.sessions(), &DeviceSessions::stateChanged, this, &SensorPictures::adoptState);
}

void SensorPictures::keep(const QString &id, const QImage &frame)
{
    if (m_heights.shows(id))
        return;
    m_pictures.insert(id, {frame, {}});
    if (!m_host.devices().device(id)->isAcquiring()) // it was on its way when the acquisition ended
        locate(id);
}

void SensorPictures::adoptState(const QString &id)
{
    if (!m_host.devices().isReady(id))
        m_pictures.remove(id);
    else if (!m_host.devices().device(id)->isAcquiring())
        locate(id);
}

/// The device may show another part of its sensor from the next acquisition on.
void SensorPictures::locate(const QString &id)
{
    const auto picture = m_pictures.find(id);
    if (picture != m_pictures.end() && picture->place.area.isEmpty())
        picture->place = m_host.values().imagePlace(id);
}

QRect SensorPictures::placeOn(const QString &id, const QSize &image) const
{
    const Picture picture = m_pictures.value(id);
    const ImagePlace now = m_host.values().imagePlace(id);
    if (now.area.size() != image || picture.place.area.size() != picture.image.size()) // not placed by its offsets
        return picture.image.size() == image ? QRect(QPoint(), image) : QRect();
    return now.largest == picture.place.largest ? picture.place.area.translated(-now.area.topLeft()) : QRect();
}
