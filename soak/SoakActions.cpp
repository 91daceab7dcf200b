// SPDX-License-Identifier: MIT
#include "soak/SoakActions.h"

#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenuBar>
#include <QPointer>
#include <QTabBar>
#include <QTabWidget>

#include <functional>

#include "Host/HostContext.h"
#include "Simulation/SimulatedDevice.h"
#include "Viewer/ImageView.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/ViewerWindow.h"
#include "soak/SoakFiles.h"
#include "soak/SoakHand.h"
#include "soak/SoakRecord.h"
#include "soak/SoakStage.h"
#include "support/FakeCamera.h"

using namespace std::chrono_literals;

namespace {

const QString Texts[] = {QStringLiteral("0"),
                         QStringLiteral("7"),
                         QStringLiteral("-1"),
                         QStringLiteral("64"),
                         QStringLiteral("1000"),
                         QStringLiteral("2.5"),
                         QStringLiteral("0,25"),
                         QStringLiteral("1e9"),
                         QStringLiteral("99999999999999999999"),
                         QStringLiteral("0x10"),
                         QStringLiteral("abc"),
                         QStringLiteral("-"),
                         QStringLiteral("192.168.7.300"),
                         QStringLiteral("a>b<c"),
                         QString(300, QLatin1Char('w')),
                         QString::fromUtf8("\xe5\xa2\x9e\xe7\x9b\x8a")};
const QString Searches[] = {QStringLiteral("gain"),  QStringLiteral("e"), QStringLiteral("zzz"),
                            QStringLiteral("Width"), QStringLiteral("("), QString::fromUtf8("\xe5\xae\xbd")};
constexpr Qt::Key Ends[] = {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape, Qt::Key_Tab, Qt::Key_Backtab};
constexpr Qt::Key Wanderings[] = {Qt::Key_Tab,    Qt::Key_Backtab,  Qt::Key_Up,   Qt::Key_Down, Qt::Key_Left,
                                  Qt::Key_Right,  Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End,  Qt::Key_PageUp,
                                  Qt::Key_Return, Qt::Key_Escape,   Qt::Key_F2,   Qt::Key_Space};
/// Quitting would end the run.
constexpr Command Orders[] = {Command::OpenDevice,       Command::OpenDevice,      Command::CloseDevice,
                              Command::StartAcquisition, Command::StopAcquisition, Command::Refresh,
                              Command::ZoomFit,          Command::ZoomOriginal,    Command::ZoomIn,
                              Command::ZoomOut};

QString nameOf(const QWidget &widget)
{
    return QStringLiteral("%1 \"%2\"").arg(QLatin1String(widget.metaObject()->className()), widget.objectName());
}

Qt::Key pressAny(SoakStage &stage, const Qt::Key key)
{
    stage.record().note(QStringLiteral("key %1").arg(QKeySequence(key).toString()));
    SoakHand::key(stage.window(), key);
    return key;
}

/// Whatever stands there gives way first, mostly. A value is typed to its end, or left half-way.
void typeInto(SoakStage &stage, const QString &text)
{
    Dice &dice = stage.dice();
    if (dice.chance(80))
        SoakHand::key(stage.window(), Qt::Key_A, Qt::ControlModifier);
    stage.record().note(QStringLiteral("types \"%1\"").arg(text.left(20)));
    SoakHand::type(stage.window(), text);
    if (dice.chance(75))
        pressAny(stage, dice.oneOf(Ends));
}

void turn(SoakStage &stage)
{
    const Qt::Key key = stage.dice().chance(50) ? Qt::Key_Up : Qt::Key_Down;
    for (int count = 1 + stage.dice().below(3); count > 0; --count)
        pressAny(stage, key);
}

void useItems(SoakStage &stage, QAbstractItemView &view)
{
    Dice &dice = stage.dice();
    const QPoint place = stage.anyPlace(*view.viewport());
    const QModelIndex row = view.indexAt(place);
    stage.record().note(row.siblingAtColumn(0).data().toString());
    switch (dice.below(5)) {
    case 0:
        return SoakHand::doubleClick(*view.viewport(), place);
    case 1:
        return SoakHand::wheel(*view.viewport(), place, dice.below(9) - 4);
    case 2:
        return SoakHand::askForMenu(*view.viewport(), place);
    case 3:
        SoakHand::click(*view.viewport(), place);
        pressAny(stage, dice.chance(50) ? Qt::Key_Left : Qt::Key_Right); // folds and unfolds
        return;
    default:
        SoakHand::click(*view.viewport(), place);
        pressAny(stage, Qt::Key_F2);
        typeInto(stage, dice.oneOf(Texts));
    }
}

/// What a person does with a control of that kind.
void useControl(SoakStage &stage, QWidget &control)
{
    Dice &dice = stage.dice();
    stage.record().note(nameOf(control));
    if (auto *view = qobject_cast<QAbstractItemView *>(&control))
        return useItems(stage, *view);
    const QPointer<QWidget> used(&control);
    if (dice.chance(8))
        return SoakHand::wheel(control, control.rect().center(), dice.below(7) - 3);
    SoakHand::click(control, stage.anyPlace(control));
    if (!used)
        return;
    if (qobject_cast<QAbstractSpinBox *>(used) && dice.chance(40))
        return turn(stage);
    if (qobject_cast<QAbstractSpinBox *>(used) || qobject_cast<QLineEdit *>(used))
        return typeInto(stage, dice.oneOf(Texts));
    if (qobject_cast<QComboBox *>(used) && dice.chance(80))
        return answerOpenAbove(stage);
    if (qobject_cast<QAbstractSlider *>(used))
        pressAny(stage, dice.oneOf(Wanderings));
}

void useDock(SoakStage &stage, const char *name)
{
    if (QWidget *control = stage.anyReachable(stage.dock(name)))
        return useControl(stage, *control);
    // Both of the panel's tabs may have been switched off, and the panel with them.
    for (const Command command : {Command::ShowCommonTab, Command::ShowAttributeTab}) {
        if (!stage.window().commands().action(command)->isChecked())
            stage.window().commands().action(command)->trigger();
    }
}

void useDevice(SoakStage &stage)
{
    const Device *device = stage.dice().oneOf(stage.host().devices().all());
    const bool twice = stage.dice().chance(40);
    stage.record().note(QStringLiteral("%1 %2").arg(
        twice ? QStringLiteral("double click on") : QStringLiteral("click on"), device->id()));
    stage.clickDevice(*device, twice);
}

void order(SoakStage &stage)
{
    const Command command = stage.dice().oneOf(Orders);
    stage.record().note(stage.window().commands().action(command)->text());
    stage.order(command);
}

void search(SoakStage &stage)
{
    auto *field = stage.dock("panelDock").findChild<QLineEdit *>(QStringLiteral("edit_search"));
    if (!field || !field->isVisible())
        return;
    SoakHand::click(*field, field->rect().center());
    if (stage.dice().chance(40))
        SoakHand::key(stage.window(), Qt::Key_A, Qt::ControlModifier);
    const QString text = stage.dice().oneOf(Searches);
    stage.record().note(text);
    SoakHand::type(stage.window(), text);
}

/// Edits a feature of the tab of all features, which is opened first when another one is in view.
void editFeature(SoakStage &stage)
{
    auto *tree = stage.dock("panelDock").findChild<QAbstractItemView *>(QStringLiteral("widget_featrue"));
    auto *tabs = stage.dock("panelDock").findChild<QTabWidget *>(QStringLiteral("tabMainWidget"));
    if (!tree || !tabs || !tabs->isVisible() || tabs->count() < 2)
        return;
    if (!tree->isVisible())
        return SoakHand::click(*tabs->tabBar(), tabs->tabBar()->tabRect(tabs->count() - 1).center());
    const QModelIndex row = tree->indexAt(stage.anyPlace(*tree->viewport())).siblingAtColumn(1);
    const QRect cell = tree->visualRect(row) & tree->viewport()->rect();
    if (cell.isEmpty())
        return;
    stage.record().note(row.siblingAtColumn(0).data().toString());
    SoakHand::click(*tree->viewport(), cell.center());
    if (!tree->isVisible() || !qobject_cast<QComboBox *>(QApplication::focusWidget()))
        return typeInto(stage, stage.dice().oneOf(Texts));
    SoakHand::key(stage.window(), Qt::Key_F4); // opens the list
    answerOpenAbove(stage);
}

void changeLanguage(SoakStage &stage)
{
    const bool english = stage.host().language() == QLatin1String("English");
    stage.window().commands().action(english ? Command::Chinese : Command::English)->trigger();
}

void openMenu(SoakStage &stage)
{
    QMenuBar *bar = stage.window().menuBar();
    const QAction *menu = bar->actions().at(stage.dice().below(bar->actions().size()));
    stage.record().note(menu->text());
    SoakHand::click(*bar, bar->actionGeometry(const_cast<QAction *>(menu)).center());
    answerOpenAbove(stage);
}

void openFile(SoakStage &stage)
{
    stage.order(Command::OpenFile);
}

void useImage(SoakStage &stage)
{
    ImageView &view = stage.dice().chance(70) ? stage.window().regionView() : stage.window().image();
    const QPoint from = stage.anyPlace(view), to = stage.anyPlace(view);
    switch (stage.dice().below(4)) {
    case 0:
        return SoakHand::wheel(view, from, stage.dice().below(7) - 3);
    case 1:
        SoakHand::click(view, from);
        pressAny(stage, stage.dice().chance(50) ? Qt::Key_Delete : Qt::Key_Left);
        return;
    default:
        return SoakHand::drag(view, from, to);
    }
}

void unplug(SoakStage &stage)
{
    constexpr int Faults[] = {0, 0, 0, 1, 2, 3}; // sound again more often than not
    SimulatedDevice *device = stage.dice().oneOf(stage.simulated());
    const int fault = stage.dice().oneOf(Faults);
    stage.record().note(QStringLiteral("%1 fault %2").arg(device->id()).arg(fault));
    stage.setFault(*device, fault);
}

void unplugCamera(SoakStage &stage)
{
    FakeCamera *camera = stage.camera();
    if (!camera)
        return;
    const bool unplugs = camera->isPlugged();
    stage.record().note(unplugs ? QStringLiteral("unplugs") : QStringLiteral("plugs"));
    if (unplugs)
        camera->unplug();
    else
        camera->plug();
}

void changeLatency(SoakStage &stage)
{
    constexpr std::chrono::milliseconds Latencies[] = {0ms, 0ms, 1ms, 2ms}; // of each access; quick again at times
    SimulatedDevice *device = stage.dice().oneOf(stage.simulated());
    const std::chrono::milliseconds latency = stage.dice().oneOf(Latencies);
    stage.record().note(QStringLiteral("%1 takes %2 ms").arg(device->id()).arg(latency.count()));
    device->setLatency(latency);
}

void resize(SoakStage &stage)
{
    const QSize size(900 + stage.dice().below(1000), 640 + stage.dice().below(500));
    stage.record().note(QStringLiteral("%1 x %2").arg(size.width()).arg(size.height()));
    stage.window().resize(size);
}

void wander(SoakStage &stage)
{
    for (int count = 1 + stage.dice().below(4); count > 0; --count) {
        pressAny(stage, stage.dice().oneOf(Wanderings));
        if (SoakStage::openAbove()) // of the menu bar, which was left with the keyboard's focus
            return answerOpenAbove(stage);
    }
}

struct Action
{
    int weight;
    const char *name;
    std::function<void(SoakStage &)> act;
};

const Action Actions[] = {
    {40, "panel:", [](SoakStage &stage) { useDock(stage, "panelDock"); }},
    {6, "log:", [](SoakStage &stage) { useDock(stage, "logDock"); }},
    {12, "device:", useDevice},
    {12, "order:", order},
    {14, "feature:", editFeature},
    {5, "search:", search},
    {2, "language", changeLanguage},
    {3, "menu:", openMenu},
    {3, "file:", openFile},
    {6, "image", useImage},
    {3, "unplug:", unplug},
    {2, "link:", changeLatency},
    {1, "camera", unplugCamera},
    {2, "resize:", resize},
    {6, "wander:", wander},
};

/// The rest of the menus: not quitting, not the docks, which stay in place.
bool mayBeChosen(const SoakStage &stage, const QAction *action)
{
    return action && action != stage.window().commands().action(Command::Quit) && action->objectName().isEmpty()
        && action->parent() != stage.window().findChild<QWidget *>(QStringLiteral("toolBar"))
        && !(action->parent() && action->parent()->inherits("QDockWidget"));
}

} // namespace

void answerOpenAbove(SoakStage &stage)
{
    QWidget *above = SoakStage::openAbove();
    if (!above)
        return;
    Dice &dice = stage.dice();
    stage.record().note(QStringLiteral("in %1").arg(nameOf(*above)));
    if (qobject_cast<QFileDialog *>(above) && dice.chance(85)) {
        const QString path = dice.oneOf(stage.files().paths());
        stage.record().note(path);
        SoakHand::key(*above, Qt::Key_A, Qt::ControlModifier);
        SoakHand::type(*above, path);
        SoakHand::key(*above, Qt::Key_Return);
    }
    for (int steps = dice.below(6); steps > 0 && SoakStage::openAbove() == above; --steps)
        SoakHand::key(*above, Qt::Key_Down);
    const auto *menu = qobject_cast<QMenu *>(above);
    const bool chooses = dice.chance(75) && (!menu || mayBeChosen(stage, menu->activeAction()));
    while (QWidget *open = SoakStage::openAbove()) {
        if (chooses && open == above) {
            SoakHand::key(*open, Qt::Key_Return);
            if (SoakStage::openAbove() != above)
                break;
        }
        SoakHand::key(*open, Qt::Key_Escape);
        if (SoakStage::openAbove() == open)
            open->close();
    }
}

void doSomething(SoakStage &stage)
{
    if (SoakStage::openAbove()) {
        stage.record().note(QStringLiteral("above:"));
        return answerOpenAbove(stage);
    }
    int all = 0;
    for (const Action &action : Actions)
        all += action.weight;
    int chosen = stage.dice().below(all);
    for (const Action &action : Actions) {
        chosen -= action.weight;
        if (chosen < 0) {
            stage.record().note(QLatin1String(action.name));
            return action.act(stage);
        }
    }
}
