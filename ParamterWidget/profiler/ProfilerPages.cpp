// SPDX-License-Identifier: MIT
#include "ParamterWidget/profiler/ProfilerPages.h"

#include "ParamterWidget/PanelContext.h"

ProfilerPages::ProfilerPages(PanelContext &panel, QWidget *controlsParent)
    : context(panel), trigger(panel, controlsParent), data(panel, controlsParent), image(panel, controlsParent),
      masks(panel, controlsParent), zRange(panel, controlsParent), contour(panel, controlsParent),
      corrections(panel, controlsParent)
{ }

bool ProfilerPages::hasProfiler() const
{
    return !context.areaScan && !context.deviceName.isEmpty();
}

/// The two modes of the trigger tab come first: each selects its trigger, and the line trigger stays selected.
void ProfilerPages::adoptDevice()
{
    trigger.adoptModes();
    data.adoptSource();
    data.adoptBatchMode();
    contour.adoptLaserAdjustMode();
    corrections.show();
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
        image.adoptMeasureRange();
}

void ProfilerPages::adoptMasks()
{
    if (hasProfiler())
        masks.adopt();
}

void ProfilerPages::show()
{
    if (!hasProfiler())
        return;
    data.showSource();
    data.showBatchMode();
    contour.showLaserAdjustMode();
    image.showSettings();
    zRange.show();
}

void ProfilerPages::showPage(int page)
{
    if (!hasProfiler())
        return;
    switch (page) {
    case 0:
        trigger.showModes();
        data.showSource();
        data.showBatchMode();
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

void ProfilerPages::showAll()
{
    for (int page : {0, 1, 2, 3})
        showPage(page);
}

void ProfilerPages::retranslate()
{
    zRange.retranslate();
    corrections.retranslate();
}
