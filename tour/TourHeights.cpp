// SPDX-License-Identifier: MIT
#include "tour/TourHeights.h"

#include "Host/HostContext.h"
#include "Viewer/ViewerCommands.h"
#include "tour/TourHand.h"
#include "tour/TourStage.h"

HeightFrame TourHeights::next(TourStage &stage, const std::function<bool(const HeightFrame &)> &wanted, int patience)
{
    HeightFrame found;
    QObject listener;
    QObject::connect(&stage.host().devices(), &KnownDevices::heightReady, &listener,
                     [&](const QString &, const HeightFrame &frame) {
                         if (wanted(frame))
                             found = frame;
                     });
    TourHand::waitUntil([&] { return found.width > 0; }, patience);
    return found;
}

HeightFrame TourHeights::first(TourStage &stage)
{
    stage.order(Command::StartAcquisition);
    const HeightFrame map = next(stage, [](const HeightFrame &frame) { return frame.complete; });
    stage.expect(map.width > 0, say("no height map comes"));
    return map;
}

HeightAnalysis::Range TourHeights::firstRange(TourStage &stage)
{
    return HeightAnalysis::usualRange(first(stage)).value_or(HeightAnalysis::Range{qQNaN(), qQNaN()});
}
