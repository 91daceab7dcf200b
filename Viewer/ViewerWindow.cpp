// SPDX-License-Identifier: MIT
#include "Viewer/ViewerWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QSettings>
#include <QStatusBar>
#include <QToolBar>

#include <utility>

#include "Devices/DescriptionDevice.h"
#include "Host/HostContext.h"
#include "ParamterWnd/ParamterWnd.h"
#include "Viewer/DeviceTree.h"
#include "Viewer/DeviceViews.h"
#include "Viewer/DeviceWays.h"
#include "Viewer/FileDrop.h"
#include "Viewer/FrameStatus.h"
#include "Viewer/GlyphIcons.h"
#include "Viewer/HostSwitches.h"
#include "Viewer/ImageView.h"
#include "Viewer/LinkFaults.h"
#include "Viewer/LoadStatus.h"
#include "Viewer/LogModel.h"
#include "Viewer/LogView.h"
#include "Viewer/ProducersDialog.h"
#include "Viewer/SettingsCommands.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/WriteLogDock.h"

namespace {

constexpr int PanelMinimumWidth = 320;
constexpr int PanelMinimumHeight = 420;
constexpr int PanelWidth = 500;
constexpr int DeviceListWidth = 270;
constexpr int LogHeight = 150;
/// Cameras of these types get the pages of laser profilers.
constexpr const char *ProfilerTypeCodes = "profilerTypeCodes";
const QStringList ProfilerTypes{QStringLiteral("5")};
/// These get the pages of structured-light cameras.
constexpr const char *StructuredLightTypeCodes = "structuredLightTypeCodes";
const QStringList StructuredLightTypes{QStringLiteral("1")};
/// Panels of these devices come back as they were.
constexpr const char *ReturningDevices = "returningDevices";
const QString GeometryKey = QStringLiteral("Viewer/geometry");
const QString LayoutKey = QStringLiteral("Viewer/layout");

} // namespace

ViewerWindow::ViewerWindow(HostContext &context)
    : m_context(context), m_devices(new DeviceTree(context)), m_views(new DeviceViews(context, *m_devices)),
      m_status(new FrameStatus(m_views->image())), m_load(new LoadStatus(context)), m_log(new LogView),
      m_panel(new ParamterWnd)
{
    setObjectName(QStringLiteral("ViewerWindow"));
    setWindowIcon(glyphIcon(Glyph::Camera));
    setCentralWidget(m_views);
    m_panel->setProperty(ProfilerTypeCodes, ProfilerTypes);
    m_panel->setProperty(StructuredLightTypeCodes, StructuredLightTypes);
    statusBar()->addPermanentWidget(m_load);
    statusBar()->addPermanentWidget(m_status);
    m_load->hide();
    buildDocks();
    buildCommands();
    connectHost();
    useLanguage(m_context.language());
    retranslate();
    restoreLayout();
    adoptFocus();
    m_devices->setFocus();
}

ViewerWindow::~ViewerWindow()
{
    // Deleting the panel serves events of the host, which this window and its views are not to follow any more.
    for (const QObject *part :
         std::initializer_list<const QObject *>{&m_context.devices(), &m_context.focus(), &m_context.log(),
                                                &m_context.regions(), &m_context.deviceReturn()}) {
        part->disconnect(this);
        part->disconnect(m_views);
    }
    delete m_panel;
}

QDockWidget *ViewerWindow::addDock(const QString &name, Qt::DockWidgetArea area, QWidget *content)
{
    auto *dock = new QDockWidget(this);
    dock->setObjectName(name);
    dock->setWidget(content);
    addDockWidget(area, dock);
    return dock;
}

void ViewerWindow::buildDocks()
{
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    m_deviceDock = addDock(QStringLiteral("deviceDock"), Qt::LeftDockWidgetArea, m_devices);
    m_panelDock = addDock(QStringLiteral("panelDock"), Qt::RightDockWidgetArea, m_panel);
    m_logDock = addDock(QStringLiteral("logDock"), Qt::BottomDockWidgetArea, m_log);
    m_writeLogDock = new WriteLogDock(m_context.writeLog(), this);
    addDockWidget(Qt::BottomDockWidgetArea, m_writeLogDock);
    tabifyDockWidget(m_logDock, m_writeLogDock);
    m_writeLogDock->hide();
    m_panel->setMinimumSize(PanelMinimumWidth, PanelMinimumHeight);
    m_devices->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_devices, &QWidget::customContextMenuRequested, this, &ViewerWindow::showDeviceMenu);
    connect(m_devices, &DeviceTree::stepRequested, this, &ViewerWindow::takeNextStep);
    connect(m_devices, &DeviceTree::stateChanged, this, &ViewerWindow::adoptState);
}

void ViewerWindow::buildCommands()
{
    auto *toolBar = addToolBar(QString());
    toolBar->setObjectName(QStringLiteral("toolBar"));
    toolBar->setIconSize({22, 22});
    toolBar->setMovable(false);
    m_commands = new ViewerCommands(menuBar(), toolBar);
    m_commands->addViewToggles({m_deviceDock->toggleViewAction(), m_panelDock->toggleViewAction(),
                                m_logDock->toggleViewAction(), m_writeLogDock->toggleViewAction(),
                                toolBar->toggleViewAction()});
    m_commands->action(Command::ShowCommonTab)->setChecked(true);
    m_commands->action(Command::ShowAttributeTab)->setChecked(true);
    m_commands->action(Command::DefaultMode0)->setChecked(true);
    connect(m_commands, &ViewerCommands::triggered, this, &ViewerWindow::run);
    m_ways = std::make_unique<DeviceWays>(m_context, *m_devices, *m_commands->deviceMenu());
    new HostSwitches(m_context, *m_commands);
    new LinkFaults(*m_devices, *m_commands);
    m_settings = new SettingsCommands(m_context, *m_devices, *m_commands, this);
    connect(new FileDrop(this), &FileDrop::dropped, this, &ViewerWindow::take);
}

void ViewerWindow::connectHost()
{
    connect(&m_context.focus(), &HostFocus::changed, this, &ViewerWindow::adoptFocus);
    connect(m_views, &DeviceViews::pictureChanged, this, &ViewerWindow::showFormat);
    connect(m_views, &DeviceViews::contentChanged, this, &ViewerWindow::updateCommands);
    connect(&m_context.devices(), &KnownDevices::refreshingChanged, this, &ViewerWindow::adoptSearch,
            Qt::QueuedConnection); // after the list of found devices
    connect(&m_context.devices(), &KnownDevices::listChanged, this, &ViewerWindow::openPending);
    connect(&m_context.devices(), &KnownDevices::framesCounted, this, [this](const QString &id) {
        if (id == currentId())
            showFrameCounts();
    });
    connect(&m_context.deviceReturn(), &DeviceReturn::returningChanged, m_panel,
            [this](const QStringList &ids) { m_panel->setProperty(ReturningDevices, ids); });
    connect(m_panel, &ParamterWnd::written, &m_context,
            [this](const QString &device, const QString &feature, const QString &value, const QString &refusal) {
                m_context.writes().add(device, feature, value, refusal);
            });
    connect(&m_context.log(), &HostLog::lineAdded, this,
            [this](const QDateTime &time, const QString &module, const QString &message) {
                m_log->log().append(time, module, message);
            });
}

void ViewerWindow::run(Command command, bool checked)
{
    switch (command) {
    case Command::Refresh:
        return m_context.devices().refresh();
    case Command::Producers:
        return showProducers();
    case Command::OpenDevice:
        return m_context.sessions().openLater(currentId());
    case Command::CloseDevice:
        m_context.deviceReturn().giveUp(currentId());
        return m_context.sessions().close(currentId());
    case Command::OpenFile:
        return askForDescription();
    case Command::StartAcquisition:
        return startAcquisition();
    case Command::StopAcquisition:
        return m_context.sessions().stopAcquisition(currentId());
    case Command::Quit:
        close();
        return;
    case Command::ZoomFit:
        return image().zoomToFit();
    case Command::ZoomOriginal:
        return image().zoomToOriginal();
    case Command::ZoomIn:
        return image().zoomIn();
    case Command::ZoomOut:
        return image().zoomOut();
    case Command::ShowCommonTab:
        return m_panel->setPanelWidgetVisiable(checked);
    case Command::ShowAttributeTab:
        return m_panel->setAllDetailWidgetVisiable(checked);
    case Command::DisablePanel:
        return m_panel->setParamterViewDisable(currentId());
    case Command::ShowLoad:
        return m_load->setVisible(checked);
    case Command::DefaultMode0:
        return m_panel->setDefaultParameterWndMode(0);
    case Command::DefaultMode1:
        return m_panel->setDefaultParameterWndMode(1);
    case Command::English:
        return useLanguage(QStringLiteral("English"));
    case Command::Chinese:
        return useLanguage(QStringLiteral("Chinese"));
    case Command::About:
        return showAbout();
    default: // HostSwitches, LinkFaults and SettingsCommands do the others
        return;
    }
}

ImageView &ViewerWindow::image() const
{
    return m_views->image();
}

ImageView &ViewerWindow::regionView() const
{
    return m_views->regionView();
}

QString ViewerWindow::currentId() const
{
    const Device *device = m_devices->currentDevice();
    return device ? device->id() : QString();
}

void ViewerWindow::startAcquisition()
{
    if (m_context.sessions().startAcquisition(currentId()))
        image().zoomToFit();
}

void ViewerWindow::takeNextStep()
{
    for (Command step : {Command::StopAcquisition, Command::StartAcquisition, Command::OpenDevice}) {
        if (m_commands->action(step)->isEnabled())
            return m_commands->action(step)->trigger();
    }
}

void ViewerWindow::askForDescription()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Open Description File"), QString(),
                                                      tr("Camera descriptions (*.xml *.zip);;All files (*)"));
    if (!path.isEmpty())
        openDescription(path);
}

bool ViewerWindow::openDescription(const QString &path)
{
    auto device = std::make_unique<DescriptionDevice>(path);
    const QString id = device->id();
    if (!m_context.devices().device(id))
        m_context.devices().add(std::move(device));
    m_devices->select(id);
    return m_context.sessions().open(id);
}

void ViewerWindow::take(const QString &file)
{
    const QStringList descriptions{QStringLiteral("xml"), QStringLiteral("zip")};
    if (descriptions.contains(QFileInfo(file).suffix(), Qt::CaseInsensitive))
        openDescription(file);
    else
        m_settings->load(file);
}

void ViewerWindow::openWhenKnown(const QString &id)
{
    m_pendingId = id;
    openPending();
}

void ViewerWindow::openPending()
{
    if (m_pendingId.isEmpty() || !m_context.devices().device(m_pendingId))
        return;
    const QString id = std::exchange(m_pendingId, QString());
    m_devices->select(id);
    m_context.sessions().openLater(id);
}

void ViewerWindow::adoptSearch(bool searching)
{
    updateCommands();
    if (!searching && !m_pendingId.isEmpty())
        m_context.log().add(objectName(), tr("There is no device %1.").arg(m_pendingId));
}

void ViewerWindow::showDeviceMenu(const QPoint &position)
{
    const bool onDevice = m_devices->currentDevice() && m_devices->itemAt(position) == m_devices->currentItem();
    if (!onDevice)
        return;
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("contextMenu"));
    menu->addActions(m_commands->deviceActions() + m_ways->actions());
    connect(menu, &QMenu::aboutToHide, menu, &QObject::deleteLater);
    menu->popup(m_devices->viewport()->mapToGlobal(position));
}

void ViewerWindow::showProducers()
{
    auto *dialog = new ProducersDialog(m_context, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void ViewerWindow::showAbout()
{
    QMessageBox::about(this, tr("About"),
                       tr("<h3>Parameter Viewer %1</h3><p>Shows the features of GenICam cameras in the ParamterWnd "
                          "panel.</p><p>MIT licence</p>")
                           .arg(QCoreApplication::applicationVersion()));
}

void ViewerWindow::useLanguage(const QString &language)
{
    m_translators.use(language);
    m_context.setLanguage(language);
    m_context.focus().set(m_context.focus().id()); // the panel shows the level anew, which the new texts reset
    const bool english = language == QLatin1String("English");
    m_commands->action(english ? Command::English : Command::Chinese)->setChecked(true);
}

void ViewerWindow::adoptFocus()
{
    const QString id = currentId();
    m_views->showCurrent();
    m_cameraFormat.clear();
    if (m_devices->state(id) == DeviceTree::State::Acquiring)
        m_context.values().read(id, QStringLiteral("PixelFormat"), &m_cameraFormat);
    showFormat();
    showFrameCounts();
    updateCommands();
}

void ViewerWindow::showFrameCounts()
{
    const Device *device = m_devices->currentDevice();
    m_status->setFrameCounts(device && device->isOpen() ? device->frameCounts() : FrameCounts());
}

void ViewerWindow::showFormat()
{
    m_status->setPixelFormat(m_cameraFormat.isEmpty() ? QString() : m_views->pixelFormat(m_cameraFormat));
}

void ViewerWindow::adoptState(const QString &id)
{
    const DeviceTree::State state = m_devices->state(id);
    if (state == DeviceTree::State::Closed || state == DeviceTree::State::Lost)
        m_views->forgetFrame(id);
    if (id == currentId())
        adoptFocus();
}

void ViewerWindow::updateCommands()
{
    const Device *device = m_devices->currentDevice();
    const DeviceTree::State state = m_devices->state(currentId());
    const bool open = state == DeviceTree::State::Open || state == DeviceTree::State::Acquiring;
    const bool acquiring = state == DeviceTree::State::Acquiring;
    const bool hasImage = !image().imageSize().isEmpty();
    const std::pair<Command, bool> enabled[] = {
        {Command::Refresh, !m_context.devices().isRefreshing()},
        {Command::OpenDevice, device && !open && state != DeviceTree::State::Opening},
        {Command::CloseDevice,
         device && (open || state == DeviceTree::State::Opening || state == DeviceTree::State::Lost)},
        {Command::StartAcquisition, device && open && !acquiring && device->canAcquire()},
        {Command::StopAcquisition, acquiring},
        {Command::DisablePanel, device && open && device->kind() == Device::Kind::Camera},
        {Command::ZoomFit, hasImage},
        {Command::ZoomOriginal, hasImage},
        {Command::ZoomIn, hasImage},
        {Command::ZoomOut, hasImage},
    };
    for (const auto &[command, possible] : enabled)
        m_commands->action(command)->setEnabled(possible);
    statusBar()->showMessage(m_context.devices().isRefreshing() ? tr("Searching for devices...") : QString());
}

void ViewerWindow::retranslate()
{
    setWindowTitle(tr("Parameter Viewer"));
    m_deviceDock->setWindowTitle(tr("Devices"));
    m_panelDock->setWindowTitle(tr("Parameters"));
    m_logDock->setWindowTitle(tr("Log"));
    findChild<QToolBar *>(QStringLiteral("toolBar"))->setWindowTitle(tr("Tool Bar"));
    m_views->retranslate();
}

void ViewerWindow::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    if (event->type() == QEvent::WindowStateChange)
        m_context.automaticSearch().setPaused(isMinimized());
    QMainWindow::changeEvent(event);
}

void ViewerWindow::restoreLayout()
{
    resize(1280, 800);
    resizeDocks({m_deviceDock, m_panelDock}, {DeviceListWidth, PanelWidth}, Qt::Horizontal);
    resizeDocks({m_logDock}, {LogHeight}, Qt::Vertical);
    restoreGeometry(m_context.settings().value(GeometryKey).toByteArray());
    restoreState(m_context.settings().value(LayoutKey).toByteArray());
}

void ViewerWindow::closeEvent(QCloseEvent *event)
{
    if (m_settings->isBusy()) {
        event->ignore();
        return;
    }
    m_context.settings().setValue(GeometryKey, saveGeometry());
    m_context.settings().setValue(LayoutKey, saveState());
    QMainWindow::closeEvent(event);
}
