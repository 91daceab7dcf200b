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
        trigger.readDataSource();
        trigger.readBatchMode();
        contour.readLaserAdjustMode();
        corrections.show();
    }
    void readSettings() const
    {
        image.readContourSpacing();
        zRange.show();
    }
    /// Shows what may have changed with the acquisition. Writes nothing.
    void show() const
    {
        trigger.showDataSource();
        trigger.showBatchMode();
        contour.showLaserAdjustMode();
        image.showSettings();
        zRange.show();
    }
    /// Shows what the device and the settings have become, on one page, counted from 0, or on all. Writes nothing but
    /// what selects the triggers and masks to ask for; the line trigger is left selected.
    void showPage(int page) const
    {
        switch (page) {
        case 0:
            trigger.showModes();
            trigger.showDataSource();
            trigger.showBatchMode();
            break;
        case 1:
            image.showSettings();
            image.showMeasureRange();
            masks.show();
            zRange.show();
            break;
        case 2:
            contour.showLaserAdjustMode();
            break;
        case 3:
            corrections.show();
            break;
        }
    }
    void showAll() const
    {
        for (int page : {0, 1, 2, 3})
            showPage(page);
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
