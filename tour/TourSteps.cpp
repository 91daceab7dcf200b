// SPDX-License-Identifier: MIT
#include "tour/TourSteps.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeView>

#include "Host/HostContext.h"
#include "Viewer/DeviceTree.h"
#include "Viewer/FrameStatus.h"
#include "Viewer/ImageView.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/ViewerWindow.h"
#include "tour/TourEditSteps.h"
#include "tour/TourHand.h"
#include "tour/TourLinkSteps.h"
#include "tour/TourPageSteps.h"
#include "tour/TourProducerSteps.h"
#include "tour/TourProfilerSteps.h"
#include "tour/TourSettingsSteps.h"
#include "tour/TourStage.h"
#include "tour/TourStructuredLightSteps.h"
#include "tour/TourWriteLogSteps.h"

namespace {

using State = DeviceTree::State;

constexpr int AttributeTab = 1;
constexpr int Guru = 2;

bool showStart(TourStage &stage)
{
    return stage.expect(stage.panel().widget(), say("no default panel is shown"))
        && stage.expect(stage.tree().shownRows() == 0, say("the default panel has features"))
        && stage.expect(stage.simulated(false) && stage.simulated(true), say("a simulated device is missing"));
}

bool openCamera(TourStage &stage)
{
    return stage.open(*stage.simulated(false))
        && stage.expect(stage.tree().view() && stage.tree().view()->model(), say("the panel has no features"));
}

bool openAttributeTab(TourStage &stage)
{
    return stage.expect(stage.panel().openTab(AttributeTab), say("the attribute tab does not open"))
        && stage.expect(stage.tree().view()->isExpanded(stage.tree().view()->model()->index(0, 0)),
                        say("the root is not open"))
        && stage.expect(stage.tree().isShown(say("ImageFormatControl")), say("a category is missing"));
}

bool expandTree(TourStage &stage)
{
    const int folded = stage.tree().shownRows();
    const QString offer = stage.tree().foldButton()->text();
    TourHand::click(stage.tree().foldButton());
    return stage.expect(stage.tree().shownRows() > folded, say("nothing unfolds"))
        && stage.expect(stage.tree().foldButton()->text() != offer, say("the button does not offer to fold"));
}

bool selectFeature(TourStage &stage)
{
    TourHand::clickCell(stage.tree().view(), stage.tree().feature(say("ExposureTime")));
    const QString text = stage.panel().description()->toPlainText();
    return stage.expect(text.startsWith(say("ExposureTime")) && text.contains(say("Max:")),
                        say("the description pane does not describe the feature"));
}

bool searchFeature(TourStage &stage)
{
    TourHand::click(stage.tree().searchField());
    TourHand::type(stage.tree().searchField(), say("gain"));
    const bool filtered = stage.tree().isShown(say("Gain")) && !stage.tree().isShown(say("ExposureTime"));
    return stage.expect(filtered, say("the search does not filter"));
}

bool raiseLevel(TourStage &stage)
{
    TourHand::retype(stage.tree().searchField(), QString());
    const int beginner = stage.tree().shownRows();
    const bool chosen = TourHand::choose(stage.tree().levelBox(), stage.tree().levelBox()->itemText(2));
    return stage.expect(chosen && stage.tree().shownRows() > beginner, say("the level Guru does not show more"))
        && stage.expect(stage.host().infoItems().parameter(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL) == say("2"),
                        say("the level is not stored"));
}

/// Features that a switch makes available appear at once, however far they are from the switch.
bool switchFeatures(TourStage &stage)
{
    const bool before = stage.tree().isShown(say("ChunkEnable"));
    return stage.tree().edit(say("ChunkModeActive"), say("True"))
        && stage.expect(!before && stage.tree().isShown(say("ChunkEnable")), say("the switched feature is not shown"));
}

bool discardAddress(TourStage &stage)
{
    return stage.tree().edit(say("GevPersistentIPAddress"), say("192168000007"))
        && stage.expect(stage.isLogged(say("GevPersistentIPAddress: addresses are not written")),
                        say("nobody tells that the address is not written"));
}

struct Edit
{
    const char *feature;
    const char *typed;
    const char *expected; ///< value of the device afterwards
};

bool takesValue(TourStage &stage, const Edit &edit)
{
    const QString feature = say(edit.feature);
    if (!stage.tree().edit(feature, say(edit.typed)))
        return false;
    const QString value = stage.value(feature);
    return stage.expect(value == say(edit.expected), QStringLiteral("%1 is %2").arg(feature, value));
}

/// Takes the value and opens the editor again, for the picture.
bool editsAgain(TourStage &stage, const Edit &edit)
{
    return takesValue(stage, edit)
        && stage.expect(stage.tree().showEditor(say(edit.feature)), say("the editor does not open again"));
}

bool editInteger(TourStage &stage)
{
    return editsAgain(stage, {"Width", "640", "640"});
}

bool editFloat(TourStage &stage)
{
    const QString feature = say("ExposureTime");
    return stage.tree().edit(feature, say("2500"))
        && stage.expect(stage.value(feature).toDouble() == 2500.0, say("ExposureTime is not 2500"))
        && stage.expect(stage.tree().showEditor(feature), say("the editor does not open again"));
}

bool editEnumeration(TourStage &stage)
{
    return takesValue(stage, {"TriggerMode", "On", "On"}) && takesValue(stage, {"TriggerMode", "Off", "Off"})
        && editsAgain(stage, {"GainAuto", "Off", "Off"});
}

bool editBoolean(TourStage &stage)
{
    return editsAgain(stage, {"ReverseX", "True", "True"});
}

bool editText(TourStage &stage)
{
    return editsAgain(stage, {"DeviceUserID", "Line 3 left", "Line 3 left"});
}

bool runCommand(TourStage &stage)
{
    const QString before = stage.value(say("TimestampLatchValue"));
    auto *button = qobject_cast<QPushButton *>(stage.tree().openEditor(say("TimestampLatch")));
    if (!stage.expect(button, say("the command has no button")))
        return false;
    TourHand::click(button);
    TourHand::pause(200);
    return stage.expect(stage.value(say("TimestampLatchValue")) != before, say("the command does not run"));
}

bool refuseWrite(TourStage &stage)
{
    return takesValue(stage, {"Width", "645", "640"})
        && stage.expect(stage.isLogged(say("Set Width value failed, message = The difference between Value = 645 ")),
                        say("the refused write is not logged with its reason"))
        && stage.expect(!stage.isLogged(say("Failed to set data")), say("the refused write is logged twice"));
}

/// Opens the View menu and its submenu of switches, for the picture.
bool openDeveloperMenu(TourStage &stage)
{
    QMenuBar *bar = stage.window().menuBar();
    QAction *entry = bar->actions().at(2);
    TourHand::click(bar, bar->actionGeometry(entry).center());
    QMenu *menu = entry->menu();
    const QMenu *switches = menu->actions().last()->menu();
    TourHand::click(menu, menu->actionGeometry(menu->actions().last()).center());
    return stage.expect(switches && TourHand::waitUntil([&] { return switches->isVisible(); }),
                        say("the switches for developers are not shown"));
}

bool hideTab(TourStage &stage)
{
    stage.order(Command::ShowCommonTab);
    const int hidden = stage.panel().tabs()->count();
    stage.order(Command::ShowCommonTab);
    return stage.expect(hidden == 1, say("the common tab is not hidden"))
        && stage.expect(stage.panel().tabs()->count() == 2, say("the common tab does not come back"))
        && stage.panel().openTab(AttributeTab) && openDeveloperMenu(stage);
}

bool startAcquisition(TourStage &stage)
{
    const Device &camera = *stage.simulated(false);
    TourHand::key(&stage.window().devices(), Qt::Key_Return);
    const bool frames = TourHand::waitUntil([&] { return stage.window().image().framesPerSecond() > 0; });
    return stage.expect(stage.reaches(camera, State::Acquiring), say("the camera does not acquire"))
        && stage.expect(frames, say("no frames arrive"))
        && stage.expect(stage.window().frameStatus().text().contains(say("640")), say("the status has no image size"))
        && stage.expect(!stage.tree().openEditor(say("Width")), say("a locked feature can be edited"));
}

bool zoomImage(TourStage &stage)
{
    ImageView &image = stage.window().image();
    const double fitted = image.zoom();
    TourHand::wheel(&image, image.rect().center(), 4);
    return stage.expect(image.zoom() > fitted && !image.isFitted(), say("the wheel does not zoom"));
}

bool changeFocus(TourStage &stage)
{
    return stage.open(*stage.simulated(true))
        && stage.expect(stage.tree().shownRows() > 1, say("the card has no features"));
}

bool changeLanguage(TourStage &stage)
{
    stage.pointAt(*stage.simulated(false), false);
    const QString button = stage.tree().foldButton()->text();
    const QString title = stage.window().windowTitle();
    stage.changeLanguage();
    return stage.expect(stage.tree().foldButton()->text() != button, say("the panel does not change its language"))
        && stage.expect(stage.window().windowTitle() != title, say("the window does not change its language"))
        && stage.expect(stage.tree().levelBox()->currentIndex() == Guru, say("the level is forgotten"));
}

bool searchInOtherLanguage(TourStage &stage)
{
    TourHand::click(stage.tree().searchField());
    TourHand::type(stage.tree().searchField(), say("chunk"));
    const bool isKept = stage.tree().levelBox()->currentIndex() == Guru
        && stage.host().infoItems().parameter(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL) == say("2");
    TourHand::retype(stage.tree().searchField(), QString());
    return stage.expect(isKept, say("a search changes the level"));
}

bool closeCamera(TourStage &stage)
{
    const Device &camera = *stage.simulated(false);
    stage.order(Command::StopAcquisition);
    stage.order(Command::CloseDevice);
    return stage.expect(stage.reaches(camera, State::Closed), say("the camera does not close"))
        && stage.expect(TourHand::waitUntil([&] { return stage.panel().widget() && stage.tree().shownRows() == 0; }),
                        say("the default panel is not shown"))
        && stage.expect(stage.window().image().frame().isNull(), say("the image stays"));
}

bool openDescription(TourStage &stage)
{
    const QTemporaryDir directory;
    const QString file = directory.filePath(say("camera.xml"));
    return stage.expect(QFile::copy(say(":/simulation/area_scan.xml"), file), say("there is no description to open"))
        && stage.expect(stage.window().openDescription(file), say("the description does not open"))
        && stage.expect(TourHand::waitUntil([&] { return stage.tree().view() && stage.tree().view()->model(); }),
                        say("the description gets no panel"))
        && stage.expect(stage.panel().openTab(AttributeTab) && stage.tree().isShown(say("DeviceControl")),
                        say("the features are not shown"));
}

} // namespace

std::vector<TourStep> tourSteps()
{
    std::vector<TourStep> steps = {{"start", showStart}, {"camera-open", openCamera}};
    const std::vector<TourStep> &pages = tourPageSteps();
    steps.insert(steps.end(), pages.begin(), pages.end());
    const std::vector<TourStep> &edits = tourEditSteps();
    steps.insert(steps.end(), edits.begin(), edits.end());
    const std::vector<TourStep> &profiler = tourProfilerSteps();
    steps.insert(steps.end(), profiler.begin(), profiler.end());
    const std::vector<TourStep> features = {
        {"attribute-tab", openAttributeTab},
        {"expanded", expandTree},
        {"feature-selected", selectFeature},
        {"search", searchFeature},
        {"level-guru", raiseLevel},
        {"features-switched", switchFeatures},
        {"address-discarded", discardAddress},
        {"edit-integer", editInteger},
        {"edit-float", editFloat},
        {"edit-enumeration", editEnumeration},
        {"edit-boolean", editBoolean},
        {"edit-text", editText},
        {"command", runCommand},
        {"write-refused", refuseWrite},
    };
    const std::vector<TourStep> views = {
        {"view-menu", hideTab},
        {"acquisition", startAcquisition},
        {"zoom", zoomImage},
    };
    const std::vector<TourStep> ends = {
        {"card-focused", changeFocus},
        {"other-language", changeLanguage},
        {"other-language-search", searchInOtherLanguage},
        {"camera-closed", closeCamera},
        {"description-file", openDescription},
    };
    const std::vector<TourStep> &structuredLight = tourStructuredLightSteps();
    steps.insert(steps.end(), structuredLight.begin(), structuredLight.end());
    steps.insert(steps.end(), features.begin(), features.end());
    const std::vector<TourStep> &writes = tourWriteLogSteps();
    steps.insert(steps.end(), writes.begin(), writes.end());
    steps.insert(steps.end(), views.begin(), views.end());
    const std::vector<TourStep> &settings = tourSettingsSteps();
    steps.insert(steps.end(), settings.begin(), settings.end());
    const std::vector<TourStep> &producers = tourProducerSteps();
    steps.insert(steps.end(), producers.begin(), producers.end());
    const std::vector<TourStep> &links = tourLinkSteps();
    steps.insert(steps.end(), links.begin(), links.end());
    steps.insert(steps.end(), ends.begin(), ends.end());
    return steps;
}
