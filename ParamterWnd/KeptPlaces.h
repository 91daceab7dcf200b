// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>

#include "ParamterWidget/PanelPlace.h"

class QObject;
class QWidget;

/// The places of panels whose devices were lost, for the panels that the same devices get next. Which devices that are,
/// the host says in the dynamic property "returningDevices" (QStringList) of the exported window. GUI thread only.
class KeptPlaces
{
public:
    /// To be called before the panel of a device goes, while its rows still exist.
    void keep(const QObject &window, const QString &device, QWidget &panel);
    /// To be called when the new panel of a device has its rows. A place is given back once.
    void giveBack(const QObject &window, const QString &device, QWidget &panel);

private:
    QHash<QString, PanelPlace> m_places; ///< by device
};
