// SPDX-License-Identifier: MIT
#include "Viewer/DeviceWays.h"

#include <QActionGroup>
#include <QMenu>

#include "Devices/MergedFinder.h"
#include "Host/HostContext.h"
#include "Viewer/DeviceTree.h"
#include "Viewer/GlyphIcons.h"

namespace {

/// Without a mnemonic.
QString inMenu(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

/// What a driver calls a module of its camera.
QString moduleName(const QString &name)
{
    const QString stream = QStringLiteral("stream ");
    if (name == QLatin1String("device module"))
        return DeviceWays::tr("device module");
    return name.startsWith(stream) ? DeviceWays::tr("stream %1").arg(name.mid(stream.size())) : name;
}

} // namespace

DeviceWays::DeviceWays(HostContext &context, DeviceTree &devices, QMenu &deviceMenu)
    : m_context(context), m_devices(devices), m_routes(new QMenu(&deviceMenu))
{
    m_routes->setObjectName(QStringLiteral("routeMenu"));
    connect(&deviceMenu, &QMenu::aboutToShow, this,
            [this, menu = &deviceMenu] { menu->addActions(actions()); }); // those of before are gone
}

DeviceWays::~DeviceWays() = default;

QString DeviceWays::nameOf(const DeviceRoute &route)
{
    return route.name == BuiltInRoute ? tr("Built-in search") : route.name;
}

QList<QAction *> DeviceWays::actions()
{
    m_actions.removeAll(m_routes->menuAction());
    for (QWidget *menu : m_routes->menuAction()->associatedWidgets())
        menu->removeAction(m_routes->menuAction());
    qDeleteAll(m_actions);
    m_actions.clear();
    m_routes->clear();
    const Device *const device = m_devices.currentDevice();
    if (!device)
        return {};
    const FoundDevice *const found = m_context.devices().finding(device->id());
    if (found && found->routes.size() > 1)
        addRoutes(*found);
    if (m_context.devices().isReady(device->id()))
        addModules(*device);
    return m_actions;
}

QAction *DeviceWays::separator()
{
    auto *action = new QAction(this);
    action->setSeparator(true);
    return action;
}

void DeviceWays::addRoutes(const FoundDevice &camera)
{
    delete m_routes->findChild<QActionGroup *>(); // of before
    auto *group = new QActionGroup(m_routes);
    for (const DeviceRoute &route : camera.routes) {
        QAction *const action = m_routes->addAction(inMenu(nameOf(route)));
        group->addAction(action);
        action->setCheckable(true);
        action->setChecked(route.id == camera.id);
        connect(action, &QAction::triggered, this, [this, camera, id = route.id] { choose(camera, id); });
    }
    m_routes->setTitle(tr("Reach T&hrough"));
    m_routes->setEnabled(m_context.devices().state(camera.id) == KnownDevices::State::Closed);
    m_actions << separator() << m_routes->menuAction();
}

void DeviceWays::addModules(const Device &camera)
{
    const std::vector<FoundDevice> modules = camera.modules();
    if (!modules.empty())
        m_actions << separator();
    for (const FoundDevice &module : modules) {
        auto *action = new QAction(glyphIcon(Glyph::Card), tr("Open %1").arg(inMenu(moduleName(module.model))), this);
        action->setToolTip(module.name);
        connect(action, &QAction::triggered, this,
                [this, camera = camera.id(), module = module.id] { openModule(camera, module); });
        m_actions << action;
    }
}

void DeviceWays::choose(const FoundDevice &camera, const QString &route)
{
    if (route == camera.id)
        return;
    m_context.deviceReturn().giveUp(camera.id); // it would stay listed for its return
    m_context.producers().chooseRoute(cameraKey(camera), route);
    m_context.devices().refreshAnew();
}

void DeviceWays::openModule(const QString &camera, const QString &module)
{
    m_context.cameraModules().open(camera, module);
    m_devices.select(module);
}
