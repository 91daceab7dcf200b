// SPDX-License-Identifier: MIT
#include <stdexcept>

#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QTabWidget>

#include "CuratedCamera.h"
#include "FeatureTree/FeatureTreeView.h"
#include "ParamterWidget/ParamterWidget.h"
#include "ParamterWnd/ParamterWnd.h"
#include "ToolPage/SwitchButton.h"
#include "support/FakeHostCore.h"
#include "support/FatalMessages.h"
#include "support/Rows.h"

namespace {

QStringList forEachListener(const char *action)
{
    return words("DeviceList Focus Lang ROI ImageMode Import")
        .replaceInStrings(QRegularExpression("^(.*)$"_s), QLatin1String(action) + "\\1UpdateListener"_s);
}

const QStringList Registrations = forEachListener("Register") + forEachListener("UnRegister");

const std::vector<std::string> Cameras = {"areaScan", "profiler", "structuredLight"};

/// A camera of each page set and a card, in a window whose host throws out of some of its functions.
class Panels
{
public:
    explicit Panels(const QStringList &functions)
    {
        messages.allow("^This plugin does not support"_s);
        host.reset();
        GenApi::INodeMap *const maps[] = {areaScan.map, profiler.map, structuredLight.map};
        for (std::size_t camera = 0; camera < Cameras.size(); ++camera) {
            for (int item : {HostCore::CAM_INFO_OPENED, HostCore::CAM_INFO_READY})
                host.setCameraInfo(Cameras[camera], item, "1");
            host.setCameraInfo(Cameras[camera], HostCore::CAM_INFO_TYPE_CODE, Cameras[camera]);
            host.setNodeMap(HostCore::FOCUS_CAMERA, Cameras[camera], maps[camera]);
        }
        host.setNodeValue("areaScan", "Width", "1280");
        host.setNodeValue("areaScan", "Height", "1024");
        host.setNodeValue("structuredLight", "Left2DImage", "True");
        host.setCardInfo("card", HostCore::CARD_INFO_STATE, "4");
        host.setCardInfo("card", HostCore::CARD_INFO_OPEN, "1");
        host.setNodeMap(HostCore::FOCUS_CARD, "card", areaScan.map);
        host.setCallHook([functions](const QString &line) {
            if (functions.contains(line.section(QLatin1Char('('), 0, 0)))
                throw std::runtime_error("no host");
        });
        window = std::make_unique<ParamterWnd>();
        window->setProperty("profilerTypeCodes", words("profiler"));
        window->setProperty("structuredLightTypeCodes", words("structuredLight"));
        window->show();
    }
    ~Panels() { host.setCallHook({}); }

    void list(const std::vector<std::string> &cards, const std::vector<std::string> &cameras)
    {
        if (host.listeners.deviceList)
            host.listeners.deviceList->OnUpdate(1, cards, cameras);
    }

    void open()
    {
        list({"card"}, {});
        list({"card"}, Cameras);
    }

    /// The panel of a camera, in front; null when there is none.
    ParamterWidget *show(const std::string &device)
    {
        if (host.listeners.focus)
            host.listeners.focus->OnUpdate(HostCore::FOCUS_CAMERA, device);
        for (ParamterWidget *panel : window->findChildren<ParamterWidget *>()) {
            if (panel->deviceName().toStdString() == device && !panel->isHidden())
                return panel;
        }
        return nullptr;
    }

    /// Every control of every camera, every event and every timer.
    void useAll()
    {
        for (const std::string &camera : Cameras) {
            if (ParamterWidget *const panel = show(camera)) {
                useControls(panel);
                raiseEvents(camera);
                panel->onTriggerTimeout();
                panel->onRealUpdateTimerTimeout();
            }
        }
    }

    FakeHostCore &host = FakeHostCore::instance();
    FatalMessages messages;
    CuratedCamera areaScan;
    CuratedCamera profiler{profilerFeatures()};
    CuratedCamera structuredLight{structuredLightFeatures()};
    std::unique_ptr<ParamterWnd> window;

private:
    static void useControls(QWidget *panel)
    {
        for (QTabWidget *tabs : panel->findChildren<QTabWidget *>()) {
            for (int tab = 0; tab < tabs->count(); ++tab)
                tabs->setCurrentIndex(tab);
        }
        for (QAbstractButton *button : panel->findChildren<QAbstractButton *>())
            button->click();
        for (SwitchButton *button : panel->findChildren<SwitchButton *>())
            button->click(); // off again
        for (QComboBox *list : panel->findChildren<QComboBox *>())
            list->setCurrentIndex((list->currentIndex() + 1) % qMax(1, list->count()));
        for (QAbstractSpinBox *spinBox : panel->findChildren<QAbstractSpinBox *>()) {
            spinBox->stepUp();
            Q_EMIT spinBox->editingFinished();
        }
    }

    void raiseEvents(const std::string &device)
    {
        int region = 1;
        bool status = true;
        for (const char *acquisition : {"1", "0"}) {
            host.setCameraInfo(device, HostCore::CAM_INFO_ACQUISITION, acquisition);
            list({}, {device});
        }
        if (host.listeners.roi)
            host.listeners.roi->OnUpdate(device, 0, 0, 64, 64, 1, region, status, 0, 0);
        if (host.listeners.import)
            host.listeners.import->OnUpdate(device);
        if (host.listeners.language)
            host.listeners.language->OnUpdate("Chinese");
    }
};

} // namespace

/// No exception of the host leaves the panel, and it costs no more than the call that it came from.
class tst_ThrowingHost : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// Functions fail together where no call of the others depends on their answer.
    void nothingLeavesThePanel_data()
    {
        QTest::addColumn<QStringList>("functions");
        QTest::newRow("registering") << forEachListener("Register");
        QTest::newRow("unregistering") << forEachListener("UnRegister");
        for (const char *functions : {"GetCameraInfo", "GetAttrNodeMap", "GetCameraNodeValue", "SetCameraNodeValue",
                                      "DrawROI", "GetCardInfo GetParamterInfo", "VLogInfo",
                                      "SetCameraInfo SetParamterInfo RomoveROI SetROIPos StartGrab SetCameraImageMode"
                                      " SetSLImageShowMode NotifyCorrection"})
            QTest::newRow(functions) << words(functions);
    }

    void nothingLeavesThePanel()
    {
        QFETCH(QStringList, functions);
        try {
            Panels panels(functions);
            panels.areaScan.port.writeFault = MemoryPort::Fault::Refused;
            panels.open();
            checkTree(panels.show("areaScan"), functions);
            if (!Registrations.contains(functions.first()))
                panels.useAll();
            panels.window.reset();
            for (const QString &function : std::as_const(functions))
                QTRY_VERIFY2(!panels.host.callsTo(function).isEmpty(), // on a thread of its own, maybe
                             qPrintable(function + " is not called"_s));
            QCOMPARE(panels.host.callsTo(Registrations).size(), 12);
        } catch (const std::exception &) {
            QFAIL("the exception left the panel");
        }
    }

    /// A refusal is reported and rolled back, also when the report is what fails.
    void refusedWritesRollBack()
    {
        Panels panels(words("VLogInfo"));
        panels.open();
        ParamterWidget *const panel = panels.show("areaScan");
        auto *const field = panel->findChild<QWidget *>("Width"_s)->findChild<QSpinBox *>();
        const int before = field->value();
        panels.areaScan.port.writeFault = MemoryPort::Fault::Refused;
        panels.host.clearCalls();
        field->selectAll();
        QTest::keyClicks(field, "640"_s);
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(panels.host.callsTo("VLogInfo"_s).size(), 1);
        QCOMPARE(field->value(), before);
    }

private:
    /// The tree is there and can be filtered.
    static void checkTree(const ParamterWidget *panel, const QStringList &functions)
    {
        QCOMPARE(panel == nullptr,
                 functions.contains("GetCameraInfo"_s) || functions.contains("RegisterDeviceListUpdateListener"_s));
        if (!panel)
            return;
        const auto *const view = panel->findChild<FeatureTreeView *>();
        QCOMPARE(view->model() == nullptr, functions.contains("GetAttrNodeMap"_s));
        if (!view->model())
            return;
        const auto isShown = [view](const char *feature) {
            const QModelIndexList found = view->model()->match(view->model()->index(0, 0), Qt::DisplayRole,
                                                               QLatin1String(feature), 1, Qt::MatchRecursive);
            return !found.isEmpty() && !view->isRowHidden(found.first().row(), found.first().parent());
        };
        QVERIFY(isShown("ExposureTime"));
        panel->findChild<QLineEdit *>("edit_search"_s)->setText("Width"_s);
        QVERIFY(isShown("Width") && !isShown("ExposureTime"));
    }
};

QTEST_MAIN(tst_ThrowingHost)
#include "tst_ThrowingHost.moc"
