// SPDX-License-Identifier: MIT
#include "ParamterWnd/ParameterWidgetManager.h"

#include <chrono>
#include <utility>

#include <QApplication>
#include <QMutexLocker>
#include <QScopeGuard>
#include <QTimer>
#include <QVBoxLayout>

#include "PanelBase/Guarded.h"
#include "ParamterWidget/ParamterWidget.h"
#include "ParamterWnd/HostLink.h"
#include "ParamterWnd/PageSetLists.h"
#include "ParamterWnd/WindowForm.h"

using namespace std::chrono_literals;

namespace {

constexpr const char *Module = "ParameterWidgetManager";

constexpr int DeviceListOfHost = 1; ///< the source of the device-list events that the manager takes
constexpr int RegionMoved = 1;
constexpr const char *CardUsable = "4";
constexpr const char *Yes = "1";
constexpr const char *No = "0";

constexpr auto FirstLevelDelay = 1000ms;

bool isCameraReady(const std::string &camera)
{
    return HostCore::GetCameraInfo(camera, HostCore::CAM_INFO_READY) == Yes
        && HostCore::GetCameraInfo(camera, HostCore::CAM_INFO_OPENED) == Yes;
}

bool isAreaScan(const QString &typeCode)
{
    return typeCode != QLatin1String("1") && typeCode != QLatin1String("5");
}

void adoptAcquisition(ParamterWidget *panel, const std::string &acquisition)
{
    if (acquisition == Yes)
        panel->startAcquireOperation();
    else if (acquisition == No)
        panel->stopAcquireOperation();
    else
        return;
    panel->updateWidget(false);
}

/// To the widget that had it last, if a person could choose it now.
void giveFocus(ParamterWidget *panel)
{
    QWidget *const last = panel->focusWidget();
    const bool isUsable = last && last->isVisible() && last->isEnabled();
    (isUsable ? last : panel)->setFocus();
}

} // namespace

ParameterWidgetManager::ParameterWidgetManager(QWidget *parent)
    : QWidget(parent), m_defaultPanel(new ParamterWidget(this)), m_ui(std::make_unique<WindowForm>())
{
    m_ui->setupUi(this, "ParameterWidgetManager", QSize(400, 300));
    setWindowTitle(QCoreApplication::translate("ParameterWidgetManager", "Form"));
    if (parent)
        parent->installEventFilter(this);
    setCurParamWidget(m_defaultPanel);
    m_host = std::make_unique<HostLink>(this);
    qRegisterMetaType<QStringList>("QStringList");
    qRegisterMetaType<QSharedPointer<bool>>("QSharedPointer<bool>");
    connectHost();
    QTimer::singleShot(FirstLevelDelay, this, [this] { m_defaultPanel->updateAttributeLevel(); });
}

/// A host that unregisters may wait for a call that waits for this thread, and may serve what is queued meanwhile.
ParameterWidgetManager::~ParameterWidgetManager()
{
    m_cameraPanels.clear(); // the host may still move a region, which reaches the panels on no queue
    m_host->release(this);
    m_host.reset();
}

void ParameterWidgetManager::connectHost()
{
    // As an automatic connection, by a queue that also keeps the lists apart from the host's thread.
    const auto adoptList = [this, toGui = &m_host->toGui](int source, const QStringList &cards,
                                                          const QStringList &cameras,
                                                          const QSharedPointer<bool> &finishFlag) {
        toGui->call([=] { onDeviceListUpdate(source, cards, cameras, finishFlag); });
    };
    connect(&m_host->deviceList, &DeviceListUpdate::updateCams, this, adoptList, Qt::DirectConnection);
    connect(&m_host->focus, &FocusUpdate::focusChanged, this, &ParameterWidgetManager::onFoucusChanged);
    connect(&m_host->imageMode, &ImageModeUpdate::imageModeChanged, this, &ParameterWidgetManager::onImageModeUpdate);
    connect(&m_host->language, &LanguageUpdate::languageChanged, this, &ParameterWidgetManager::onLanguageChanged);
    connect(&m_host->import, &ImportUpdate::importUpdate, this, &ParameterWidgetManager::onImportChanged);
}

void ParameterWidgetManager::setCurParamWidget(ParamterWidget *panel)
{
    const bool hasFocus = isAncestorOf(QApplication::focusWidget());
    if (m_currentPanel && m_currentPanel != panel) // hiding the shown one would close its open editor
        m_currentPanel->hide();
    panel->show();
    m_ui->verticalLayout->addWidget(panel);
    m_currentPanel = panel;
    if (hasFocus && !panel->isAncestorOf(QApplication::focusWidget()))
        giveFocus(panel);
    panel->updateAttributeLevel();
}

void ParameterWidgetManager::onFoucusChanged(HostCore::FOCUS_TYPE type, QString id)
{
    ParamterWidget *panel = nullptr;
    if (type == HostCore::FOCUS_CAMERA)
        panel = m_cameraPanels.value(id);
    else if (type == HostCore::FOCUS_CARD)
        panel = m_cardPanels.value(id);
    setCurParamWidget(panel ? panel : m_defaultPanel);
}

void ParameterWidgetManager::onDeviceListUpdate(int source, QStringList cardList, QStringList camList,
                                                QSharedPointer<bool> finishPointer)
{
    const auto finish = qScopeGuard([&] {
        if (finishPointer)
            setFinished(*finishPointer);
    });
    if (source != DeviceListOfHost)
        return;
    bool cardOpened = false;
    if (!cardList.isEmpty())
        guarded(Module, [&] { cardOpened = updateCard(cardList.first()); });
    if (cardOpened)
        return;
    for (const QString &camera : camList)
        guarded(Module, [&] { updateCamera(camera); });
}

/// True when the card is newly open.
bool ParameterWidgetManager::updateCard(const QString &card)
{
    const std::string key = card.toStdString();
    if (HostCore::GetCardInfo(key, HostCore::CARD_INFO_STATE) != CardUsable)
        return false;
    if (HostCore::GetCardInfo(key, HostCore::CARD_INFO_OPEN) != Yes) {
        closePanel(card, m_cardPanels);
        return false;
    }
    if (m_cardPanels.contains(card))
        return false;
    ParamterWidget *const panel = createPanel();
    panel->setCard(true);
    openPanel(panel, card, m_cardPanels);
    return true;
}

void ParameterWidgetManager::updateCamera(const QString &camera)
{
    const std::string key = camera.toStdString();
    const std::string acquisition = HostCore::GetCameraInfo(key, HostCore::CAM_INFO_ACQUISITION);
    if (!isCameraReady(key)) {
        closePanel(camera, m_cameraPanels);
        onFoucusChanged(HostCore::FOCUS_CARD, QString());
        return;
    }
    if (!m_cameraPanels.contains(camera))
        openCamera(camera);
    // A host may list the camera again while it is asked here, also as closed.
    if (ParamterWidget *const panel = m_cameraPanels.value(camera))
        adoptAcquisition(panel, acquisition);
}

void ParameterWidgetManager::openCamera(const QString &camera)
{
    const QString typeCode =
        QString::fromStdString(HostCore::GetCameraInfo(camera.toStdString(), HostCore::CAM_INFO_TYPE_CODE));
    if (m_cameraPanels.contains(camera)) // listed again meanwhile
        return;
    ParamterWidget *const panel = createPanel();
    panel->setAreaScan(isAreaScan(typeCode));
    if (const QWidget *const window = parentWidget())
        panel->setPageSet(PageSetLists::pageSetOf(*window, typeCode));
    openPanel(panel, camera, m_cameraPanels);
}

/// A property that changes: it may be one of the lists by which the host chooses pages.
bool ParameterWidgetManager::eventFilter(QObject *window, QEvent *event)
{
    if (event->type() == QEvent::DynamicPropertyChange)
        guarded(Module, [&] { checkList(static_cast<QDynamicPropertyChangeEvent *>(event)->propertyName()); });
    return QWidget::eventFilter(window, event);
}

void ParameterWidgetManager::checkList(const QByteArray &property) const
{
    if (!PageSetLists::isList(property))
        return;
    QStringList lines = PageSetLists::faults(*parentWidget(), property);
    if (!m_cameraPanels.isEmpty())
        lines << QStringLiteral("%1 changes while cameras have panels: it counts for those that are opened from now on")
                     .arg(QString::fromLatin1(property));
    for (const QString &line : std::as_const(lines))
        logToHost(Module, line.toStdString());
}

ParamterWidget *ParameterWidgetManager::createPanel()
{
    auto *const panel = new ParamterWidget(this);
    // Without this it would appear together with a manager that is shown later.
    panel->hide();
    connect(panel, &ParamterWidget::written, this, &ParameterWidgetManager::written);
    return panel;
}

void ParameterWidgetManager::openPanel(ParamterWidget *panel, const QString &device, PanelMap &panels)
{
    panels.insert(device, panel); // before the host is asked for the nodes: it may list the device again meanwhile
    panel->setPanelWidgetVisiable(m_panelVisible);
    panel->setAllDetailWidgetVisiable(m_detailVisible);
    panel->initUI(device);
    if (const QWidget *const window = parentWidget())
        guarded(Module, [&] { m_keptPlaces.giveBack(*window, device, *panel); });
    panel->retranslate(m_language);
}

void ParameterWidgetManager::closePanel(const QString &device, PanelMap &panels)
{
    ParamterWidget *const panel = takeLocked(device, panels);
    if (!panel)
        return;
    if (const QWidget *const window = parentWidget())
        guarded(Module, [&] { m_keptPlaces.keep(*window, device, *panel); });
    panel->setParamterViewDisable();
    if (m_currentPanel == panel)
        m_currentPanel = nullptr;
    if (panel->isAncestorOf(QApplication::focusWidget()))
        setFocus(); // the next panel gets it
    panel->hide(); // two panels above each other would enlarge the host's window until the deletion
    panel->deleteLater();
}

ParamterWidget *ParameterWidgetManager::takeLocked(const QString &device, PanelMap &panels)
{
    const QMutexLocker lock(&m_mutex);
    return panels.take(device);
}

void ParameterWidgetManager::onLanguageChanged(int language)
{
    for (ParamterWidget *panel : allPanels())
        panel->retranslate(language);
    m_language = language;
}

void ParameterWidgetManager::onImageModeUpdate(std::string id, int mode)
{
    if (ParamterWidget *const panel = m_cameraPanels.value(QString::fromStdString(id)))
        panel->imageModeChangedUpdate(mode);
}

void ParameterWidgetManager::onImportChanged(QString id)
{
    if (ParamterWidget *const panel = m_cameraPanels.value(id))
        panel->updateWidget(true);
}

void ParameterWidgetManager::onROIPosChanged(std::string id, int leftX, int leftY, int rightX, int rightY,
                                             int operation, int &, bool &)
{
    ParamterWidget *const panel = m_cameraPanels.value(QString::fromStdString(id));
    if (operation == RegionMoved && panel)
        panel->setDrawRoiPos(leftX, leftY, rightX, rightY);
}

void ParameterWidgetManager::setPanelWidgetVisiable(bool visible)
{
    for (ParamterWidget *panel : allPanelsLocked())
        panel->setPanelWidgetVisiable(visible);
    m_panelVisible = visible;
    showWindowIfTabs();
}

void ParameterWidgetManager::setAllDetailWidgetVisiable(bool visible)
{
    for (ParamterWidget *panel : allPanelsLocked())
        panel->setAllDetailWidgetVisiable(visible);
    m_detailVisible = visible;
    showWindowIfTabs();
}

void ParameterWidgetManager::setParamterViewDisable(QString id)
{
    if (ParamterWidget *const panel = m_cameraPanels.value(id))
        panel->setParamterViewDisable();
}

void ParameterWidgetManager::setDefaultParamterWidgetMode(int) { }

QList<ParamterWidget *> ParameterWidgetManager::allPanels() const
{
    return m_cameraPanels.values() + m_cardPanels.values() << m_defaultPanel;
}

/// A copy, so that the panels can call the host while the mutex is free.
QList<ParamterWidget *> ParameterWidgetManager::allPanelsLocked()
{
    const QMutexLocker lock(&m_mutex);
    return allPanels();
}

void ParameterWidgetManager::showWindowIfTabs()
{
    if (QWidget *const window = parentWidget())
        window->setVisible(m_panelVisible || m_detailVisible);
}
