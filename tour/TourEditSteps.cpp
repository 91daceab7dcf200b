// SPDX-License-Identifier: MIT
#include "tour/TourEditSteps.h"

#include <QDoubleSpinBox>
#include <QPushButton>

#include "Host/HostContext.h"
#include "Viewer/ViewerCommands.h"
#include "tour/TourHand.h"
#include "tour/TourStage.h"

namespace {

constexpr int CommonPage = 0;
constexpr int AdvancedPage = 2;

const QString ExposureTime = QStringLiteral("Exposure Time(us)");
const QString ExposureAuto = QStringLiteral("Exposure Auto");
const QString DrawRegion = QStringLiteral("DrawRoi");

QDoubleSpinBox *exposureField(TourStage &stage)
{
    return stage.page().control<QDoubleSpinBox>(ExposureTime);
}

/// The camera starts and stops, and a card is opened, shown and closed while half a number stands in the field.
bool leaveNumberUnfinished(TourStage &stage)
{
    if (!stage.page().enter(ExposureTime, say("10000")) || !stage.becomes("ExposureTime", "10000"))
        return false;
    TourHand::click(exposureField(stage));
    TourHand::retype(exposureField(stage), say("123"));
    stage.order(Command::StartAcquisition);
    stage.order(Command::StopAcquisition);
    const Device &card = *stage.simulated(true);
    if (!stage.open(card) || !stage.leave(card))
        return false;
    return stage.becomes("ExposureTime", "10000")
        && stage.expect(exposureField(stage)->text() == say("123"), say("what was typed is gone"));
}

bool finishNumber(TourStage &stage)
{
    QDoubleSpinBox *field = exposureField(stage);
    TourHand::click(field);
    TourHand::key(field, Qt::Key_End);
    TourHand::type(field, say("45,5"));
    TourHand::click(stage.page().row(say("Gain Auto")), QPoint(40, 20));
    return stage.becomes("ExposureTime", "12345.5");
}

bool refuseNumbers(TourStage &stage)
{
    for (const char *typed : {"70000000", "1,234.5"}) {
        if (!stage.page().enter(ExposureTime, say(typed)) || !stage.becomes("ExposureTime", "12345.5")
            || !stage.expect(exposureField(stage)->value() == 12345.5, say("the refused number stays"))
            || !stage.expect(stage.isLogged(QStringLiteral("\"%1\" is no number from 20 to 1000000").arg(say(typed))),
                             say("the refusal does not tell the limits")))
            return false;
    }
    return true;
}

bool exposeOnce(TourStage &stage)
{
    if (!stage.acquires() || !stage.page().choose(ExposureAuto, say("Once")))
        return false;
    const bool isFree = TourHand::waitUntil([&] { return exposureField(stage)->isEnabled(); }, 15'000);
    stage.order(Command::StopAcquisition);
    return stage.expect(isFree, say("the exposure time stays locked")) && stage.becomes("ExposureAuto", "Off")
        && stage.page().enter(ExposureTime, say("10000")) && stage.becomes("ExposureTime", "10000");
}

/// The camera gets another size while a region of the old one is drawn.
bool loadSetWhileDrawing(TourStage &stage)
{
    if (!stage.page().open(AdvancedPage) || !stage.page().enter(say("Height"), say("1024"))
        || !stage.becomes("Height", "1024") || !stage.page().press(DrawRegion))
        return false;
    const auto regions = [&] { return stage.host().regions().of(stage.simulated(false)->id()); };
    return stage.expect(!regions().isEmpty(), say("no region is drawn"))
        && stage.page().choose(say("UserSetSelector"), say("UserSet1")) && stage.page().press(say("UserSetLoad"))
        && stage.becomes("Height", "2048") && stage.expect(regions().isEmpty(), say("the old region stays"))
        && stage.expect(stage.page().row(say("Height")), say("the rows of the drawn region stay"))
        && stage.page().open(CommonPage);
}

} // namespace

const std::vector<TourStep> &tourEditSteps()
{
    static const std::vector<TourStep> Steps = {
        {"number-unfinished", leaveNumberUnfinished},
        {"number-finished", finishNumber},
        {"numbers-refused", refuseNumbers},
        {"exposure-once", exposeOnce},
        {"user-set-while-drawing", loadSetWhileDrawing},
    };
    return Steps;
}
