// SPDX-License-Identifier: MIT
#include "Host/ImageRegions.h"

#include <algorithm>
#include <utility>

namespace {

/// What lies between two edges on an image of that extent, as first pixel and length.
std::pair<int, int> spanBetween(int edge, int opposite, int extent)
{
    const auto [low, high] = std::minmax({std::clamp(edge, 0, extent), std::clamp(opposite, 0, extent)});
    return {low, high - low};
}

QRect areaBetween(const QPoint &corner, const QPoint &opposite, const QSize &image)
{
    const auto [left, width] = spanBetween(corner.x(), opposite.x(), std::max(0, image.width()));
    const auto [top, height] = spanBetween(corner.y(), opposite.y(), std::max(0, image.height()));
    return {left, top, width, height};
}

auto withHandle(int handle)
{
    return [handle](const ImageRegion &one) { return one.handle == handle; };
}

} // namespace

int ImageRegions::draw(const QString &device, const QSize &image, const QPoint &corner, const QPoint &opposite,
                       std::optional<int> number)
{
    const QRect area = areaBetween(corner, opposite, image);
    if (area.isEmpty())
        return 0;
    const int handle = ++m_lastHandle;
    m_regions.append({handle, device, image, area, number});
    Q_EMIT listChanged(device);
    return handle;
}

bool ImageRegions::place(const QString &device, int handle, const QPoint &corner, const QPoint &opposite)
{
    ImageRegion *const region = find(handle);
    if (!region || region->device != device)
        return false;
    put(*region, areaBetween(corner, opposite, region->image));
    return true;
}

void ImageRegions::move(int handle, const QRect &area)
{
    ImageRegion *const region = find(handle);
    if (!region || !put(*region, area & QRect(QPoint(), region->image)))
        return;
    // Whoever hears of it may remove the region.
    if (const ImageRegion *const moved = find(handle))
        Q_EMIT movedByUser(QString(moved->device), handle, QRect(moved->area));
}

bool ImageRegions::put(ImageRegion &region, const QRect &area)
{
    if (area.isEmpty() || area == region.area)
        return false;
    region.area = area;
    Q_EMIT placed(QString(region.device));
    return true;
}

bool ImageRegions::remove(const QString &device, int handle)
{
    const auto wanted = [&](const ImageRegion &one) { return one.handle == handle && one.device == device; };
    const auto place = std::find_if(m_regions.begin(), m_regions.end(), wanted);
    if (place == m_regions.end())
        return false;
    m_regions.erase(place);
    Q_EMIT listChanged(device);
    return true;
}

void ImageRegions::removeAll(const QString &device)
{
    const auto isOfDevice = [&device](const ImageRegion &one) { return one.device == device; };
    const auto firstGone = std::remove_if(m_regions.begin(), m_regions.end(), isOfDevice);
    if (firstGone == m_regions.end())
        return;
    m_regions.erase(firstGone, m_regions.end());
    Q_EMIT listChanged(device);
}

QList<ImageRegion> ImageRegions::of(const QString &device) const
{
    QList<ImageRegion> result;
    for (const ImageRegion &one : m_regions) {
        if (one.device == device)
            result.append(one);
    }
    return result;
}

ImageRegion ImageRegions::region(int handle) const
{
    const auto place = std::find_if(m_regions.begin(), m_regions.end(), withHandle(handle));
    return place == m_regions.end() ? ImageRegion() : *place;
}

std::optional<int> ImageRegions::handleOf(const QString &device, int number) const
{
    for (const ImageRegion &one : m_regions) {
        if (one.device == device && one.number == number)
            return one.handle;
    }
    return {};
}

ImageRegion *ImageRegions::find(int handle)
{
    const auto place = std::find_if(m_regions.begin(), m_regions.end(), withHandle(handle));
    return place == m_regions.end() ? nullptr : &*place;
}
