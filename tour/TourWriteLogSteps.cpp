// SPDX-License-Identifier: MIT
#include "tour/TourWriteLogSteps.h"

#include <QAction>
#include <QLineEdit>
#include <QTableView>

#include "Host/HostContext.h"
#include "Viewer/LogView.h"
#include "Viewer/ViewerWindow.h"
#include "Viewer/WriteLogDock.h"
#include "tour/TourHand.h"
#include "tour/TourStage.h"

namespace {

WriteLogDock &dock(TourStage &stage)
{
    return *stage.window().findChild<WriteLogDock *>();
}

int shownWrites(TourStage &stage)
{
    return dock(stage).findChild<QTableView *>()->model()->rowCount();
}

/// The refused write of the step before is the last one.
bool showWrites(TourStage &stage)
{
    dock(stage).toggleViewAction()->trigger();
    TourHand::pause(200);
    const WriteLog &log = stage.host().writeLog();
    return stage.expect(!dock(stage).visibleRegion().isEmpty(), say("the write log is not in front"))
        && stage.expect(shownWrites(stage) > 0 && log.entries().back().isRefused(),
                        say("the refused write is not in the write log"))
        && stage.expect(log.script().contains("Width=640") && log.script().contains("#   paramter set SIM-AREA-01 "),
                        say("the script does not do the writes again"));
}

bool searchWrites(TourStage &stage)
{
    const int all = shownWrites(stage);
    auto *search = dock(stage).findChild<QLineEdit *>();
    TourHand::click(search);
    TourHand::type(search, say("trigger"));
    return stage.expect(shownWrites(stage) > 0 && shownWrites(stage) < all, say("the write log is not searched"));
}

bool hideWrites(TourStage &stage)
{
    TourHand::retype(dock(stage).findChild<QLineEdit *>(), QString());
    dock(stage).toggleViewAction()->trigger();
    TourHand::pause(200);
    return stage.expect(!stage.window().log().visibleRegion().isEmpty(), say("the log is not in front again"));
}

} // namespace

const std::vector<TourStep> &tourWriteLogSteps()
{
    static const std::vector<TourStep> Steps = {
        {"write-log", showWrites},
        {"write-log-searched", searchWrites},
        {"write-log-closed", hideWrites},
    };
    return Steps;
}
