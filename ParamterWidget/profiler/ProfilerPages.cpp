// SPDX-License-Identifier: MIT
#include "ParamterWidget/profiler/ProfilerPages.h"

#include "ParamterWidget/PanelContext.h"

ProfilerPages::ProfilerPages(PanelContext &panel, QWidget *controlsParent)
    : context(panel), trigger(panel, controlsParent), data(panel, controlsParent), image(panel, controlsParent),
      masks(panel, controlsParent), zRange(panel, controlsParent), contour(panel, controlsParent),
      corrections(panel, controlsParent), steps(panel)
{ }

bool ProfilerPages::hasProfiler() const
{
    return !context.areaScan && !context.deviceName.isEmpty();
}

/// The two modes of the trigger tab come first: each selects its trigger, and the line trigger stays selected.
void ProfilerPages::adoptDevice()
{
    steps.run({{"adopt frame trigger", [this] { trigger.adoptFrameTrigger(); }},
               {"adopt line scan", [this] { trigger.adoptLineScan(); }},
               {"adopt source", [this] { data.adoptSource(); }},
               {"adopt batch mode", [this] { data.adoptBatchMode(); }},
               {"adopt laser", [this] { contour.adoptLaserAdjustMode(); }},
               showTilt(),
               showHeight()});
}

void ProfilerPages::adoptSettings()
{
    if (!hasProfiler())
        return;
    image.adoptContourSpacing();
    zRange.show();
}

void ProfilerPages::adoptMeasureRange()
{
    if (hasProfiler())
        steps.run({{"adopt measure range", [this] { image.adoptMeasureRange(); }}});
}

void ProfilerPages::adoptMasks()
{
    if (hasProfiler())
        steps.run({{"adopt mask 1", [this] { masks.adopt(0); }},
                   {"adopt mask 2", [this] { masks.adopt(1); }},
                   {"adopt mask 3", [this] { masks.adopt(2); }}});
}

void ProfilerPages::show()
{
    if (!hasProfiler())
        return;
    steps.run({showSource(), showBatchMode(), showLaser()});
    image.showSettings();
    zRange.show();
}

void ProfilerPages::showPage(int page)
{
    if (!hasProfiler())
        return;
    switch (page) {
    case 0:
        steps.run({{"frame trigger", [this] { trigger.showFrameTrigger(); }},
                   {"line scan", [this] { trigger.showLineScan(); }},
                   showSource(),
                   showBatchMode()});
        break;
    case 1:
        image.showSettings();
        steps.run({{"measure range", [this] { image.showMeasureRange(); }},
                   {"mask selection", [this] { masks.beginShowing(); }},
                   {"mask 1", [this] { masks.show(0); }},
                   {"mask 2", [this] { masks.show(1); }},
                   {"mask 3", [this] { masks.show(2); }},
                   {"former mask selection", [this] { masks.endShowing(); }}});
        zRange.show();
        break;
    case 2:
        steps.run({showLaser()});
        break;
    case 3:
        steps.run({showTilt(), showHeight()});
        break;
    }
}

void ProfilerPages::showAll()
{
    for (int page : {0, 1, 2, 3})
        showPage(page);
}

ReadingSteps::Step ProfilerPages::showSource()
{
    return {"source", [this] { data.showSource(); }};
}

ReadingSteps::Step ProfilerPages::showBatchMode()
{
    return {"batch mode", [this] { data.showBatchMode(); }};
}

ReadingSteps::Step ProfilerPages::showLaser()
{
    return {"laser", [this] { contour.showLaserAdjustMode(); }};
}

ReadingSteps::Step ProfilerPages::showTilt()
{
    return {"tilt", [this] { corrections.showTilt(); }};
}

ReadingSteps::Step ProfilerPages::showHeight()
{
    return {"height", [this] { corrections.showHeight(); }};
}

void ProfilerPages::retranslate()
{
    zRange.retranslate();
    corrections.retranslate();
}
