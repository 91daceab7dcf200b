// SPDX-License-Identifier: MIT
#pragma once

#include "ParamterWidget/profiler/ContourTab.h"
#include "ParamterWidget/profiler/Corrections.h"
#include "ParamterWidget/profiler/ImageTab.h"
#include "ParamterWidget/profiler/ShieldMasks.h"
#include "ParamterWidget/profiler/TriggerTab.h"
#include "ParamterWidget/profiler/ZRange.h"

/// The tools of the laser profiler's pages. GUI thread only.
struct ProfilerPages
{
    /// The controls become children of `controlsParent`, until a page places them. The device must be open.
    ProfilerPages(PanelContext &context, QWidget *controlsParent)
        : trigger(context, controlsParent), image(context, controlsParent), masks(context, controlsParent),
          zRange(context, controlsParent), contour(context, controlsParent), corrections(context, controlsParent)
    { }

    /// Sets the controls from the device and from the host's settings. The two modes of the trigger tab are read in
    /// this order, because each selects its trigger first.
    void readDevice()
    {
        trigger.readModes();
        trigger.showDataSource();
        trigger.readBatchMode();
        contour.readLaserAdjustMode();
        corrections.read();
    }
    void readSettings() const
    {
        image.readContourSpacing();
        zRange.show();
    }
    /// Shows what the device and the settings have become, without the modes of the trigger tab and the corrections.
    /// Writes nothing.
    void show() const
    {
        trigger.showDataSource();
        trigger.showBatchMode();
        contour.showLaserAdjustMode();
        image.showSettings();
        zRange.show();
    }
    /// The same with the modes, so the line trigger is left selected.
    void showAfterUserSet() const
    {
        trigger.showModes();
        show();
    }
    void retranslate() const
    {
        zRange.retranslate();
        corrections.retranslate();
    }

    TriggerTab trigger;
    ImageTab image;
    ShieldMasks masks;
    ZRange zRange;
    ContourTab contour;
    Corrections corrections;
};
