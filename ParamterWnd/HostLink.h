// SPDX-License-Identifier: MIT
#pragma once

#include "Features/HandOver.h"
#include "ParamterWnd/HostEventBridges.h"

class ParameterWidgetManager;
class QObject;

/// The bridges between the host and a manager, registered with the host for as long as this lives. GUI thread only.
class HostLink
{
public:
    /// `manager` must outlive the link; the host may raise events from here on.
    explicit HostLink(ParameterWidgetManager *manager);
    ~HostLink();
    HostLink(const HostLink &) = delete;
    HostLink &operator=(const HostLink &) = delete;

    /// Lets `receiver` get no signal of the bridges any more, and waiting host threads go.
    void release(QObject *receiver);

    HandOver toGui; ///< for what other threads say
    DeviceListUpdate deviceList;
    FocusUpdate focus;
    LanguageUpdate language;
    ROIUpdate region;
    ImageModeUpdate imageMode;
    ImportUpdate import;
};
