// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <QString>

class Device;
class DeviceTree;
class HostContext;
class QAction;
class QMenu;
struct DeviceRoute;
struct FoundDevice;

/// What menus offer for the selected device beside the commands: the ways to a camera that was found more than once,
/// and the cards that its driver has while it is open.
class DeviceWays : public QObject
{
    Q_OBJECT

public:
    /// Adds what there is to the end of the menu whenever it is shown. All three must outlive this.
    DeviceWays(HostContext &context, DeviceTree &devices, QMenu &deviceMenu);
    ~DeviceWays() override;

    /// For another menu. They go with the next call, and when the device menu is shown.
    QList<QAction *> actions();
    /// How a camera is reached, for people.
    static QString nameOf(const DeviceRoute &route);

private:
    void addRoutes(const FoundDevice &camera);
    void addModules(const Device &camera);
    void choose(const FoundDevice &camera, const QString &route);
    void openModule(const QString &camera, const QString &module);
    QAction *separator();

    HostContext &m_context;
    DeviceTree &m_devices;
    QMenu *m_routes; ///< empty for most devices
    QList<QAction *> m_actions; ///< of the last call
};
