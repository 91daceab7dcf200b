// SPDX-License-Identifier: MIT
#include "ParamterWnd/KeptPlaces.h"

#include <QObject>
#include <QStringList>
#include <QVariant>

namespace {

bool isReturning(const QObject &window, const QString &device)
{
    return window.property("returningDevices").toStringList().contains(device);
}

} // namespace

void KeptPlaces::keep(const QObject &window, const QString &device, QWidget &panel)
{
    m_places.remove(device);
    if (isReturning(window, device))
        m_places.insert(device, PanelPlace::take(panel));
}

void KeptPlaces::giveBack(const QObject &window, const QString &device, QWidget &panel)
{
    const auto place = m_places.find(device);
    if (place == m_places.end())
        return;
    if (isReturning(window, device))
        place->giveBack(panel);
    m_places.erase(place);
}
