// SPDX-License-Identifier: MIT
#include "tour/TourProducerSteps.h"

#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTemporaryDir>

#include "Devices/Device.h"
#include "Host/HostContext.h"
#include "Viewer/ImageView.h"
#include "Viewer/ProducerTable.h"
#include "Viewer/ProducersDialog.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/ViewerWindow.h"
#include "tour/TourHand.h"
#include "tour/TourStage.h"

namespace {

using State = DeviceTree::State;

constexpr const char *Grabber = "CXP-IF";
constexpr const char *Camera = "GEV-IF/GEV-AREA";
constexpr int DeviceMenu = 1;

QString producerFile()
{
    return QFileInfo(say(TEST_PRODUCER)).canonicalFilePath();
}

/// A file that is no library, made when it is asked for.
QString brokenFile()
{
    static const QTemporaryDir Folder;
    const QString path = QFileInfo(Folder.path()).canonicalFilePath() + say("/broken.cti");
    QFile file(path);
    if (!file.exists() && file.open(QIODevice::WriteOnly))
        file.write("This is no library.\n");
    return path;
}

/// A device of the producer by the way to it; null while it is not known.
Device *behindProducer(const TourStage &stage, const char *way)
{
    return stage.host().devices().device(say("gentl:%1/%2").arg(producerFile(), say(way)));
}

/// Null when it is not shown.
ProducersDialog *dialogOf(const TourStage &stage)
{
    const QList<ProducersDialog *> all = stage.window().findChildren<ProducersDialog *>();
    return all.isEmpty() || !all.last()->isVisible() ? nullptr : all.last();
}

/// What the search has made of a file, chosen in the table; null before it.
const ProducerReport *reportOf(const ProducersDialog &dialog, const QString &file)
{
    auto *const table = dialog.findChild<ProducerTable *>();
    for (int row = 0; row < table->topLevelItemCount(); ++row) {
        table->setCurrentItem(table->topLevelItem(row));
        const KnownProducer *const producer = table->current();
        if (producer->file.path == file)
            return producer->report ? &*producer->report : nullptr;
    }
    return nullptr;
}

bool showProducers(TourStage &stage)
{
    stage.order(Command::StopAcquisition);
    stage.order(Command::Producers);
    ProducersDialog *const dialog = dialogOf(stage);
    if (!stage.expect(dialog, say("the producers are not shown")))
        return false;
    dialog->add({brokenFile(), producerFile()});
    const bool isSearched = TourHand::waitUntil(
        [&] { return reportOf(*dialog, brokenFile()) && reportOf(*dialog, producerFile()); }, 30'000);
    return stage.expect(isSearched, say("the producers are not searched"))
        && stage.expect(!reportOf(*dialog, brokenFile())->problem.isEmpty(), say("the broken file is used"))
        && stage.expect(reportOf(*dialog, producerFile())->interfaces.size() == 2, say("no interfaces are seen"))
        && stage.expect(TourHand::waitUntil([&] { return behindProducer(stage, Camera); }),
                        say("the camera is not listed"));
}

bool openGrabber(TourStage &stage)
{
    ProducersDialog *const dialog = dialogOf(stage);
    if (!stage.expect(dialog, say("there is no dialog to close")))
        return false;
    TourHand::key(dialog, Qt::Key_Escape);
    return stage.expect(TourHand::waitUntil([&] { return !dialogOf(stage); }), say("the dialog does not close"))
        && stage.open(*behindProducer(stage, Grabber))
        && stage.expect(stage.tree().shownRows() > 1, say("the frame grabber has no features"));
}

bool openCamera(TourStage &stage)
{
    return stage.open(*behindProducer(stage, Camera)) && stage.acquires();
}

/// The producer's side of the camera; that of its stream is the last one.
QAction *moduleEntry(const QMenu &menu)
{
    return menu.actions()[menu.actions().size() - 2];
}

/// By the device menu.
bool showModules(TourStage &stage)
{
    QMenuBar *const bar = stage.window().menuBar();
    TourHand::click(bar, bar->actionGeometry(bar->actions().at(DeviceMenu)).center());
    const QMenu *const menu = stage.window().commands().deviceMenu();
    return stage.expect(TourHand::waitUntil([&] { return menu->isVisible(); }), say("the menu does not open"))
        && stage.expect(moduleEntry(*menu)->toolTip().contains(behindProducer(stage, Camera)->displayName()),
                        say("the camera has no modules"));
}

bool openModule(TourStage &stage)
{
    QMenu *const menu = stage.window().commands().deviceMenu();
    const QWidget *const before = stage.panel().widget();
    TourHand::click(menu, menu->actionGeometry(moduleEntry(*menu)).center());
    const bool isShown =
        TourHand::waitUntil([&] { return stage.panel().widget() != before && stage.tree().shownRows() > 0; });
    return stage.expect(isShown, say("the module gets no panel"));
}

/// Everything is as before.
bool leaveProducers(TourStage &stage)
{
    for (const char *way : {Camera, Grabber}) {
        const Device &device = *behindProducer(stage, way);
        stage.pointAt(device, false);
        stage.order(Command::CloseDevice);
        if (!stage.expect(stage.reaches(device, State::Closed), say("%1 stays open").arg(device.id())))
            return false;
    }
    stage.order(Command::Producers);
    ProducersDialog *const dialog = dialogOf(stage);
    if (!stage.expect(dialog, say("the producers are not shown again")))
        return false;
    auto *const table = dialog->findChild<ProducerTable *>();
    for (int left = table->topLevelItemCount(); left > 0; --left)
        TourHand::click(dialog->findChild<QPushButton *>(say("removeProducer")));
    const bool isGone = TourHand::waitUntil([&] { return !behindProducer(stage, Camera); });
    TourHand::key(dialog, Qt::Key_Escape);
    stage.pointAt(*stage.simulated(false), false);
    return stage.expect(isGone, say("the camera stays without its producer")) && stage.acquires();
}

} // namespace

const std::vector<TourStep> &tourProducerSteps()
{
    static const std::vector<TourStep> Steps = {
        {"producers", showProducers},          {"producer-grabber", openGrabber}, {"producer-camera", openCamera},
        {"producer-module-menu", showModules}, {"producer-module", openModule},   {"producers-left", leaveProducers},
    };
    static const std::vector<TourStep> None;
    return *TEST_PRODUCER ? Steps : None;
}
