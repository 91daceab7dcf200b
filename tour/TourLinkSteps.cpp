// SPDX-License-Identifier: MIT
#include "tour/TourLinkSteps.h"

#include <QTreeView>

#include "Devices/Device.h"
#include "Viewer/DeviceTree.h"
#include "Viewer/FrameStatus.h"
#include "Viewer/ImageView.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/ViewerWindow.h"
#include "tour/TourDeeds.h"
#include "tour/TourHand.h"
#include "tour/TourStage.h"

namespace {

using State = DeviceTree::State;

constexpr int BackWithinMs = 3000;

bool loseFrames(TourStage &stage)
{
    const QString before = stage.window().frameStatus().text();
    stage.order(Command::LoseFrames);
    const Device &camera = *stage.simulated(false);
    const bool isCounted = TourHand::waitUntil([&] {
        const FrameCounts counts = camera.frameCounts();
        return counts.lost > 0 && counts.incomplete > 0;
    });
    TourHand::pause(500); // the status follows
    return stage.expect(isCounted, say("lost frames are not counted"))
        && stage.expect(stage.window().frameStatus().text() != before, say("lost frames are not shown"))
        && stage.expect(stage.isLogged(say("lost")), say("lost frames are not logged"));
}

bool keepFrames(TourStage &stage)
{
    stage.order(Command::LoseFrames);
    return true;
}

/// The last values in gray; nothing can be edited, and nobody waits.
bool silenceCamera(TourStage &stage)
{
    keepFrames(stage);
    stage.order(Command::Silence);
    const bool isTold = TourHand::waitUntil([&] { return stage.isLogged(say("what was read last is shown")); });
    return stage.expect(isTold, say("nobody is told of the silence"))
        && stage.expect(!stage.tree().openEditor(say("DeviceUserID")), say("a silent camera can be edited"));
}

bool hearCamera(TourStage &stage)
{
    stage.order(Command::Silence);
    const bool isLive = TourHand::waitUntil([&] { return stage.isLogged(say("are live again")); }, BackWithinMs);
    return stage.expect(isLive, say("the values do not become live again"))
        && stage.expect(stage.tree().showEditor(say("DeviceUserID")), say("the camera cannot be edited again"));
}

bool unplugCamera(TourStage &stage)
{
    stage.tree().leaveEditor();
    stage.tree().view()->setCurrentIndex(stage.tree().feature(say("DeviceUserID")));
    stage.order(Command::Unplug);
    return stage.expect(stage.reaches(*stage.simulated(false), State::Lost), say("the camera is not lost"));
}

/// In the same place, acquiring, without a hand at the panel.
bool plugCameraIn(TourStage &stage)
{
    stage.order(Command::Unplug);
    const bool isBack = stage.reaches(*stage.simulated(false), State::Acquiring);
    const bool isShown = TourHand::waitUntil([&] { return stage.tree().shownRows() > 0; }, BackWithinMs);
    return stage.expect(isBack && isShown, say("the camera does not come back"))
        && stage.expect(stage.tree().view()->isVisible(), say("another tab is in front"))
        && stage.expect(stage.tree().view()->currentIndex() == stage.tree().feature(say("DeviceUserID")),
                        say("another row is selected"));
}

} // namespace

const std::vector<TourStep> &tourLinkSteps()
{
    static const std::vector<TourStep> Steps = {
        {"frames-lost", loseFrames},   {"camera-silent", silenceCamera}, {"camera-answers", hearCamera},
        {"camera-lost", unplugCamera}, {"camera-back", plugCameraIn},
    };
    return Steps;
}
