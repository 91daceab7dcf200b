// SPDX-License-Identifier: MIT
#pragma once

#include "ParamterWidget/ReadingSteps.h"
#include "ParamterWidget/profiler/ContourTab.h"
#include "ParamterWidget/profiler/Corrections.h"
#include "ParamterWidget/profiler/ImageTab.h"
#include "ParamterWidget/profiler/ProfileData.h"
#include "ParamterWidget/profiler/ShieldMasks.h"
#include "ParamterWidget/profiler/TriggerTab.h"
#include "ParamterWidget/profiler/ZRange.h"

/// The tools of the laser profiler's pages. GUI thread only.
struct ProfilerPages
{
    /// The controls become children of `controlsParent`, until a page places them. The device must be open.
    ProfilerPages(PanelContext &context, QWidget *controlsParent);

    /// The panel has a device that is no area-scan camera; the functions below take no action otherwise, except
    /// adoptDevice().
    bool hasProfiler() const;
    /// Set the controls from the device and from the host's settings, and apply them as if the user had chosen them.
    void adoptDevice();
    void adoptSettings();
    void adoptMeasureRange();
    void adoptMasks();
    /// Shows what may have changed with the acquisition. Writes nothing.
    void show();
    /// Shows what the device and the settings have become, on one page, counted from 0, or on all. Writes nothing but
    /// what selects the triggers and masks to ask for; the line trigger is left selected.
    void showPage(int page);
    void showAll();
    /// Sets the texts in the application's language.
    void retranslate();

    ReadingSteps::Step showSource();
    ReadingSteps::Step showBatchMode();
    ReadingSteps::Step showLaser();
    ReadingSteps::Step showTilt();
    ReadingSteps::Step showHeight();

    const PanelContext &context;
    TriggerTab trigger;
    ProfileData data;
    ImageTab image;
    ShieldMasks masks;
    ZRange zRange;
    ContourTab contour;
    Corrections corrections;
    ReadingSteps steps; ///< of all of them: what is read by name goes on in turns on a slow device
};
