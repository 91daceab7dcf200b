// SPDX-License-Identifier: MIT
#include "tour/TourStage.h"

#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDockWidget>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeView>

#include "Host/HostContext.h"
#include "ParamterWnd/ParamterWnd.h"
#include "Viewer/ImageView.h"
#include "Viewer/LogModel.h"
#include "Viewer/LogView.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/ViewerWindow.h"
#include "tour/TourHand.h"

namespace {

constexpr int CommonTab = 0;
constexpr int ScrollTime = 50; // ms
constexpr int ValuePatience = 3000; // ms
constexpr int EditorPatience = 1000; // ms; a click into the selected row opens its editor after a while

template <typename Widget>
Widget *part(const QWidget *panel, const char *name)
{
    return panel ? panel->findChild<Widget *>(QLatin1String(name)) : nullptr;
}

QModelIndex search(const QAbstractItemModel &model, const QModelIndex &parent, const QString &name)
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        if (index.data().toString() == name)
            return index;
        const QModelIndex below = search(model, index, name);
        if (below.isValid())
            return below;
    }
    return QModelIndex();
}

bool isSame(const QString &value, const QString &expected)
{
    bool isNumber = false;
    const double number = expected.toDouble(&isNumber);
    return value == expected || (isNumber && value.toDouble(&isNumber) == number && isNumber);
}

} // namespace

HostContext &TourStage::host() const
{
    return m_window.host();
}

Device *TourStage::simulated(bool card) const
{
    const QList<Device *> devices = host().devices().all();
    for (Device *device : devices) {
        if ((device->kind() == Device::Kind::Card) == card)
            return device;
    }
    return nullptr;
}

Device *TourStage::profiler() const
{
    return host().devices().device(say("SIM-PROFILER-01"));
}

void TourStage::pointAt(const Device &device, bool twice)
{
    DeviceTree &tree = m_window.devices();
    const QModelIndexList rows = tree.model()->match(tree.model()->index(0, 0), Qt::DisplayRole, device.displayName(),
                                                     1, Qt::MatchExactly | Qt::MatchRecursive);
    if (rows.isEmpty())
        return;
    if (twice)
        TourHand::doubleClickCell(&tree, rows.first());
    else
        TourHand::clickCell(&tree, rows.first());
}

void TourStage::order(Command command)
{
    m_window.commands().action(command)->trigger();
    TourHand::pause(100);
    settle();
}

void TourStage::settle() const
{
    TourHand::waitUntil([this] { return !host().sessions().isAnnouncing(); });
    TourHand::pause(ScrollTime); // for what the last event has queued
}

bool TourStage::reaches(const Device &device, DeviceTree::State state) const
{
    const bool reached = TourHand::waitUntil([&] { return m_window.devices().state(device.id()) == state; });
    settle();
    return reached;
}

bool TourStage::open(const Device &device)
{
    const QWidget *before = panel();
    pointAt(device, true);
    return expect(reaches(device, DeviceTree::State::Open), QStringLiteral("%1 does not open").arg(device.id()))
        && expect(TourHand::waitUntil([&] { return panel() != before && shownRows() > 0; }),
                  QStringLiteral("%1 gets no panel").arg(device.id()));
}

bool TourStage::leave(const Device &device)
{
    const QWidget *before = panel();
    order(Command::CloseDevice);
    if (!expect(reaches(device, DeviceTree::State::Closed), QStringLiteral("%1 stays open").arg(device.id())))
        return false;
    pointAt(*simulated(false), false);
    return expect(TourHand::waitUntil([&] { return shownRows() > 0 && panel() != before; }),
                  say("the camera's panel is not shown"));
}

void TourStage::changeLanguage()
{
    order(host().language() == say("English") ? Command::Chinese : Command::English);
    TourHand::pause(200);
}

bool TourStage::acquires()
{
    order(Command::StartAcquisition);
    return expect(TourHand::waitUntil([&] { return m_window.image().framesPerSecond() > 0; }), say("no frames arrive"));
}

QWidget *TourStage::panel() const
{
    const QList<QWidget *> panels = m_window.panel().findChildren<QWidget *>(QStringLiteral("ParamterWidget"));
    for (QWidget *panel : panels) {
        if (panel->isVisible())
            return panel;
    }
    return nullptr;
}

QTabWidget *TourStage::tabs() const
{
    return part<QTabWidget>(panel(), "tabMainWidget");
}

QTreeView *TourStage::tree() const
{
    return part<QTreeView>(panel(), "widget_featrue");
}

QLineEdit *TourStage::searchField() const
{
    return part<QLineEdit>(panel(), "edit_search");
}

QComboBox *TourStage::levelBox() const
{
    return part<QComboBox>(panel(), "cboboxLevel");
}

QToolButton *TourStage::foldButton() const
{
    return part<QToolButton>(panel(), "toolButton");
}

QTextBrowser *TourStage::description() const
{
    return panel() ? panel()->findChild<QTextBrowser *>() : nullptr;
}

bool TourStage::openTab(int number)
{
    QTabBar *bar = tabs() ? tabs()->tabBar() : nullptr;
    if (!bar || number >= bar->count())
        return false;
    TourHand::click(bar, bar->tabRect(number).center());
    return bar->currentIndex() == number;
}

bool TourStage::openPage(int number)
{
    const auto *pages = part<QTabWidget>(panel(), "tabWidget");
    if (!pages || !openTab(CommonTab) || number >= pages->count())
        return false;
    TourHand::click(pages->tabBar(), pages->tabBar()->tabRect(number).center());
    return pages->currentIndex() == number;
}

bool TourStage::resizePanel(int width)
{
    auto *dock = m_window.findChild<QDockWidget *>(say("panelDock"));
    m_window.resizeDocks({dock}, {width}, Qt::Horizontal);
    TourHand::pause(200);
    return expect(qAbs(panel()->width() - width) < 8,
                  QStringLiteral("the panel is %1 pixels wide").arg(panel()->width()));
}

QWidget *TourStage::row(const QString &label) const
{
    QWidget *found = panel() ? panel()->findChild<QWidget *>(label) : nullptr;
    if (!found || !found->isVisible())
        return nullptr;
    for (QWidget *outer = found->parentWidget(); outer; outer = outer->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(outer))
            area->ensureWidgetVisible(found);
    }
    TourHand::pause(ScrollTime);
    return found;
}

bool TourStage::press(const QString &label)
{
    auto *button = control<QPushButton>(label);
    if (!expect(button && button->isEnabled(), QStringLiteral("%1 cannot be pressed").arg(label)))
        return false;
    TourHand::click(button);
    return true;
}

bool TourStage::enter(const QString &label, const QString &number)
{
    auto *field = control<QAbstractSpinBox>(label);
    if (!expect(field && field->isEnabled(), QStringLiteral("%1 cannot be typed into").arg(label)))
        return false;
    TourHand::click(field, QPoint(field->width() / 3, field->height() / 2));
    TourHand::retype(field, number);
    TourHand::key(field, Qt::Key_Return);
    return true;
}

bool TourStage::choose(const QString &label, const QString &entry)
{
    auto *list = control<QComboBox>(label);
    const bool chosen = list && list->isEnabled() && TourHand::choose(list, entry);
    return expect(chosen, QStringLiteral("%1 does not offer %2").arg(label, entry));
}

int TourStage::shownRows() const
{
    int count = 0;
    if (!tree() || !tree()->model())
        return 0;
    for (QModelIndex index = tree()->model()->index(0, 0); index.isValid(); index = tree()->indexBelow(index))
        ++count;
    return count;
}

QModelIndex TourStage::feature(const QString &name) const
{
    return tree() && tree()->model() ? search(*tree()->model(), QModelIndex(), name) : QModelIndex();
}

bool TourStage::isShown(const QString &name) const
{
    const QModelIndex index = feature(name);
    return index.isValid() && !tree()->isRowHidden(index.row(), index.parent());
}

QWidget *TourStage::editor() const
{
    if (!tree())
        return nullptr;
    const QList<QWidget *> children =
        tree()->viewport()->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *child : children) {
        if (child->isVisible())
            return child;
    }
    return nullptr;
}

QWidget *TourStage::openEditor(const QString &name)
{
    const QModelIndex index = feature(name);
    if (!index.isValid())
        return nullptr;
    TourHand::clickCell(tree(), index.siblingAtColumn(1));
    TourHand::waitUntil([this] { return editor() != nullptr; }, EditorPatience);
    return editor();
}

bool TourStage::showEditor(const QString &name)
{
    QWidget *open = openEditor(name);
    if (qobject_cast<QComboBox *>(open))
        TourHand::click(open);
    return open != nullptr;
}

void TourStage::leaveEditor()
{
    if (QWidget *list = QApplication::activePopupWidget())
        list->close();
    if (QWidget *open = editor())
        TourHand::key(open, Qt::Key_Escape);
}

bool TourStage::edit(const QString &name, const QString &text)
{
    QWidget *open = openEditor(name);
    if (!expect(open, QStringLiteral("no editor opens for %1").arg(name)))
        return false;
    if (auto *box = qobject_cast<QComboBox *>(open)) {
        if (!expect(TourHand::choose(box, text), QStringLiteral("%1 does not offer %2").arg(name, text)))
            return false;
    } else {
        TourHand::retype(open, text);
    }
    if (QWidget *stillOpen = editor())
        TourHand::key(stillOpen, Qt::Key_Return);
    TourHand::pause(100);
    return true;
}

QString TourStage::value(const QString &name) const
{
    QString text;
    host().values().read(host().focus().id(), name, &text);
    return text;
}

bool TourStage::becomes(const char *name, const char *expected)
{
    const bool same = TourHand::waitUntil([&] { return isSame(value(say(name)), say(expected)); }, ValuePatience);
    return expect(same, QStringLiteral("%1 is %2").arg(say(name), value(say(name))));
}

bool TourStage::isLogged(const QString &text) const
{
    const LogModel &log = m_window.log().log();
    for (int row = 0; row < log.rowCount(); ++row) {
        if (log.lineText(row).contains(text))
            return true;
    }
    return false;
}

bool TourStage::expect(bool holds, const QString &what)
{
    if (!holds && m_failure.isEmpty())
        m_failure = what;
    return holds;
}
