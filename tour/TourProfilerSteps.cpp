// SPDX-License-Identifier: MIT
#include "tour/TourProfilerSteps.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QtMath>

#include <cmath>

#include "Host/HostContext.h"
#include "Viewer/ImageView.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/ViewerWindow.h"
#include "tour/TourDeeds.h"
#include "tour/TourHand.h"
#include "tour/TourHeights.h"
#include "tour/TourStage.h"

namespace {

using State = DeviceTree::State;

constexpr int AttributeTab = 1;
enum Page { TriggerPage, ImagePage, ContourPage, OthersPage };
constexpr int PageCount = 4;
enum Level { Beginner, Expert, Guru };

/// Above everything but the stray light, whose place on the sensor means heights above 7 mm. The parts end at 5 mm.
constexpr double AboveParts = 6.0; // mm
const QRect StrayLight(1380, 60, 240, 50); // sensor pixels

double setting(TourStage &stage, HostCore::CAM_INFO item)
{
    return stage.host().infoItems().camera(stage.profiler()->id(), item).toDouble();
}

bool chooseLevel(TourStage &stage, Level level)
{
    return stage.expect(TourHand::choose(stage.tree().levelBox(), stage.tree().levelBox()->itemText(level)),
                        say("the level cannot be chosen"));
}

/// Edits a feature that has no row, in the tree of all features.
bool editInTree(TourStage &stage, const char *feature, const char *text)
{
    return stage.expect(stage.panel().openTab(AttributeTab), say("the attribute tab does not open"))
        && chooseLevel(stage, Guru) && stage.tree().edit(say(feature), say(text)) && stage.becomes(feature, text);
}

constexpr Deed asPoweredUp[] = {
    openPage(TriggerPage),
    {Deed::Hidden, "TriggerSource"},
    {Deed::Hidden, "TriggerSoftware"},
    {Deed::Hidden, "EncoderDivider"},
    {Deed::Shown, "AcquisitionLineRate"},
};

bool openProfiler(TourStage &stage)
{
    return stage.open(*stage.profiler()) && perform<asPoweredUp>(stage) && stage.acquires()
        && stage.expect(!stage.window().image().frame().isGrayscale(), say("the heights have no colours"));
}

constexpr Deed waitForSoftware[] = {
    {Deed::Choose, "FrameTriggerMode", "ExternalTrigger"},
    {Deed::Shown, "TriggerSource"},
    {Deed::Choose, "TriggerSource", "Line2"},
};
constexpr Deed triggerOnce[] = {
    {Deed::Press, "TriggerSoftware"},
    {Deed::Becomes, "AcquiredFrameCount", "1"},
    {Deed::Becomes, "TriggerSelector", "LineStart"},
};

bool triggerFrame(TourStage &stage)
{
    if (!perform<waitForSoftware>(stage))
        return false;
    const auto *button = stage.page().control<QPushButton>(say("TriggerSoftware"));
    const bool unable = stage.expect(button && !button->isEnabled(), say("a frame of Line2 can be triggered"));
    if (!unable || !stage.page().choose(say("TriggerSource"), say("Software")))
        return false;
    stage.order(Command::StopAcquisition);
    stage.order(Command::StartAcquisition);
    const HeightFrame early = TourHeights::next(
        stage, [](const HeightFrame &) { return true; }, 500); // five batches
    return stage.expect(early.width == 0, say("the profiler does not wait for the trigger"))
        && perform<triggerOnce>(stage);
}

/// The belt makes 4000 pulses a second.
constexpr Deed scanByEncoder[] = {
    {Deed::Choose, "FrameTriggerMode", "ContinuousTrigger"},
    {Deed::Hidden, "TriggerSource"},
    {Deed::Choose, "TriggerMode", "Encoder"},
    {Deed::Hidden, "AcquisitionLineRate"},
    {Deed::Becomes, "TriggerMode", "On"},
    {Deed::Becomes, "AcquisitionLineRateEnable", "Off"},
    {Deed::Enter, "EncoderDivider", "5"},
    {Deed::Becomes, "ResultingLineRate", "800"},
};

constexpr Deed scanByTime[] = {
    {Deed::Choose, "TriggerMode", "Continuous"}, {Deed::Hidden, "EncoderMode"},
    {Deed::Becomes, "TriggerMode", "Off"},       {Deed::Enter, "AcquisitionLineRate", "900"},
    {Deed::Becomes, "ResultingLineRate", "900"},
};

bool scanLines(TourStage &stage)
{
    if (!perform<scanByTime>(stage))
        return false;
    constexpr struct
    {
        const char *entry;
        int lines;
    } Modes[] = {{"Fast", 400}, {"Full", 800}, {"Normal", 100}};
    for (const auto &mode : Modes) {
        if (!stage.page().choose(say("BatchTransmitMode"), say(mode.entry)))
            return false;
        const HeightFrame part =
            TourHeights::next(stage, [&](const HeightFrame &frame) { return frame.lines == mode.lines; });
        if (!stage.expect(part.width > 0 && stage.value(say("BatchNumber")).toInt() == mode.lines,
                          QStringLiteral("no batch has %1 lines").arg(mode.lines)))
            return false;
    }
    return true;
}

constexpr Deed chooseIntensity[] = {
    {Deed::Choose, "AcqDataSource", "3D + 2D"},
    {Deed::Becomes, "DepthDataType", "Uint32_t"},
    openPage(ImagePage),
    {Deed::Press, "IntensityEnable"},
};

bool showIntensity(TourStage &stage)
{
    stage.order(Command::StopAcquisition);
    const ImageView &image = stage.window().image();
    return perform<chooseIntensity>(stage) && stage.acquires()
        && stage.expect(TourHand::waitUntil([&] { return image.frame().isGrayscale(); }),
                        say("the gray image is not shown"));
}

constexpr Deed coarsen[] = {
    openPage(ImagePage),
    {Deed::Press, "IntensityEnable"},
    {Deed::Enter, "ContourSpacer", "0.04"},
    {Deed::Choose, "Sampling Rate", "4"},
};

/// Rows are 0.04 mm apart and columns 0.02 mm; a fourth of 2048 x 1000 points is left.
bool showCoarser(TourStage &stage)
{
    const ImageView &image = stage.window().image();
    return perform<coarsen>(stage)
        && stage.expect(TourHand::waitUntil([&] { return image.frame().size() == QSize(512, 500); }),
                        say("the picture has another size"))
        && stage.expect(!image.frame().isGrayscale(), say("the gray image is still shown"));
}

constexpr Deed typeRange[] = {
    {Deed::Enter, "ZUpSizeInfo", "5"},
    {Deed::Enter, "ZDownSizeInfo", "-6"},
    {Deed::Enter, "ZUpSizeInfo", "-7"}, // refused
};

bool typeHeights(TourStage &stage)
{
    stage.order(Command::StopAcquisition);
    if (!stage.page().choose(say("Sampling Rate"), say("1")))
        return false;
    const QImage before = stage.window().image().frame();
    return perform<typeRange>(stage)
        && stage.expect(stage.page().control<QDoubleSpinBox>(say("ZUpSizeInfo"))->value() == 5.0,
                        say("an inverted range stays in the field"))
        && stage.expect(setting(stage, HostCore::CAM_INFO_Z_MAXIMUM) == 5.0, say("the range is inverted"))
        && stage.expect(setting(stage, HostCore::CAM_INFO_Z_MINIMUM) == -6.0, say("the minimum is not taken"))
        && stage.expect(stage.window().image().frame() != before, say("the colours stay"));
}

/// The stray light counts as a height.
bool findHeights(TourStage &stage)
{
    const auto isFound = [&] { return setting(stage, HostCore::CAM_INFO_Z_MAXIMUM) > AboveParts; };
    const auto isShown = [&] { return stage.page().control<QDoubleSpinBox>(say("ZUpSizeInfo"))->value() > AboveParts; };
    return stage.page().press(say("Z Range"))
        && stage.expect(stage.reaches(*stage.profiler(), State::Acquiring), say("no acquisition starts"))
        && stage.expect(TourHand::waitUntil(isFound), say("the range does not follow the heights"))
        && stage.expect(TourHand::waitUntil(isShown, 1000), say("the fields do not show the range"));
}

QRect areaOf(TourStage &stage, int number)
{
    const auto handle = stage.host().regions().handleOf(stage.profiler()->id(), number);
    return handle ? stage.host().regions().region(*handle).area : QRect();
}

/// Where a pixel of the sensor's image is seen.
QPoint seenAt(TourStage &stage, const QPoint &pixel)
{
    const ImageView &image = stage.window().regionView();
    const QRectF shown = image.imageRect();
    return (shown.topLeft() + QPointF(pixel) * (shown.width() / image.imageSize().width())).toPoint();
}

/// Drags a corner or the middle of something on the image, from one pixel of the image to another.
void dragOnImage(TourStage &stage, const QPoint &from, const QPoint &to)
{
    TourHand::drag(&stage.window().regionView(), seenAt(stage, from), seenAt(stage, to));
}

/// The range reaches from the upper end of the sensor to its middle, which is the height 0.
bool drawRange(TourStage &stage)
{
    stage.order(Command::StopAcquisition);
    if (!stage.page().press(say("GrabRangeCompression")))
        return false;
    TourHand::pause(200);
    if (!stage.expect(stage.window().regionView().isCanvas() && areaOf(stage, 0).height() == 1024,
                      say("no region of the sensor's size is shown")))
        return false;
    dragOnImage(stage, {1024, 1023}, {1024, 512});
    const auto height = [&] { return stage.value(say("Height")).toInt(); };
    return stage.expect(TourHand::waitUntil([&] { return std::abs(height() - 512) < 16; }),
                        QStringLiteral("the range has %1 rows").arg(height()))
        && stage.expect(areaOf(stage, 0).height() == height(), say("the region is not what the device made of it"));
}

bool captureInRange(TourStage &stage)
{
    return stage.expect(TourHeights::firstRange(stage).lowest > -0.5, say("heights beyond the range are captured"));
}

bool lockRange(TourStage &stage)
{
    const auto *button = stage.page().control<QPushButton>(say("GrabRangeCompression"));
    const bool before = button->isChecked();
    return stage.page().press(say("GrabRangeCompression"))
        && stage.expect(button->isChecked() == before, say("the switch says what the device did not do"))
        && stage.expect(stage.isLogged(say("The measure range cannot be switched")), say("nobody tells why"));
}

constexpr Deed endRange[] = {
    {Deed::Press, "GrabRangeCompression"},
    {Deed::Becomes, "Height", "1024"},
    {Deed::Becomes, "OffsetY", "0"},
};

/// Drags the new region's middle and then its lower right corner.
bool drawMask(TourStage &stage, int number, const QRect &target)
{
    if (!stage.page().press(QStringLiteral("  Mask%1").arg(number)))
        return false;
    const QRect fresh = areaOf(stage, number);
    if (!stage.expect(!fresh.isEmpty(), QStringLiteral("mask %1 is not shown").arg(number)))
        return false;
    dragOnImage(stage, fresh.center(), target.topLeft() + fresh.center() - fresh.topLeft());
    dragOnImage(stage, areaOf(stage, number).bottomRight(), target.bottomRight());
    const QRect drawn = areaOf(stage, number);
    const auto follows = [&] {
        return stage.value(say("ImageMaskOffsetX")).toInt() == drawn.x()
            && stage.value(say("ImageMaskHeight")).toInt() == drawn.height();
    };
    return stage.becomes("ImageMask", "True")
        && stage.expect(TourHand::waitUntil(follows, 1000), QStringLiteral("mask %1 lies elsewhere").arg(number))
        && stage.expect((drawn & target).width() > target.width() * 9 / 10,
                        QStringLiteral("mask %1 is not drawn").arg(number));
}

bool drawMasks(TourStage &stage)
{
    stage.order(Command::StopAcquisition);
    if (!perform<endRange>(stage) || !editInTree(stage, "ImageOutputMode", "SensorImage")
        || !stage.page().open(ImagePage) || !stage.acquires())
        return false;
    return stage.expect(stage.window().image().frame().size() == QSize(2048, 1024), say("no sensor image is shown"))
        && drawMask(stage, 1, StrayLight.adjusted(-40, -30, 40, 30)) && drawMask(stage, 2, {1700, 820, 260, 120})
        && drawMask(stage, 3, {80, 820, 260, 120})
        && stage.expect(areaOf(stage, 1).contains(StrayLight), say("the stray light is not covered"));
}

bool captureBesideMasks(TourStage &stage)
{
    stage.order(Command::StopAcquisition);
    return editInTree(stage, "ImageOutputMode", "HeightMap") && stage.page().open(ImagePage)
        && stage.expect(TourHeights::firstRange(stage).highest < AboveParts, say("the stray light is captured"));
}

/// On the view of the sensor below the map.
bool moveMaskBelowMap(TourStage &stage)
{
    const QRect before = areaOf(stage, 2);
    if (!stage.expect(&stage.window().regionView() != &stage.window().image()
                          && stage.window().regionView().isVisible(),
                      say("the regions are not shown")))
        return false;
    dragOnImage(stage, before.center(), before.center() - QPoint(200, 0));
    return stage.expect(TourHand::waitUntil([&] { return areaOf(stage, 2).x() < before.x() - 100; }),
                        say("the mask does not move"));
}

bool endMasks(TourStage &stage)
{
    stage.order(Command::StopAcquisition);
    for (const char *mask : {"  Mask1", "  Mask2", "  Mask3"}) {
        if (!stage.page().press(say(mask)) || !stage.becomes("ImageMask", "False"))
            return false;
    }
    return stage.expect(stage.host().regions().of(stage.profiler()->id()).isEmpty(), say("a region stays"))
        && stage.expect(TourHeights::firstRange(stage).highest > AboveParts, say("the stray light stays away"));
}

constexpr Deed adjustLaser[] = {
    openPage(ContourPage),
    {Deed::Choose, "LaserAdjustMode", "Auto"},
    {Deed::Hidden, "Lasersetting"},
    {Deed::Becomes, "LaserAdjustMode", "Auto"},
    {Deed::Enter, "UpperBound", "240"},
    {Deed::Enter, "LowerBound", "220"},
};
constexpr Deed setLaser[] = {
    {Deed::Choose, "LaserAdjustMode", "Manual"},
    {Deed::Becomes, "LaserAdjustMode", "Manual"},
    {Deed::Hidden, "LowerBound"},
    {Deed::Shown, "Lasersetting"},
};

/// 220 of 255 is brighter than the laser makes it at first.
bool adjustBrightness(TourStage &stage)
{
    const auto power = [&] { return stage.value(say("Lasersetting")).toInt(); };
    const int before = power();
    if (!perform<adjustLaser>(stage)
        || !stage.expect(TourHand::waitUntil([&] { return power() > before + 5; }), say("the laser stays dark"))
        || !perform<setLaser>(stage))
        return false;
    const auto *field = stage.page().control<QSpinBox>(say("Lasersetting"));
    return stage.expect(field && field->value() == power(), say("the row does not show the laser's power"))
        && stage.page().enter(say("Lasersetting"), say("60")) && stage.becomes("Lasersetting", "60");
}

constexpr double Tilt = 3.0; // degrees
/// The light barrier of Line2 sees the middle of a part: 20 mm further, a map ends on the empty belt.
constexpr Deed endOnBelt[] = {
    openPage(TriggerPage),
    {Deed::Choose, "FrameTriggerMode", "ExternalTrigger"},
    {Deed::Choose, "TriggerSource", "Line2"},
    {Deed::Enter, "AcquisitionLineCount", "450"},
    {Deed::Becomes, "ResultingLineRate", "900"},
    openPage(ImagePage),
    {Deed::Enter, "ZDownSizeInfo", "-7"},
    {Deed::Enter, "ZUpSizeInfo", "-3"},
    openPage(OthersPage),
};

/// What most of the last profile of a new map lies on.
HeightAnalysis::Line newLine(TourStage &stage)
{
    const HeightFrame map = TourHeights::first(stage);
    stage.order(Command::StopAcquisition);
    return HeightAnalysis::mainLine(map.lastProfile(), map.firstX, map.pitchX)
        .value_or(HeightAnalysis::Line{qQNaN(), qQNaN()});
}

bool tiltProfiler(TourStage &stage)
{
    stage.order(Command::StopAcquisition);
    return editInTree(stage, "TestMountingTilt", "3") && perform<endOnBelt>(stage)
        && stage.expect(newLine(stage).slope > 0.04, say("the profiles are not tilted"));
}

bool correctMounting(TourStage &stage)
{
    if (!stage.page().press(say("TiltCorrection")))
        return false;
    const auto *angle = stage.page().control<QDoubleSpinBox>(say("TiltCorrection"));
    const double sine = stage.value(say("SinData")).toDouble();
    if (!stage.expect(std::abs(angle->value() - Tilt) < 0.05, QStringLiteral("the tilt is %1").arg(angle->value()))
        || !stage.expect(std::abs(sine - std::sin(qDegreesToRadians(Tilt))) < 0.001, say("the device is not told"))
        || !stage.expect(std::abs(newLine(stage).slope) < 0.001, say("the profiles are still tilted"))
        || !stage.page().press(say("HighCorrection")))
        return false;
    const double reference = stage.value(say("ZReferenceHeight")).toDouble();
    return stage.expect(std::abs(newLine(stage).meanHeight - reference) < 0.02, say("the belt has another height"));
}

constexpr Deed useSet[] = {
    {Deed::Choose, "UserSetSelector", "UserSet1"},
    {Deed::Press, "UserSetSave"},
    openPage(ImagePage),
    {Deed::Press, "  Mask1"},
    {Deed::Becomes, "ImageMask", "True"},
    openPage(ContourPage),
    {Deed::Enter, "Threshold", "77"},
    {Deed::Becomes, "Threshold", "77"},
    openPage(OthersPage),
    {Deed::Press, "UserSetLoad"},
    {Deed::Becomes, "Threshold", "40"},
    openPage(ImagePage),
};

constexpr Deed endOfOthers[] = {
    openPage(OthersPage),
    {Deed::Shown, "LaserControlMode"},
};

bool useUserSet(TourStage &stage)
{
    return perform<useSet>(stage)
        && stage.expect(!stage.page().control<QPushButton>(say("  Mask1"))->isChecked(),
                        say("the mask's switch stays on"))
        && stage.expect(stage.host().regions().of(stage.profiler()->id()).isEmpty(), say("the mask's region stays"))
        && stage.page().open(ContourPage)
        && stage.expect(stage.page().control<QSpinBox>(say("Threshold"))->value() == 40,
                        say("the row does not show the loaded value"))
        && perform<endOfOthers>(stage);
}

/// The texts that a language changes: the titles of the pages, and a label and a button of the fourth one.
QStringList pageTexts(TourStage &stage)
{
    QStringList texts;
    const auto *pages = stage.panel().widget()->findChild<QTabWidget *>(say("tabWidget"));
    const QWidget *row = stage.page().open(OthersPage) ? stage.page().row(say("TiltCorrection")) : nullptr;
    if (!row)
        return texts;
    for (int page = 0; page < pages->count(); ++page)
        texts << pages->tabText(page);
    return texts << row->findChild<QLabel *>()->text() << row->findChild<QPushButton *>()->text();
}

bool changePageLanguage(TourStage &stage)
{
    if (!stage.resizePanel(320))
        return false;
    const QStringList before = pageTexts(stage);
    stage.changeLanguage();
    const QStringList after = pageTexts(stage);
    bool changed = before.size() == PageCount + 2 && after.size() == before.size();
    for (int i = 0; changed && i < before.size(); ++i)
        changed = before.at(i) != after.at(i);
    return stage.expect(changed, QStringLiteral("some texts stay: %1").arg(after.join(QLatin1Char(' '))));
}

bool leaveProfiler(TourStage &stage)
{
    stage.changeLanguage();
    return stage.resizePanel(500) && stage.panel().openTab(AttributeTab) && chooseLevel(stage, Beginner)
        && stage.page().open(TriggerPage) && stage.leave(*stage.profiler());
}

} // namespace

const std::vector<TourStep> &tourProfilerSteps()
{
    static const std::vector<TourStep> Steps = {
        {"profiler-open", openProfiler},
        {"profiler-triggered", triggerFrame},
        {"profiler-encoder", perform<scanByEncoder>},
        {"profiler-batches", scanLines},
        {"profiler-gray-image", showIntensity},
        {"profiler-coarser", showCoarser},
        {"profiler-heights-typed", typeHeights},
        {"profiler-heights-found", findHeights},
        {"profiler-range-drawn", drawRange},
        {"profiler-range", captureInRange},
        {"profiler-range-locked", lockRange},
        {"profiler-masks-drawn", drawMasks},
        {"profiler-masks", captureBesideMasks},
        {"profiler-mask-moved", moveMaskBelowMap},
        {"profiler-masks-ended", endMasks},
        {"profiler-laser", adjustBrightness},
        {"profiler-tilted", tiltProfiler},
        {"profiler-corrected", correctMounting},
        {"profiler-user-set", useUserSet},
        {"profiler-language", changePageLanguage},
        {"profiler-left", leaveProfiler},
    };
    return Steps;
}
