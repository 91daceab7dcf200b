// SPDX-License-Identifier: MIT
#include <atomic>
#include <stdexcept>
#include <thread>

#include <QComboBox>
#include <QLineEdit>
#include <QTabWidget>
#include <QToolButton>
#include <QtTest>

#include "FeatureTree/FeatureTreeView.h"
#include "FeatureTree/TreeModel.h"
#include "ManagerFixture.h"
#include "ParamterWnd/ParameterWidgetManager.h"
#include "ToolPage/SelectedButton.h"

class tst_ParameterWidgetManager : public ManagerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }
    void cleanup() { end(); }

    void listenersAreRegisteredInOrder();
    void focus_data();
    void focus();
    void otherSourcesAreIgnored();
    void newCardEndsTheEvent();
    void notReadyCameras_data();
    void notReadyCameras();
    void removingTheShownPanel();
    void unlistedCamerasStay();
    void oneKeyForCardAndCamera();
    void areaScanFlag();
    void acquisition_data();
    void acquisition();
    void newPanelsStayHidden();
    void languageReachesAllPanels();
    void unknownKeysDoNothing();
    void defaultPanelTakesTheStoredLevel();
    void keyboardFocusOutlivesOtherPanels();
    void failingHostNeverKeepsTheHostWaiting();
    void deviceListFromAHostThread();
    void listedAgainMeanwhile_data();
    void listedAgainMeanwhile();
};

void tst_ParameterWidgetManager::listenersAreRegisteredInOrder()
{
    const auto registrations = [this](const QString &prefix) {
        QString names =
            m_host.calls().filter(QRegularExpression(QStringLiteral("^%1").arg(prefix))).join(QLatin1Char(' '));
        return names.remove(prefix).remove(QStringLiteral("UpdateListener()"));
    };
    QCOMPARE(registrations(QStringLiteral("Register")), QStringLiteral("DeviceList Focus Lang ROI ImageMode Import"));
    m_window.reset();
    QCOMPARE(registrations(QStringLiteral("UnRegister")), QStringLiteral("Focus DeviceList Lang ROI ImageMode Import"));
    QVERIFY(!m_host.listeners.focus && !m_host.listeners.deviceList && !m_host.listeners.language);
    QVERIFY(!m_host.listeners.roi && !m_host.listeners.imageMode && !m_host.listeners.import);
}

void tst_ParameterWidgetManager::focus_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("id");
    QTest::addColumn<QString>("device");
    QTest::newRow("camera") << 3 << QByteArray("相机") << QStringLiteral("相机");
    QTest::newRow("card") << 2 << QByteArray("card") << QStringLiteral("card");
    QTest::newRow("camera as card") << 2 << QByteArray("相机") << QString();
    QTest::newRow("card as camera") << 3 << QByteArray("card") << QString();
    QTest::newRow("unknown type") << 1 << QByteArray("相机") << QString();
    QTest::newRow("unknown key") << 3 << QByteArray("other") << QString();
    QTest::newRow("other case") << 2 << QByteArray("Card") << QString();
    QTest::newRow("empty key") << 3 << QByteArray() << QString();
}

void tst_ParameterWidgetManager::focus()
{
    QFETCH(int, type);
    QFETCH(QByteArray, id);
    setCamera("相机", true);
    setCard("card", true);
    sendDeviceList({"card"}, {});
    sendDeviceList({"card"}, {"相机"});
    sendFocus(3, "相机");
    QCOMPARE(shown(), QStringLiteral("相机"));
    sendFocus(type, id.toStdString());
    QTEST(shown(), "device");
    sendFocus(type, id.toStdString());
    QTEST(shown(), "device");
}

void tst_ParameterWidgetManager::otherSourcesAreIgnored()
{
    setCamera("cam", true);
    m_host.clearCalls();
    for (int source : {0, 2, -1})
        sendDeviceList({}, {"cam"}, source);
    QCOMPARE(panels().size(), 1);
    QCOMPARE(m_host.calls(), QStringList());
}

void tst_ParameterWidgetManager::newCardEndsTheEvent()
{
    setCamera("cam", true);
    setCard("card", true);
    sendDeviceList({"card", "second card"}, {"cam"});
    QVERIFY(panelOf(QStringLiteral("card"), true));
    QVERIFY(!panelOf(QStringLiteral("cam")));
    sendDeviceList({"card"}, {"cam"});
    QVERIFY(panelOf(QStringLiteral("cam")));
    QCOMPARE(panels().size(), 3);
}

void tst_ParameterWidgetManager::notReadyCameras_data()
{
    QTest::addColumn<QByteArray>("opened");
    QTest::addColumn<QByteArray>("ready");
    QTest::addColumn<bool>("stays");
    QTest::newRow("both") << QByteArray("1") << QByteArray("1") << true;
    QTest::newRow("not opened") << QByteArray("0") << QByteArray("1") << false;
    QTest::newRow("not ready") << QByteArray("1") << QByteArray("0") << false;
    QTest::newRow("unknown texts") << QByteArray("1 ") << QByteArray("yes") << false;
    QTest::newRow("nothing known") << QByteArray() << QByteArray() << false;
}

/// The view goes to the default panel even if another device's panel was shown.
void tst_ParameterWidgetManager::notReadyCameras()
{
    QFETCH(QByteArray, opened);
    QFETCH(QByteArray, ready);
    QFETCH(bool, stays);
    setCamera("cam", true);
    setCamera("other", true);
    sendDeviceList({}, {"cam", "other"});
    sendFocus(3, "other");

    m_host.setCameraInfo("cam", HostCore::CAM_INFO_OPENED, opened.toStdString());
    m_host.setCameraInfo("cam", HostCore::CAM_INFO_READY, ready.toStdString());
    sendDeviceList({}, {"other", "cam"});
    QCOMPARE(shown(), stays ? QStringLiteral("other") : QString());
    QTRY_COMPARE(panelOf(QStringLiteral("cam")) != nullptr, stays);
    QVERIFY(panelOf(QStringLiteral("other")));

    sendFocus(3, "other");
    setCamera("never opened", false);
    sendDeviceList({}, {"never opened"});
    QCOMPARE(shown(), QString());
}

void tst_ParameterWidgetManager::removingTheShownPanel()
{
    setCard("card", true);
    m_host.setCardInfo("card", HostCore::CARD_INFO_STATE, "3");
    sendDeviceList({"card"}, {});
    QCOMPARE(panels().size(), 1);
    m_host.setCardInfo("card", HostCore::CARD_INFO_STATE, "4");
    sendDeviceList({"card"}, {});
    sendFocus(2, "card");
    QCOMPARE(shown(), QStringLiteral("card"));
    setCard("card", false);
    setCamera("cam", true);
    sendDeviceList({"card"}, {"cam"}); // goes on to the cameras
    QTRY_COMPARE(shown(), QStringLiteral("0 panels are visible"));
    sendFocus(2, "card");
    QCOMPARE(shown(), QString());

    sendFocus(3, "cam");
    QCOMPARE(shown(), QStringLiteral("cam"));
    setCamera("cam", false);
    sendDeviceList({}, {"cam"});
    QCOMPARE(shown(), QString()); // also before the removed panel is deleted
    QTRY_COMPARE(panels().size(), 1);
    QCOMPARE(shown(), QString());
}

void tst_ParameterWidgetManager::unlistedCamerasStay()
{
    setCamera("cam", true);
    sendDeviceList({}, {"cam"});
    ParamterWidget *const panel = panelOf(QStringLiteral("cam"));
    sendDeviceList({}, {});
    sendDeviceList({}, {"cam"});
    QCOMPARE(panelOf(QStringLiteral("cam")), panel);
    QCOMPARE(panels().size(), 2);
}

void tst_ParameterWidgetManager::oneKeyForCardAndCamera()
{
    setCard("device", true);
    setCamera("device", true);
    sendDeviceList({"device"}, {});
    sendDeviceList({"device"}, {"device"});
    QCOMPARE(panels().size(), 3);
    sendFocus(2, "device");
    QVERIFY(panelOf(QStringLiteral("device"), true)->isVisible());
    sendFocus(3, "device");
    QVERIFY(panelOf(QStringLiteral("device"), false)->isVisible());
    QVERIFY(!panelOf(QStringLiteral("device"), true)->isVisible());
    m_window->setParamterViewDisable(QStringLiteral("other"));
    m_window->setParamterViewDisable(QStringLiteral("device")); // concerns cameras only
    for (bool card : {false, true}) {
        const auto *tree = panelOf(QStringLiteral("device"), card)->findChild<FeatureTreeView *>();
        QCOMPARE(qobject_cast<TreeModel *>(tree->model())->dataDisabled, !card);
    }
}

void tst_ParameterWidgetManager::areaScanFlag()
{
    const std::pair<const char *, bool> areaScanOfType[] = {
        {"1", false}, {"5", false}, {"4", true}, {"15", true}, {"", true}};
    for (const auto &[type, areaScan] : areaScanOfType) {
        const std::string key = std::string("cam") + type;
        setCamera(key, true);
        m_host.setCameraInfo(key, HostCore::CAM_INFO_TYPE_CODE, type);
        sendDeviceList({}, {key});
        QCOMPARE(panelOf(QString::fromStdString(key))->isAreaScan(), areaScan);
    }
}

void tst_ParameterWidgetManager::acquisition_data()
{
    QTest::addColumn<QList<QByteArray>>("states");
    QTest::addColumn<bool>("unlocked");
    using States = QList<QByteArray>;
    QTest::newRow("started") << States({"1"}) << false;
    QTest::newRow("started and stopped") << States({"1", "0"}) << true;
    QTest::newRow("unknown text changes nothing") << States({"1", "stopped", ""}) << false;
    QTest::newRow("never told") << States({""}) << true;
}

void tst_ParameterWidgetManager::acquisition()
{
    QFETCH(QList<QByteArray>, states);
    setCamera("cam", true);
    for (const QByteArray &state : states) {
        m_host.setCameraInfo("cam", HostCore::CAM_INFO_ACQUISITION, state.toStdString());
        sendDeviceList({}, {"cam"});
    }
    QTEST(panelOf(QStringLiteral("cam"))->findChild<SelectedButton *>()->isEnabled(), "unlocked");
}

void tst_ParameterWidgetManager::newPanelsStayHidden()
{
    m_window->hide();
    setCamera("cam", true);
    sendDeviceList({}, {"cam"});
    m_window->show();
    QCOMPARE(shown(), QString());
}

void tst_ParameterWidgetManager::languageReachesAllPanels()
{
    const auto buttonWidths = [this] {
        QList<int> widths;
        for (ParamterWidget *panel : panels())
            widths << panel->findChild<QToolButton *>(QStringLiteral("toolButton"))->width();
        return widths;
    };
    m_host.listeners.language->OnUpdate("中文");
    QCOMPARE(buttonWidths(), QList<int>({60}));
    setCamera("cam", true);
    setCard("card", true);
    sendDeviceList({"card"}, {});
    sendDeviceList({}, {"cam"});
    QCOMPARE(buttonWidths(), QList<int>({60, 60, 60}));
    m_host.listeners.language->OnUpdate("English");
    QCOMPARE(buttonWidths(), QList<int>({85, 85, 85}));
}

void tst_ParameterWidgetManager::unknownKeysDoNothing()
{
    m_host.clearCalls();
    int roiId = 3;
    bool status = false;
    m_host.listeners.import->OnUpdate("other");
    m_host.listeners.imageMode->OnUpdate("other", 2);
    m_host.listeners.roi->OnUpdate("other", 0, 0, 9, 9, 1, roiId, status, 0, 0);
    m_window->setDefaultParameterWndMode(4);
    QCOMPARE(m_host.calls(), QStringList());
    QCOMPARE(roiId, 3);
    QCOMPARE(status, false);
}

void tst_ParameterWidgetManager::defaultPanelTakesTheStoredLevel()
{
    const auto *level = panelOf(QString())->findChild<QComboBox *>(QStringLiteral("cboboxLevel"));
    QCOMPARE(level->currentIndex(), 0);
    m_host.setParamterInfo(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL, "2");
    QTRY_COMPARE_WITH_TIMEOUT(level->currentIndex(), 2, 3000);
}

/// A host may raise the focus of the same device again and again while a person types. Whenever a closed camera is
/// listed, the default panel is shown until the next focus event.
void tst_ParameterWidgetManager::keyboardFocusOutlivesOtherPanels()
{
    setCamera("cam", true);
    sendDeviceList({}, {"cam"});
    sendFocus(3, "cam");
    panelOf(QStringLiteral("cam"))->findChild<QTabWidget *>(QStringLiteral("tabMainWidget"))->setCurrentIndex(1);
    QLineEdit beside(m_window.get());
    beside.show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    auto *const search = panelOf(QStringLiteral("cam"))->findChild<QLineEdit *>(QStringLiteral("edit_search"));
    for (QLineEdit *field : {&beside, search}) {
        field->setFocus();
        sendFocus(3, "cam");
        QVERIFY(field->hasFocus());
        sendDeviceList({}, {"cam", "closed"});
        QCOMPARE(shown(), QString());
        sendFocus(3, "cam");
        QVERIFY(field->hasFocus());
    }
    const auto isInPanel = [this](const QString &device) {
        return panelOf(device)->isAncestorOf(QApplication::focusWidget());
    };
    sendDeviceList({}, {"cam", "closed"});
    search->setEnabled(false);
    sendFocus(3, "cam");
    QVERIFY(isInPanel(QStringLiteral("cam")));
    setCamera("cam", false);
    sendDeviceList({}, {"cam"});
    QVERIFY(isInPanel(QString()));
}

/// An exception of the host costs the device it concerns, not the others and not the host's thread.
void tst_ParameterWidgetManager::failingHostNeverKeepsTheHostWaiting()
{
    setCamera("bad", true);
    setCamera("good", true);
    m_host.setCallHook([](const QString &line) {
        if (line == QStringLiteral("GetCameraInfo(bad, 6)"))
            throw std::runtime_error("no answer");
    });
    QElapsedTimer timer;
    timer.start();
    sendDeviceList({}, {"bad", "good"});
    QVERIFY(timer.elapsed() < 4000);
    QVERIFY(panelOf(QStringLiteral("good")));
    QCOMPARE(panels().size(), 2);
    QCOMPARE(m_host.callsTo(QStringLiteral("VLogInfo")),
             QStringList({QStringLiteral("VLogInfo(ParameterWidgetManager, no answer, 0)")}));
}

void tst_ParameterWidgetManager::deviceListFromAHostThread()
{
    setCamera("cam", true);
    std::atomic<bool> returned{false};
    std::thread host([&] {
        sendDeviceList({}, {"cam"});
        returned = true;
    });
    const bool inTime = QTest::qWaitFor([&] { return returned.load(); }, 4000);
    host.join();
    QVERIFY(inTime);
    QVERIFY(panelOf(QStringLiteral("cam")));
}

void tst_ParameterWidgetManager::listedAgainMeanwhile_data()
{
    QTest::addColumn<QString>("within");
    QTest::addColumn<bool>("ready");
    QTest::newRow("while the nodes are asked for") << QStringLiteral("GetAttrNodeMap(3, cam, 3)") << true;
    QTest::newRow("while the type is asked for") << QStringLiteral("GetCameraInfo(cam, 6)") << true;
    QTest::newRow("as closed") << QStringLiteral("GetAttrNodeMap(3, cam, 3)") << false;
}

/// A host may list a camera again before it returns from a call.
void tst_ParameterWidgetManager::listedAgainMeanwhile()
{
    QFETCH(QString, within);
    QFETCH(bool, ready);
    setCamera("cam", true);
    m_host.setCameraInfo("cam", HostCore::CAM_INFO_ACQUISITION, "1");
    bool listed = false;
    m_host.setCallHook([&](const QString &line) {
        if (line != within || std::exchange(listed, true))
            return;
        setCamera("cam", ready);
        sendDeviceList({}, {"cam"});
    });
    sendDeviceList({}, {"cam"});
    QVERIFY(listed);
    QTRY_COMPARE(panels().size(), ready ? 2 : 1);
    sendFocus(3, "cam");
    QCOMPARE(shown(), ready ? QStringLiteral("cam") : QString());
}

QTEST_MAIN(tst_ParameterWidgetManager)
#include "tst_ParameterWidgetManager.moc"
