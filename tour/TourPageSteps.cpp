// SPDX-License-Identifier: MIT
#include "tour/TourPageSteps.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTextBrowser>

#include "Host/HostContext.h"
#include "Viewer/ImageView.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/ViewerWindow.h"
#include "tour/TourHand.h"
#include "tour/TourStage.h"

namespace {

constexpr int CommonPage = 0;
constexpr int TriggerPage = 1;
constexpr int AdvancedPage = 2;

const QString ExposureTime = QStringLiteral("Exposure Time(us)");
const QString ExposureAuto = QStringLiteral("Exposure Auto");
const QString DrawRegion = QStringLiteral("DrawRoi");
const QString TriggerSwitch = QStringLiteral("Software Trigger Auto Enable");

bool opens(TourStage &stage, int page)
{
    return stage.expect(stage.page().open(page), say("the page does not open"));
}

bool describeRow(TourStage &stage)
{
    if (!opens(stage, CommonPage))
        return false;
    QWidget *row = stage.page().row(ExposureTime);
    if (!stage.expect(row, say("there is no row for the exposure time")))
        return false;
    TourHand::click(row, QPoint(40, row->height() / 2));
    return stage.expect(!stage.panel().description()->toPlainText().isEmpty(), say("the row is not described"));
}

bool setExposure(TourStage &stage)
{
    return stage.page().enter(ExposureTime, say("2500")) && stage.becomes("ExposureTime", "2500");
}

/// The darkness that the short exposure left is what the camera corrects.
bool exposeAutomatically(TourStage &stage)
{
    if (!stage.acquires() || !stage.page().choose(ExposureAuto, say("Continuous")))
        return false;
    const auto *field = stage.page().control<QDoubleSpinBox>(ExposureTime);
    const bool follows = TourHand::waitUntil([&] { return field->value() > 3000; }, 8000);
    return stage.expect(!field->isEnabled(), say("the exposure time can be edited"))
        && stage.expect(follows, say("the exposure time does not follow the camera"));
}

bool setExposureBack(TourStage &stage)
{
    const bool back = stage.page().choose(ExposureAuto, say("Off")) && stage.page().enter(ExposureTime, say("10000"));
    stage.order(Command::StopAcquisition);
    return back && stage.becomes("ExposureTime", "10000");
}

bool refuseFrameRate(TourStage &stage)
{
    const QString row = say("Acquisition Frame Rate");
    const double before = stage.page().control<QDoubleSpinBox>(row)->value();
    return stage.page().enter(row, say("400"))
        && stage.expect(stage.page().control<QDoubleSpinBox>(row)->value() == before, say("the refused value stays"))
        && stage.expect(stage.isLogged(say("Set AcquisitionFrameRate value failed")), say("the refusal is not logged"));
}

bool walkByKeyboard(TourStage &stage)
{
    auto *field = stage.page().control<QDoubleSpinBox>(ExposureTime);
    TourHand::click(field, QPoint(field->width() / 3, field->height() / 2));
    TourHand::key(field, Qt::Key_Tab);
    return stage.expect(stage.page().control<QComboBox>(say("Gain Auto"))->hasFocus(),
                        say("Tab does not lead to the next row"));
}

bool triggerOnce(TourStage &stage)
{
    if (!opens(stage, TriggerPage) || !stage.page().choose(say("TriggerMode"), say("On"))
        || !stage.page().choose(say("TriggerSource"), say("Software")))
        return false;
    stage.order(Command::StartAcquisition);
    TourHand::pause(500);
    const bool waits = stage.window().image().framesPerSecond() == 0;
    return stage.expect(waits, say("the camera does not wait for the trigger"))
        && stage.page().press(say("TriggerSoftware"))
        && stage.expect(TourHand::waitUntil([&] { return !stage.window().image().frame().isNull(); }),
                        say("the trigger gives no image"));
}

bool triggerAutomatically(TourStage &stage)
{
    if (!stage.page().enter(say("Software Trigger Auto Time(ms)"), say("100")) || !stage.page().press(TriggerSwitch))
        return false;
    TourHand::pause(1500);
    const double rate = stage.window().image().framesPerSecond();
    return stage.expect(rate > 8 && rate < 12, QStringLiteral("%1 images a second").arg(rate));
}

bool endTriggering(TourStage &stage)
{
    const bool ended = stage.page().press(TriggerSwitch) && stage.page().choose(say("TriggerMode"), say("Off"));
    stage.order(Command::StopAcquisition);
    return ended;
}

bool openAdvanced(TourStage &stage)
{
    return endTriggering(stage) && opens(stage, AdvancedPage) && stage.page().row(say("PixelFormat"));
}

/// Drags the lower right corner to the middle of the image.
bool drawOnImage(TourStage &stage)
{
    if (!stage.page().press(DrawRegion))
        return false;
    ImageView &image = stage.window().image();
    TourHand::pause(300);
    const QRectF area = image.imageRect();
    TourHand::drag(&image, area.bottomRight().toPoint() - QPoint(1, 1), area.center().toPoint());
    const auto *width = stage.page().control<QSpinBox>(say("Draw-Width"));
    return stage.expect(width && width->value() < width->maximum(), say("the region is not drawn"));
}

bool moveRegion(TourStage &stage)
{
    ImageView &image = stage.window().image();
    image.setFocus();
    TourHand::key(&image, Qt::Key_Right, Qt::ShiftModifier);
    TourHand::key(&image, Qt::Key_Down, Qt::ShiftModifier);
    const bool moved = stage.page().control<QSpinBox>(say("Draw-OffsetX"))->value() > 0;
    return stage.expect(moved, say("the arrow keys do not move the region"))
        && stage.page().enter(say("Draw-Width"), say("1024")) && stage.page().enter(say("Draw-Height"), say("768"))
        && stage.page().enter(say("Draw-OffsetX"), say("480")) && stage.page().enter(say("Draw-OffsetY"), say("400"));
}

bool applyRegion(TourStage &stage)
{
    if (!stage.page().press(say("ROIEffective")))
        return false;
    return stage.becomes("Width", "1024") && stage.becomes("Height", "768") && stage.becomes("OffsetX", "480")
        && stage.becomes("OffsetY", "400") && stage.acquires()
        && stage.expect(stage.window().image().frame().size() == QSize(1024, 768), say("the image has another size"));
}

bool restoreSize(TourStage &stage)
{
    stage.order(Command::StopAcquisition);
    return stage.page().press(say("Restore Image Size")) && stage.becomes("OffsetX", "0")
        && stage.becomes("OffsetY", "0") && stage.becomes("Width", "2448") && stage.becomes("Height", "2048");
}

bool useUserSets(TourStage &stage)
{
    return stage.page().choose(say("UserSetSelector"), say("UserSet1")) && stage.page().press(say("UserSetSave"))
        && opens(stage, CommonPage) && stage.page().enter(ExposureTime, say("1234"))
        && stage.becomes("ExposureTime", "1234") && opens(stage, AdvancedPage) && stage.page().press(say("UserSetLoad"))
        && stage.becomes("ExposureTime", "10000") && opens(stage, CommonPage)
        && stage.expect(stage.page().control<QDoubleSpinBox>(ExposureTime)->value() == 10000,
                        say("the row does not show the loaded value"));
}

bool narrowPanel(TourStage &stage)
{
    return stage.resizePanel(320) && opens(stage, CommonPage);
}

bool narrowTriggerPage(TourStage &stage)
{
    return opens(stage, TriggerPage);
}

bool widePanel(TourStage &stage)
{
    return stage.resizePanel(600) && opens(stage, AdvancedPage);
}

bool usualPanel(TourStage &stage)
{
    return stage.resizePanel(500) && opens(stage, CommonPage);
}

} // namespace

const std::vector<TourStep> &tourPageSteps()
{
    static const std::vector<TourStep> Steps = {
        {"page-common", describeRow},
        {"page-exposure", setExposure},
        {"page-exposure-auto", exposeAutomatically},
        {"page-exposure-back", setExposureBack},
        {"page-refused", refuseFrameRate},
        {"page-keyboard", walkByKeyboard},
        {"page-trigger", triggerOnce},
        {"page-trigger-automatic", triggerAutomatically},
        {"page-advanced", openAdvanced},
        {"region-drawn", drawOnImage},
        {"region-typed", moveRegion},
        {"region-applied", applyRegion},
        {"region-restored", restoreSize},
        {"user-set", useUserSets},
        {"page-narrow", narrowPanel},
        {"page-narrow-trigger", narrowTriggerPage},
        {"page-wide", widePanel},
        {"page-usual", usualPanel},
    };
    return Steps;
}
