// SPDX-License-Identifier: MIT
#include <stdexcept>

#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QTabWidget>

#include "CuratedCamera.h"
#include "FeatureTree/FeatureTreeView.h"
#include "FindRow.h"
#include "ManagerFixture.h"
#include "ToolPage/SwitchButton.h"

namespace {

QStringList forEachListener(const char *action)
{
    return words("DeviceList Focus Lang ROI ImageMode Import")
        .replaceInStrings(QRegularExpression("^(.*)$"_s), QLatin1String(action) + "\\1UpdateListener"_s);
}

const QStringList Registrations = forEachListener("Register") + forEachListener("UnRegister");

const std::vector<std::string> Cameras = {"areaScan", "profiler", "structuredLight"};

} // namespace

/// No exception of the host leaves the panel, and it costs no more than the call that it came from.
class tst_ThrowingHost : public ManagerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        m_host.setCallHook({});
        end();
        m_areaScan.reset();
    }

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
            open(functions);
            m_areaScan->port.writeFault = MemoryPort::Fault::Refused;
            checkTree(show("areaScan"), functions);
            if (!Registrations.contains(functions.first()))
                useAll();
            m_window.reset();
            for (const QString &function : std::as_const(functions))
                QTRY_VERIFY2(!m_host.callsTo(function).isEmpty(), // on a thread of its own, maybe
                             qPrintable(function + " is not called"_s));
            QCOMPARE(m_host.callsTo(Registrations).size(), 12);
        } catch (const std::exception &) {
            QFAIL("the exception left the panel");
        }
    }

    /// A refusal is reported and rolled back, also when the report is what fails.
    void refusedWritesRollBack()
    {
        open({"VLogInfo"_s});
        ParamterWidget *const panel = show("areaScan");
        auto *const field = panel->findChild<QWidget *>("Width"_s)->findChild<QSpinBox *>();
        const int before = field->value();
        m_areaScan->port.writeFault = MemoryPort::Fault::Refused;
        m_host.clearCalls();
        field->selectAll();
        QTest::keyClicks(field, "640"_s);
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(m_host.callsTo("VLogInfo"_s).size(), 1);
        QCOMPARE(field->value(), before);
    }

private:
    /// A camera of each page set and a card, in a window whose host throws out of some of its functions.
    void open(const QStringList &functions)
    {
        start();
        m_window.reset();
        m_host.clearCalls();
        m_messages->allow("^This plugin does not support"_s);
        m_areaScan = std::make_unique<CuratedCamera>();
        GenApi::INodeMap *const maps[] = {m_areaScan->map, m_profiler.map, m_structuredLight.map};
        for (std::size_t camera = 0; camera < Cameras.size(); ++camera) {
            setCamera(Cameras[camera], true);
            m_host.setCameraInfo(Cameras[camera], HostCore::CAM_INFO_TYPE_CODE, Cameras[camera]);
            m_host.setNodeMap(HostCore::FOCUS_CAMERA, Cameras[camera], maps[camera]);
        }
        m_host.setNodeValue("areaScan", "Width", "1280");
        m_host.setNodeValue("areaScan", "Height", "1024");
        m_host.setNodeValue("structuredLight", "Left2DImage", "True");
        setCard("card", true);
        m_host.setCallHook([functions](const QString &line) {
            if (functions.contains(line.section(QLatin1Char('('), 0, 0)))
                throw std::runtime_error("no host");
        });
        m_window = std::make_unique<ParamterWnd>();
        m_window->setProperty("profilerTypeCodes", words("profiler"));
        m_window->setProperty("structuredLightTypeCodes", words("structuredLight"));
        m_window->show();
        if (m_host.listeners.deviceList) {
            sendDeviceList({"card"}, {});
            sendDeviceList({"card"}, Cameras);
        }
    }

    /// The panel of a camera, in front; null when there is none.
    ParamterWidget *show(const std::string &device)
    {
        if (m_host.listeners.focus)
            sendFocus(HostCore::FOCUS_CAMERA, device);
        ParamterWidget *const panel = panelOf(device);
        return panel && !panel->isHidden() ? panel : nullptr;
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
            m_host.setCameraInfo(device, HostCore::CAM_INFO_ACQUISITION, acquisition);
            if (m_host.listeners.deviceList)
                sendDeviceList({}, {device});
        }
        if (m_host.listeners.roi)
            m_host.listeners.roi->OnUpdate(device, 0, 0, 64, 64, 1, region, status, 0, 0);
        if (m_host.listeners.import)
            m_host.listeners.import->OnUpdate(device);
        if (m_host.listeners.language)
            m_host.listeners.language->OnUpdate("Chinese");
    }

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
            const QModelIndex row = findRow(*view->model(), feature);
            return row.isValid() && !view->isRowHidden(row.row(), row.parent());
        };
        QVERIFY(isShown("ExposureTime"));
        panel->findChild<QLineEdit *>("edit_search"_s)->setText("Width"_s);
        QVERIFY(isShown("Width") && !isShown("ExposureTime"));
    }

    std::unique_ptr<CuratedCamera> m_areaScan;
    CuratedCamera m_profiler{profilerFeatures()};
    CuratedCamera m_structuredLight{structuredLightFeatures()};
};

QTEST_MAIN(tst_ThrowingHost)
#include "tst_ThrowingHost.moc"
