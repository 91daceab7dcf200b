// SPDX-License-Identifier: MIT
#include "Host/Viewer/TourStructuredLightSteps.h"

#include <QAbstractItemView>
#include <QComboBox>

#include "Host/HostContext.h"
#include "Host/Viewer/DeviceTree.h"
#include "Host/Viewer/ImageView.h"
#include "Host/Viewer/TourHand.h"
#include "Host/Viewer/TourStage.h"
#include "Host/Viewer/ViewerCommands.h"
#include "Host/Viewer/ViewerWindow.h"

namespace {

using State = DeviceTree::State;

enum Page { ShootPage, ImagePage, AdvancedPage };

const QString outputList = QStringLiteral("2D Acquisition Output");
const QString showList = QStringLiteral("2D Image Show");
const QString lowTruncation = QStringLiteral("LowTruncation");

struct Output
{
    const char *feature;
    const char *name; ///< in both lists
};
constexpr Output outputs[] = {
    {"Left2DImage", "2D Left"},           {"Right2DImage", "2D Right"},           {"Left2DSrcImage", "Left Streak"},
    {"Right2DSrcImage", "Right Streak"},  {"Left2.5DFront", "2.5D Left Shot"},    {"Right2.5DFront", "2.5D Right Shot"},
    {"Left2.5DBack", "2.5D Left Reflex"}, {"Right2.5DBack", "2.5D Right Reflex"},
};

Device &camera(TourStage &stage)
{
    return *stage.host().device(QStringLiteral("SIM-SL-01"));
}

QImage picture(TourStage &stage)
{
    return stage.window().image().frame();
}

bool isSent(TourStage &stage, const Output &output, bool sent)
{
    const QString feature = QLatin1String(output.feature);
    return stage.expect(stage.value(feature) == QLatin1String(sent ? "True" : "False"),
                        QStringLiteral("%1 is %2").arg(feature, stage.value(feature)));
}

bool showsDepthMap(TourStage &stage)
{
    return stage.expect(TourHand::waitUntil([&] { return !picture(stage).isNull() && !picture(stage).isGrayscale(); }),
                        QStringLiteral("the depth map is not shown"));
}

bool openCamera(TourStage &stage)
{
    const QWidget *before = stage.panel();
    const Device &device = camera(stage);
    stage.pointAt(device, true);
    const auto isReady = [&] {
        return stage.window().devices().state(device.id()) == State::Open && stage.panel() && stage.panel() != before;
    };
    if (!stage.expect(TourHand::waitUntil(isReady), QStringLiteral("the camera does not open")))
        return false;
    stage.order(Command::StartAcquisition);
    return stage.openPage(ShootPage) && showsDepthMap(stage);
}

/// The list of outputs, open.
QAbstractItemView *openOutputs(TourStage &stage)
{
    auto *box = stage.control<QComboBox>(outputList);
    if (!stage.expect(box, QStringLiteral("there is no list of outputs")))
        return nullptr;
    if (!box->view()->isVisible())
        TourHand::click(box);
    return stage.expect(box->view()->isVisible(), QStringLiteral("the outputs are not listed")) ? box->view() : nullptr;
}

/// Clicks the entry, which leaves the list open.
bool toggle(TourStage &stage, const Output &output, bool sent)
{
    QAbstractItemView *const list = openOutputs(stage);
    if (!list)
        return false;
    const QModelIndexList entry =
        list->model()->match(list->model()->index(0, 0), Qt::DisplayRole, QLatin1String(output.name));
    TourHand::clickCell(list, entry.value(0));
    return stage.expect(list->isVisible(), QStringLiteral("the list closes")) && isSent(stage, output, sent);
}

bool tickByMouse(TourStage &stage)
{
    return toggle(stage, outputs[1], true) && toggle(stage, outputs[4], true) && toggle(stage, outputs[0], false);
}

/// Walks down the list and toggles the entries that are not ticked.
bool tickByKeyboard(TourStage &stage)
{
    auto *const box = stage.control<QComboBox>(outputList);
    box->setFocus(Qt::TabFocusReason);
    TourHand::key(box, Qt::Key_Space);
    TourHand::key(box->view(), Qt::Key_Home);
    for (const Output &output : outputs) {
        if (stage.value(QLatin1String(output.feature)) == QLatin1String("False"))
            TourHand::key(box->view(), Qt::Key_Space);
        if (!isSent(stage, output, true))
            return false;
        TourHand::key(box->view(), Qt::Key_Down);
    }
    TourHand::key(box->view(), Qt::Key_Escape);
    return stage.expect(!box->view()->isVisible() && box->hasFocus(), QStringLiteral("Escape does not close the list"));
}

/// What two sensors see of the same.
template <int first>
bool showBoth(TourStage &stage)
{
    QImage before = picture(stage);
    for (int number : {first + 1, first}) {
        if (!stage.choose(showList, QLatin1String(outputs[number].name)))
            return false;
        const auto shows = [&] { return picture(stage).isGrayscale() && picture(stage) != before; };
        if (!stage.expect(TourHand::waitUntil(shows), QStringLiteral("the picture does not change")))
            return false;
        before = picture(stage);
    }
    return true;
}

bool dropShownOutput(TourStage &stage)
{
    return toggle(stage, outputs[6], false)
        && stage.expect(stage.control<QComboBox>(showList)->currentText() == QLatin1String("-"),
                        QStringLiteral("the output that is not sent is still chosen"))
        && showsDepthMap(stage);
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
    return stage.openPage(ImagePage) && stage.enter(lowTruncation, QStringLiteral("5"))
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
    if (!stage.enter(lowTruncation, QStringLiteral("-20")) || !becomesMissing(stage, 0.0, 0.3)
        || !stage.openPage(ShootPage) || !stage.choose(showList, QLatin1String(outputs[0].name)))
        return false;
    const double before = meanGray(picture(stage));
    const auto isDark = [&] { return meanGray(picture(stage)) < before / 2; };
    return stage.openPage(ImagePage) && stage.enter(QStringLiteral("Light1Value"), QStringLiteral("15"))
        && stage.expect(TourHand::waitUntil(isDark), QStringLiteral("the image does not get darker"));
}

/// The outputs are part of the set.
bool useUserSets(TourStage &stage)
{
    if (!stage.enter(QStringLiteral("Light1Value"), QStringLiteral("60")))
        return false;
    stage.order(Command::StopAcquisition);
    const QString selector = QStringLiteral("UserSetSelector");
    return stage.openPage(AdvancedPage) && stage.choose(selector, QStringLiteral("UserSet1"))
        && stage.press(QStringLiteral("UserSetSave")) && stage.openPage(ShootPage) && toggle(stage, outputs[0], false)
        && toggle(stage, outputs[6], true) && stage.openPage(AdvancedPage) && stage.press(QStringLiteral("UserSetLoad"))
        && isSent(stage, outputs[0], true) && isSent(stage, outputs[6], false) && stage.openPage(ShootPage)
        && stage.expect(stage.control<QComboBox>(showList)->findText(QLatin1String(outputs[0].name)) > 0,
                        QStringLiteral("the loaded output is not offered"));
}

bool leaveCamera(TourStage &stage)
{
    const QWidget *before = stage.panel();
    const Device &device = camera(stage);
    stage.order(Command::CloseDevice);
    const auto isClosed = [&] { return stage.window().devices().state(device.id()) == State::Closed; };
    const bool closed = stage.expect(TourHand::waitUntil(isClosed), QStringLiteral("the camera does not close"));
    stage.pointAt(*stage.simulated(false), false);
    const auto hasFollowed = [&] { return stage.shownRows() > 0 && stage.panel() != before; };
    return closed && stage.expect(TourHand::waitUntil(hasFollowed), QStringLiteral("the other panel is not shown"));
}

} // namespace

const std::vector<TourStep> &tourStructuredLightSteps()
{
    static const std::vector<TourStep> steps = {
        {"depth-camera-open", openCamera},
        {"depth-outputs-by-mouse", tickByMouse},
        {"depth-outputs-by-keyboard", tickByKeyboard},
        {"depth-2d", showBoth<0>},
        {"depth-streaks", showBoth<2>},
        {"depth-2.5d-shot", showBoth<4>},
        {"depth-2.5d-reflex", showBoth<6>},
        {"depth-shown-output-dropped", dropShownOutput},
        {"depth-heights-cut", cutHeights},
        {"depth-light", dimLight},
        {"depth-user-set", useUserSets},
        {"depth-camera-left", leaveCamera},
    };
    return steps;
}
