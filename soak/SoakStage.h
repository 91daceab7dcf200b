// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QPoint>
#include <QSet>
#include <QString>

#include "soak/Dice.h"

class Device;
class FakeCamera;
class HostContext;
class QWidget;
class SimulatedDevice;
class SoakFiles;
class SoakRecord;
class ViewerWindow;
enum class Command;

/// Where a run takes place: the viewer's window, and what a person sees and reaches of it.
class SoakStage
{
public:
    /// All must outlive the stage.
    SoakStage(ViewerWindow &window, SoakRecord &record, Dice &dice, const SoakFiles &files);

    ViewerWindow &window() const { return m_window; }
    HostContext &host() const;
    SoakRecord &record() const { return m_record; }
    Dice &dice() const { return m_dice; }
    const SoakFiles &files() const { return m_files; }

    /// The panel with what surrounds it in its dock, and the other docks.
    QWidget &dock(const char *name) const;
    /// Every control below that a person can reach now, in a fixed order.
    QList<QWidget *> reachable(const QWidget &root) const;
    /// One of them; null when there is none.
    QWidget *anyReachable(const QWidget &root) const;
    /// Any place of the widget that can be seen.
    QPoint anyPlace(const QWidget &widget) const;
    /// The list or menu that is open, else a dialog; null without one.
    static QWidget *openAbove();

    /// The devices that can be unplugged.
    QList<SimulatedDevice *> simulated() const;
    /// From 0, sound, to 3, unplugged: the faults of a simulated device.
    void setFault(SimulatedDevice &device, int fault);
    bool isAnySilent() const { return !m_silent.isEmpty(); }
    /// The one on the network; null: there is none.
    FakeCamera *camera() const { return m_camera; }
    void setCamera(FakeCamera *camera) { m_camera = camera; }
    /// Lets all links be sound and quick, closes all devices and gives the window a size of its own.
    void rest();
    /// By its shortcut, or by its button of the tool bar; nothing happens when it is disabled.
    void order(Command command) const;
    void clickDevice(const Device &device, bool twice) const;

    /// Handles events until nothing is under way that ends by itself.
    void settle() const;
    /// What a person sees, of the panel and the list of devices, as text.
    QString look() const;
    /// The docks that are not where the window has put them, empty when all are.
    QString displacedDocks() const;

private:
    bool isBusy() const;
    /// Of all devices since they were opened.
    qint64 allAccesses() const;

    ViewerWindow &m_window;
    SoakRecord &m_record;
    Dice &m_dice;
    const SoakFiles &m_files;
    FakeCamera *m_camera = nullptr;
    QSet<SimulatedDevice *> m_silent; ///< do not answer
};
