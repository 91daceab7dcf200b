// SPDX-License-Identifier: MIT
#include "tour/TourStructuredLightSteps.h"

#include <QAbstractItemView>
#include <QComboBox>

#include <algorithm>

#include "Host/HostContext.h"
#include "Viewer/ImageView.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/ViewerWindow.h"
#include "tour/TourHand.h"
#include "tour/TourHeights.h"
#include "tour/TourStage.h"

namespace {

enum Page { ShootPage, ImagePage, AdvancedPage };

const QString OutputList = say("2D Acquisition Output");
const QString ShowList = say("2D Image Show");
const QString LowTruncation = say("LowTruncation");
const QString Lamp = say("Light1Value");

struct Output
{
    const char *feature;
    const char *name; ///< in both lists
};
constexpr Output LeftPlain{"Left2DImage", "2D Left"}, RightPlain{"Right2DImage", "2D Right"};
constexpr Output LeftStreak{"Left2DSrcImage", "Left Streak"}, RightStreak{"Right2DSrcImage", "Right Streak"};
constexpr Output LeftShot{"Left2.5DFront", "2.5D Left Shot"}, RightShot{"Right2.5DFront", "2.5D Right Shot"};
constexpr Output LeftReflex{"Left2.5DBack", "2.5D Left Reflex"}, RightReflex{"Right2.5DBack", "2.5D Right Reflex"};
constexpr Output Outputs[] = {LeftPlain, RightPlain, LeftStreak, RightStreak,
                              LeftShot,  RightShot,  LeftReflex, RightReflex}; // in the order of the list

Device &camera(TourStage &stage)
{
    return *stage.host().devices().device(say("SIM-SL-01"));
}

QImage picture(TourStage &stage)
{
    return stage.window().image().frame();
}

bool isSent(TourStage &stage, const Output &output, bool sent)
{
    return stage.becomes(output.feature, sent ? "True" : "False");
}

bool showsDepthMap(TourStage &stage)
{
    return stage.expect(TourHand::waitUntil([&] { return !picture(stage).isNull() && !picture(stage).isGrayscale(); }),
                        say("the depth map is not shown"));
}

bool openCamera(TourStage &stage)
{
    return stage.open(camera(stage)) && stage.page().open(ShootPage) && stage.acquires() && showsDepthMap(stage);
}

/// The list of outputs, open.
QAbstractItemView *openOutputs(TourStage &stage)
{
    auto *box = stage.page().control<QComboBox>(OutputList);
    if (!stage.expect(box, say("there is no list of outputs")))
        return nullptr;
    if (!box->view()->isVisible())
        TourHand::click(box);
    return stage.expect(box->view()->isVisible(), say("the outputs are not listed")) ? box->view() : nullptr;
}

/// Clicks the entry, which leaves the list open.
bool toggle(TourStage &stage, const Output &output, bool sent)
{
    QAbstractItemView *const list = openOutputs(stage);
    if (!list)
        return false;
    const QModelIndexList entry = list->model()->match(list->model()->index(0, 0), Qt::DisplayRole, say(output.name));
    TourHand::clickCell(list, entry.value(0));
    return stage.expect(list->isVisible(), say("the list closes")) && isSent(stage, output, sent);
}

bool tickByMouse(TourStage &stage)
{
    return toggle(stage, RightPlain, true) && toggle(stage, LeftShot, true) && toggle(stage, LeftPlain, false);
}

/// With the last shot, only the choice changes the picture.
bool stopWithAllOutputs(TourStage &stage)
{
    const HeightFrame shot = TourHeights::next(stage, [](const HeightFrame &frame) {
        return std::none_of(frame.outputs.begin(), frame.outputs.end(),
                            [](const QImage &image) { return image.isNull(); });
    });
    stage.order(Command::StopAcquisition);
    return stage.expect(shot.width > 0, say("not all outputs are sent"));
}

/// Walks down the list and toggles the entries that are not ticked.
bool tickByKeyboard(TourStage &stage)
{
    auto *const box = stage.page().control<QComboBox>(OutputList);
    box->setFocus(Qt::TabFocusReason);
    TourHand::key(box, Qt::Key_Space);
    TourHand::key(box->view(), Qt::Key_Home);
    for (const Output &output : Outputs) {
        if (stage.value(say(output.feature)) == say("False"))
            TourHand::key(box->view(), Qt::Key_Space);
        if (!isSent(stage, output, true))
            return false;
        TourHand::key(box->view(), Qt::Key_Down);
    }
    TourHand::key(box->view(), Qt::Key_Escape);
    return stage.expect(!box->view()->isVisible() && box->hasFocus(), say("Escape does not close the list"))
        && stopWithAllOutputs(stage) && stage.expect(box->hasFocus(), say("the list loses the focus"));
}

/// What the two sensors see of the same.
template <const Output &left, const Output &right>
bool showBoth(TourStage &stage)
{
    QImage before = picture(stage);
    for (const Output *output : {&right, &left}) {
        if (!stage.page().choose(ShowList, say(output->name)))
            return false;
        const auto shows = [&] { return picture(stage).isGrayscale() && picture(stage) != before; };
        if (!stage.expect(TourHand::waitUntil(shows), say("the picture does not change")))
            return false;
        before = picture(stage);
    }
    return true;
}

bool dropShownOutput(TourStage &stage)
{
    return toggle(stage, LeftReflex, false)
        && stage.expect(stage.page().control<QComboBox>(ShowList)->currentText() == say("-"),
                        say("the output that is not sent is still chosen"))
        && showsDepthMap(stage) && stage.acquires();
}

/// The part of the depth map that has no heights: it has no colours either.
double missing(const QImage &map)
{
    int colourless = 0;
    for (int y = 0; y < map.height(); ++y) {
        for (int x = 0; x < map.width(); ++x)
            colourless += map.pixelColor(x, y).saturation() < 30;
    }
    return map.isNull() ? 0.0 : double(colourless) / (map.width() * map.height());
}

bool becomesMissing(TourStage &stage, double least, double most)
{
    const bool reached = TourHand::waitUntil([&] {
        const double part = missing(picture(stage));
        return part >= least && part <= most;
    });
    return stage.expect(reached, QStringLiteral("%1 of the map has no heights").arg(missing(picture(stage))));
}

/// Without the plate, few heights are left.
bool cutHeights(TourStage &stage)
{
    const double before = missing(picture(stage));
    return stage.page().open(ImagePage) && stage.page().enter(LowTruncation, say("5"))
        && becomesMissing(stage, before + 0.3, 1.0);
}

double meanGray(const QImage &image)
{
    double sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            sum += qGray(image.pixel(x, y));
    }
    return image.isNull() ? 0.0 : sum / (image.width() * image.height());
}

/// The heights come back; the lamps then darken the 2D image, not the fringes of the projector.
bool dimLight(TourStage &stage)
{
    if (!stage.page().enter(LowTruncation, say("-20")) || !becomesMissing(stage, 0.0, 0.3)
        || !stage.page().open(ShootPage) || !stage.page().choose(ShowList, say(LeftPlain.name)))
        return false;
    const double before = meanGray(picture(stage));
    const auto isDark = [&] { return meanGray(picture(stage)) < before / 2; };
    return stage.page().open(ImagePage) && stage.page().enter(Lamp, say("15"))
        && stage.expect(TourHand::waitUntil(isDark), say("the image does not get darker"));
}

/// The outputs are part of the set.
bool useUserSets(TourStage &stage)
{
    if (!stage.page().enter(Lamp, say("60")))
        return false;
    stage.order(Command::StopAcquisition);
    const QString selector = say("UserSetSelector");
    return stage.page().open(AdvancedPage) && stage.page().choose(selector, say("UserSet1"))
        && stage.page().press(say("UserSetSave")) && stage.page().open(ShootPage) && toggle(stage, LeftPlain, false)
        && toggle(stage, LeftReflex, true) && stage.page().open(AdvancedPage) && stage.page().press(say("UserSetLoad"))
        && isSent(stage, LeftPlain, true) && isSent(stage, LeftReflex, false) && stage.page().open(ShootPage)
        && stage.expect(stage.page().control<QComboBox>(ShowList)->findText(say(LeftPlain.name)) > 0,
                        say("the loaded output is not offered"));
}

bool leaveCamera(TourStage &stage)
{
    return stage.leave(camera(stage));
}

} // namespace

const std::vector<TourStep> &tourStructuredLightSteps()
{
    static const std::vector<TourStep> Steps = {
        {"depth-camera-open", openCamera},
        {"depth-outputs-by-mouse", tickByMouse},
        {"depth-outputs-by-keyboard", tickByKeyboard},
        {"depth-2d", showBoth<LeftPlain, RightPlain>},
        {"depth-streaks", showBoth<LeftStreak, RightStreak>},
        {"depth-2.5d-shot", showBoth<LeftShot, RightShot>},
        {"depth-2.5d-reflex", showBoth<LeftReflex, RightReflex>},
        {"depth-shown-output-dropped", dropShownOutput},
        {"depth-heights-cut", cutHeights},
        {"depth-light", dimLight},
        {"depth-user-set", useUserSets},
        {"depth-camera-left", leaveCamera},
    };
    return Steps;
}
