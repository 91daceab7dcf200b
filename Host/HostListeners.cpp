// SPDX-License-Identifier: MIT
#include "Host/HostListeners.h"

#include <string>
#include <vector>

namespace {

std::vector<std::string> narrow(const QStringList &texts)
{
    std::vector<std::string> result;
    result.reserve(static_cast<std::size_t>(texts.size()));
    for (const QString &text : texts)
        result.push_back(text.toStdString());
    return result;
}

/// The event source under which a host reports the lists of its devices.
constexpr int DeviceListSource = 1;

/// The operation of a region event that reports a move.
constexpr int RegionMoved = 1;

} // namespace

void HostListeners::raiseDeviceList(const QStringList &cards, const QStringList &cameras)
{
    deviceList.forEach([&](auto *listener) { listener->OnUpdate(DeviceListSource, narrow(cards), narrow(cameras)); });
}

void HostListeners::raiseFocus(HostCore::FOCUS_TYPE type, const QString &id)
{
    focus.forEach([&](auto *listener) { listener->OnUpdate(type, id.toStdString()); });
}

void HostListeners::raiseLanguage(const QString &name)
{
    language.forEach([&](auto *listener) { listener->OnUpdate(name.toStdString()); });
}

void HostListeners::raiseRegionMoved(const QString &id, int handle, const QRect &area)
{
    const int right = area.x() + area.width();
    const int bottom = area.y() + area.height();
    bool status = true;
    regions.forEach([&](auto *listener) {
        listener->OnUpdate(id.toStdString(), area.x(), area.y(), right, bottom, RegionMoved, handle, status, 0, 0);
    });
}

void HostListeners::raiseImport(const QString &id)
{
    this->import.forEach([&](auto *listener) { listener->OnUpdate(id.toStdString()); });
}
