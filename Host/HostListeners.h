// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QString>
#include <QStringList>

#include "Host/ListenerList.h"
#include "ParamterWnd/HostCore.h"

/// Everybody who listens to the host, and the events as the host raises them.
class HostListeners
{
public:
    ListenerList<HostCore::IDeviceListUpdate> deviceList;
    ListenerList<HostCore::IFocusUpdate> focus;
    ListenerList<HostCore::ILangUpdate> language;
    ListenerList<HostCore::IROIDrawUpdate> regions;
    ListenerList<HostCore::IImageModeUpdate> imageMode;
    ListenerList<HostCore::IImportUpdate> import;

    /// Not on the GUI thread: waits until the panel has handled it there (5 s per listener at most).
    void raiseDeviceList(const QStringList &cards, const QStringList &cameras);
    /// GUI thread. An empty id with a type that is neither card nor camera means "nothing has the focus".
    void raiseFocus(HostCore::FOCUS_TYPE type, const QString &id);
    void raiseLanguage(const QString &language);
    /// GUI thread. A person moved a region; `area` in image pixels.
    void raiseRegionMoved(const QString &id, int handle, const QRect &area);
    void raiseImport(const QString &id);
};
