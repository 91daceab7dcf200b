// SPDX-License-Identifier: MIT
#include "tour/TourStage.h"

#include <QAction>
#include <QDockWidget>

#include "Host/HostContext.h"
#include "ParamterWnd/ParamterWnd.h"
#include "Viewer/ImageView.h"
#include "Viewer/LogModel.h"
#include "Viewer/LogView.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/ViewerWindow.h"
#include "tour/TourHand.h"

namespace {

constexpr int QueueTime = 50; // ms
constexpr int ValuePatience = 3000; // ms

bool isSame(const QString &value, const QString &expected)
{
    bool isNumber = false;
    const double number = expected.toDouble(&isNumber);
    return value == expected || (isNumber && value.toDouble(&isNumber) == number && isNumber);
}

} // namespace

TourStage::TourStage(ViewerWindow &window)
    : m_window(window), m_panel(window.panel()), m_page(m_panel, m_verdict), m_tree(m_panel, m_verdict)
{ }

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

void TourStage::settle()
{
    TourHand::waitUntil([this] { return !host().sessions().isAnnouncing(); });
    TourHand::pause(QueueTime); // for what the last event has queued
}

bool TourStage::reaches(const Device &device, DeviceTree::State state)
{
    const bool reached = TourHand::waitUntil([&] { return m_window.devices().state(device.id()) == state; });
    settle();
    return reached;
}

bool TourStage::open(const Device &device)
{
    const QWidget *before = m_panel.widget();
    pointAt(device, true);
    return expect(reaches(device, DeviceTree::State::Open), QStringLiteral("%1 does not open").arg(device.id()))
        && expect(TourHand::waitUntil([&] { return m_panel.widget() != before && m_tree.shownRows() > 0; }),
                  QStringLiteral("%1 gets no panel").arg(device.id()));
}

bool TourStage::leave(const Device &device)
{
    const QWidget *before = m_panel.widget();
    order(Command::CloseDevice);
    if (!expect(reaches(device, DeviceTree::State::Closed), QStringLiteral("%1 stays open").arg(device.id())))
        return false;
    pointAt(*simulated(false), false);
    return expect(TourHand::waitUntil([&] { return m_tree.shownRows() > 0 && m_panel.widget() != before; }),
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

bool TourStage::resizePanel(int width)
{
    auto *dock = m_window.findChild<QDockWidget *>(say("panelDock"));
    m_window.resizeDocks({dock}, {width}, Qt::Horizontal);
    TourHand::pause(200);
    return expect(qAbs(m_panel.widget()->width() - width) < 8,
                  QStringLiteral("the panel is %1 pixels wide").arg(m_panel.widget()->width()));
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
