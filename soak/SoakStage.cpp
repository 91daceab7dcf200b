// SPDX-License-Identifier: MIT
#include "soak/SoakStage.h"

#include <QAbstractButton>
#include <QAbstractEventDispatcher>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>
#include <QTextEdit>
#include <QThread>
#include <QTimer>
#include <QToolBar>
#include <QTreeView>

#include <algorithm>
#include <numeric>
#include <utility>

#include "Host/HostContext.h"
#include "Simulation/SimulatedDevice.h"
#include "Viewer/DeviceTree.h"
#include "Viewer/ImageView.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/ViewerWindow.h"
#include "soak/SoakHand.h"

namespace {

constexpr int Patience = 5000; ///< ms, for what is under way
constexpr int ShortTimer = 150; ///< ms; timers up to that are waited for
constexpr unsigned Nap = 300; ///< us

struct DockPlace
{
    const char *name;
    Qt::DockWidgetArea area;
};
constexpr DockPlace DockPlaces[] = {{"deviceDock", Qt::LeftDockWidgetArea},
                                    {"panelDock", Qt::RightDockWidgetArea},
                                    {"logDock", Qt::BottomDockWidgetArea}};

template <class... Kinds>
bool isOne(const QWidget *widget)
{
    return (... || (qobject_cast<const Kinds *>(widget) != nullptr));
}

bool isControl(const QWidget *widget)
{
    return isOne<QAbstractButton, QAbstractItemView, QAbstractSlider, QAbstractSpinBox, QComboBox, QLineEdit, QTabBar,
                 QTextEdit, ImageView>(widget);
}

/// Where it can be hit, in its own coordinates; null when it is covered.
QPoint hitPlace(const QWidget *widget)
{
    const QPoint place = widget->visibleRegion().boundingRect().center();
    QWidget *window = widget->window();
    const QWidget *hit = window->childAt(widget->mapTo(window, place));
    return hit && (hit == widget || widget->isAncestorOf(hit)) ? place : QPoint(-1, -1);
}

bool isShortTimer(const QTimer *timer)
{
    return timer->isActive() && timer->interval() <= ShortTimer;
}

bool isShortShot(const QTimer *timer)
{
    return isShortTimer(timer) && timer->isSingleShot();
}

bool isShortInterval(const QTimer *timer)
{
    return isShortTimer(timer) && !timer->isSingleShot();
}

/// QTimer::singleShot() makes these.
bool hasShortShots()
{
    QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance();
    const QObjectList shots = dispatcher->children();
    return std::any_of(shots.begin(), shots.end(), [dispatcher](QObject *shot) {
        const auto timers = dispatcher->registeredTimers(shot);
        return std::any_of(timers.begin(), timers.end(),
                           [](const auto &timer) { return timer.interval <= ShortTimer; });
    });
}

/// What nobody can change now may be live, and is left out: automatic modes follow the clock.
QString textOf(const QWidget *widget)
{
    if (!widget->isEnabled())
        return QString();
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        return label->text();
    if (const auto *edit = qobject_cast<const QLineEdit *>(widget))
        return edit->text();
    if (const auto *box = qobject_cast<const QComboBox *>(widget))
        return box->currentText();
    if (const auto *bar = qobject_cast<const QTabBar *>(widget))
        return bar->tabText(bar->currentIndex());
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
        return button->text() + QLatin1Char(button->isChecked() ? '+' : '-');
    return QString();
}

void addRows(QString &text, const QTreeView &view)
{
    const QAbstractItemModel *model = view.model();
    for (QModelIndex row = model ? model->index(0, 0) : QModelIndex(); row.isValid(); row = view.indexBelow(row)) {
        for (int column = 0; column < model->columnCount(row.parent()); ++column)
            text += row.siblingAtColumn(column).data().toString() + QLatin1Char('|');
    }
}

} // namespace

SoakStage::SoakStage(ViewerWindow &window, SoakRecord &record, Dice &dice, const SoakFiles &files)
    : m_window(window), m_record(record), m_dice(dice), m_files(files)
{ }

HostContext &SoakStage::host() const
{
    return m_window.host();
}

QWidget &SoakStage::dock(const char *name) const
{
    return *m_window.findChild<QDockWidget *>(QLatin1String(name))->widget();
}

QList<QWidget *> SoakStage::reachable(const QWidget &root) const
{
    QList<QWidget *> result = root.findChildren<QWidget *>();
    const auto isOut = [](const QWidget *widget) {
        return !widget->isVisible() || !widget->isEnabled() || !isControl(widget) || hitPlace(widget).x() < 0;
    };
    result.erase(std::remove_if(result.begin(), result.end(), isOut), result.end());
    return result;
}

QWidget *SoakStage::anyReachable(const QWidget &root) const
{
    const QList<QWidget *> controls = reachable(root);
    return controls.isEmpty() ? nullptr : m_dice.oneOf(controls);
}

QPoint SoakStage::anyPlace(const QWidget &widget) const
{
    const QRect seen = widget.visibleRegion().boundingRect();
    return seen.topLeft() + QPoint(m_dice.below(seen.width()), m_dice.below(seen.height()));
}

QWidget *SoakStage::openAbove()
{
    return QApplication::activePopupWidget() ? QApplication::activePopupWidget() : QApplication::activeModalWidget();
}

QList<SimulatedDevice *> SoakStage::simulated() const
{
    QList<SimulatedDevice *> result;
    const QList<Device *> devices = host().devices().all();
    for (Device *device : devices) {
        if (auto *simulated = qobject_cast<SimulatedDevice *>(device))
            result << simulated;
    }
    return result;
}

void SoakStage::setFault(SimulatedDevice &device, int fault)
{
    const auto chosen = SimulatedDevice::Fault(fault);
    m_silent.remove(&device);
    if (chosen == SimulatedDevice::Fault::Timeout)
        m_silent.insert(&device);
    device.setFault(chosen);
}

void SoakStage::rest()
{
    for (SimulatedDevice *device : simulated()) {
        setFault(*device, 0);
        device->setLatency(std::chrono::milliseconds(0));
    }
    const QList<Device *> devices = host().devices().all();
    for (const Device *device : devices)
        host().sessions().close(device->id());
    constexpr QSize RestingSize(1280, 800);
    m_window.resize(RestingSize);
    settle();
}

void SoakStage::order(Command command) const
{
    QAction *action = m_window.commands().action(command);
    QWidget *button = m_window.findChild<QToolBar *>(QStringLiteral("toolBar"))->widgetForAction(action);
    if (button && button->isVisible() && action->isEnabled() && m_dice.chance(50))
        return SoakHand::click(*button, button->rect().center());
    const QKeySequence keys = action->shortcut();
    if (!keys.isEmpty())
        SoakHand::key(m_window, Qt::Key(keys[0] & ~int(Qt::KeyboardModifierMask)),
                      Qt::KeyboardModifiers(keys[0] & int(Qt::KeyboardModifierMask)));
}

void SoakStage::clickDevice(const Device &device, bool twice) const
{
    DeviceTree &tree = m_window.devices();
    const QModelIndexList rows = tree.model()->match(tree.model()->index(0, 0), Qt::DisplayRole, device.displayName(),
                                                     1, Qt::MatchExactly | Qt::MatchRecursive);
    if (rows.isEmpty())
        return;
    tree.scrollTo(rows.first());
    const QPoint place = (tree.visualRect(rows.first()) & tree.viewport()->rect()).center();
    if (twice)
        SoakHand::doubleClick(*tree.viewport(), place);
    else
        SoakHand::click(*tree.viewport(), place);
}

bool SoakStage::isBusy() const
{
    const QList<Device *> devices = host().devices().all();
    const auto isChanging = [this](const Device *device) {
        const KnownDevices::State state = host().devices().state(device->id());
        return state == KnownDevices::State::Opening || state == KnownDevices::State::Closing;
    };
    const QList<QTimer *> timers = m_window.findChildren<QTimer *>();
    return host().sessions().isAnnouncing() || host().devices().isRefreshing() || hasShortShots()
        || std::any_of(devices.begin(), devices.end(), isChanging)
        || std::any_of(timers.begin(), timers.end(), isShortShot);
}

qint64 SoakStage::allAccesses() const
{
    const QList<Device *> devices = host().devices().all();
    return std::accumulate(devices.begin(), devices.end(), qint64(0),
                           [](qint64 sum, const Device *device) { return sum + qint64(device->portLoad().accesses); });
}

void SoakStage::settle() const
{
    constexpr int Rounds = 4; // for what an event queues, and that again
    QElapsedTimer clock;
    clock.start();
    qint64 accesses = 0;
    const QList<QTimer *> timers = m_window.findChildren<QTimer *>();
    const bool isTriggered = std::any_of(timers.begin(), timers.end(), isShortInterval); // again and again
    for (int quiet = 0; quiet < Rounds && clock.elapsed() < Patience; ++quiet) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const qint64 before = std::exchange(accesses, allAccesses());
        const bool isReading = accesses != before && !isTriggered; // slow devices are read in slices
        if (isReading || isBusy()) {
            quiet = -1;
            QThread::usleep(Nap);
        }
    }
}

QString SoakStage::look() const
{
    QString text;
    const QList<QWidget *> widgets = dock("panelDock").findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (!widget->isVisible())
            continue;
        text += QStringLiteral("%1 %2 %3 %4\n")
                    .arg(QLatin1String(widget->metaObject()->className()), widget->objectName(), textOf(widget))
                    .arg(widget->isEnabled());
        if (const auto *view = qobject_cast<const QTreeView *>(widget))
            addRows(text, *view);
    }
    addRows(text, m_window.devices());
    const QWidget *focused = m_window.focusWidget();
    return text + (focused ? QLatin1String(focused->metaObject()->className()) + focused->objectName() : QString());
}

QString SoakStage::displacedDocks() const
{
    QString displaced;
    for (const DockPlace &place : DockPlaces) {
        auto *dock = m_window.findChild<QDockWidget *>(QLatin1String(place.name));
        const bool isThere = !dock->isFloating() && m_window.dockWidgetArea(dock) == place.area;
        if (!dock->isVisible())
            displaced += QStringLiteral("%1 is hidden; ").arg(dock->objectName());
        else if (!isThere || (m_window.rect() & dock->geometry()).isEmpty())
            displaced += QStringLiteral("%1 has moved; ").arg(dock->objectName());
    }
    return displaced;
}
