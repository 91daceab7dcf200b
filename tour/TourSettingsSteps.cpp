// SPDX-License-Identifier: MIT
#include "tour/TourSettingsSteps.h"

#include <algorithm>

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>

#include "Devices/Device.h"
#include "Host/HostContext.h"
#include "Tools/SettingsFile.h"
#include "Viewer/CompareDialog.h"
#include "Viewer/LoadDialog.h"
#include "Viewer/SettingsCommands.h"
#include "Viewer/SettingsTable.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/ViewerWindow.h"
#include "tour/TourHand.h"
#include "tour/TourStage.h"

namespace {

/// Where the tour's files are.
QString filePath(const char *name)
{
    static const QTemporaryDir Folder;
    return Folder.filePath(QLatin1String(name));
}

template <class Dialog>
Dialog *shown(const TourStage &stage)
{
    const QList<Dialog *> all = stage.window().template findChildren<Dialog *>();
    for (Dialog *dialog : all) {
        if (dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

bool closes(TourStage &stage, QDialog *dialog)
{
    TourHand::key(dialog, Qt::Key_Escape);
    return stage.expect(TourHand::waitUntil([&] { return !shown<QDialog>(stage); }), say("the dialog does not close"));
}

/// The row of a feature that is shown; -1 for none.
int shownRow(SettingsTable &table, const QString &feature)
{
    const QAbstractItemModel &model = *table.view().model();
    for (int row = 0; row < model.rowCount(); ++row) {
        if (model.index(row, SettingsModel::FeatureColumn).data() == feature)
            return row;
    }
    return -1;
}

bool saveSettings(TourStage &stage)
{
    stage.order(Command::StopAcquisition);
    stage.window().settingsCommands().save(stage.host().focus().id(), filePath("camera.txt"));
    return stage.expect(QFile::exists(filePath("camera.txt")), say("the settings are not saved"))
        && stage.expect(stage.isLogged(say("camera.txt")), say("the saving is not logged"));
}

/// After two changes by hand.
bool showPlan(TourStage &stage)
{
    const QString id = stage.host().focus().id();
    stage.host().values().write(id, say("ExposureTime"), say("7777"));
    stage.host().values().write(id, say("Gain"), say("3.5"));
    stage.window().settingsCommands().load(filePath("camera.txt"));
    LoadDialog *const dialog = shown<LoadDialog>(stage);
    return stage.expect(dialog, say("nobody is told what a load would change"))
        && stage.expect(shownRow(dialog->table(), say("ExposureTime")) >= 0
                            && shownRow(dialog->table(), say("Width")) < 0,
                        say("other rows are shown than those that differ"));
}

bool loadSettings(TourStage &stage)
{
    LoadDialog *const dialog = shown<LoadDialog>(stage);
    if (!stage.expect(dialog, say("there is nothing to load")))
        return false;
    TourHand::key(dialog, Qt::Key_Return);
    return stage.becomes("ExposureTime", "2500")
        && stage.expect(shownRow(dialog->table(), say("Gain")) >= 0, say("the results are not shown"));
}

/// Values that the camera does not take.
bool refuseSettings(TourStage &stage)
{
    if (LoadDialog *const before = shown<LoadDialog>(stage); !before || !closes(stage, before))
        return false;
    QString error;
    std::optional<Persistence::Settings> settings = SettingsFile::read(filePath("camera.txt"), &error);
    if (!stage.expect(settings.has_value(), error))
        return false;
    for (Persistence::Entry &entry : settings->entries) {
        if (entry.feature == "Width")
            entry.value = "645";
        else if (entry.feature == "ExposureTime")
            entry.value = "99000000";
        else if (entry.feature == "Gain")
            entry.value = "6";
    }
    SettingsFile::write(filePath("refused.txt"), *settings, &error);
    stage.window().settingsCommands().load(filePath("refused.txt"));
    LoadDialog *const dialog = shown<LoadDialog>(stage);
    if (!stage.expect(dialog, say("the second file is not shown")))
        return false;
    TourHand::key(dialog, Qt::Key_Return);
    const bool isListed = shownRow(dialog->table(), say("Width")) >= 0
        && shownRow(dialog->table(), say("ExposureTime")) >= 0 && shownRow(dialog->table(), say("Gain")) < 0;
    return stage.expect(isListed, say("other rows are shown than those that did not take"))
        && stage.becomes("Gain", "6");
}

bool compareSettings(TourStage &stage)
{
    if (LoadDialog *const before = shown<LoadDialog>(stage); !before || !closes(stage, before))
        return false;
    CompareDialog *const dialog =
        stage.window().settingsCommands().compare({stage.host().focus().id(), {}}, {{}, filePath("camera.txt")});
    const int row = shownRow(dialog->table(), say("Gain"));
    if (!stage.expect(row >= 0, say("the difference is not shown")))
        return false;
    dialog->table().view().selectAll();
    TourHand::key(&dialog->table().view(), Qt::Key_Space);
    return stage.expect(dialog->toLeft().isEnabled(), say("what is ticked cannot be copied"));
}

bool copySettings(TourStage &stage)
{
    CompareDialog *const dialog = shown<CompareDialog>(stage);
    if (!stage.expect(dialog, say("there is nothing to copy")))
        return false;
    TourHand::click(&dialog->toLeft());
    return stage.expect(stage.value(say("Gain")).toDouble() != 6, say("nothing is copied"))
        && stage.expect(std::none_of(dialog->table().settings().rows().begin(), dialog->table().settings().rows().end(),
                                     [](const SettingsModel::Row &row) { return row.isDifferent; }),
                        say("there are differences left"))
        && stage.expect(shownRow(dialog->table(), say("Gain")) >= 0, say("nobody is told what was copied"));
}

bool leaveSettings(TourStage &stage)
{
    CompareDialog *const dialog = shown<CompareDialog>(stage);
    return dialog && closes(stage, dialog) && stage.acquires();
}

} // namespace

const std::vector<TourStep> &tourSettingsSteps()
{
    static const std::vector<TourStep> Steps = {
        {"settings-saved", saveSettings},       {"settings-plan", showPlan},
        {"settings-loaded", loadSettings},      {"settings-refused", refuseSettings},
        {"settings-compared", compareSettings}, {"settings-copied", copySettings},
        {"settings-left", leaveSettings},
    };
    return Steps;
}
