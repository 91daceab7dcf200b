// SPDX-License-Identifier: MIT
#include <stdexcept>

#include <QComboBox>
#include <QLineEdit>
#include <QToolButton>

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

    void listenersAreRegisteredInOrder()
    {
        const auto registrations = [this](const QString &prefix) {
            QString names = m_host.calls().filter(QRegularExpression("^%1"_s.arg(prefix))).join(QLatin1Char(' '));
            return names.remove(prefix).remove("UpdateListener()"_s);
        };
        QCOMPARE(registrations("Register"_s), "DeviceList Focus Lang ROI ImageMode Import"_s);
        m_window.reset();
        QCOMPARE(registrations("UnRegister"_s), "Focus DeviceList Lang ROI ImageMode Import"_s);
        QVERIFY(!m_host.listeners.focus && !m_host.listeners.deviceList && !m_host.listeners.language);
        QVERIFY(!m_host.listeners.roi && !m_host.listeners.imageMode && !m_host.listeners.import);
    }

    void focus()
    {
        setCamera("相机", true);
        setCard("card", true);
        sendDeviceList({"card"}, {});
        sendDeviceList({"card"}, {"相机"});
        for (const auto &[name, type, id, inFront] :
             {std::tuple("camera", 3, "相机", "相机"), std::tuple("card", 2, "card", "card"),
              std::tuple("camera as card", 2, "相机", ""), std::tuple("card as camera", 3, "card", ""),
              std::tuple("unknown type", 1, "相机", ""), std::tuple("unknown key", 3, "other", ""),
              std::tuple("other case", 2, "Card", ""), std::tuple("empty key", 3, "", "")}) {
            const InRow inRow(name);
            sendFocus(3, "相机");
            QCOMPARE(shown(), "相机"_s);
            for (int time = 0; time < 2; ++time) {
                sendFocus(type, id);
                QCOMPARE(shown(), QString::fromUtf8(inFront));
            }
        }
    }

    /// Only by one source; their panels are hidden at first, and stay when they are listed no more.
    void listedCameras()
    {
        setCamera("cam", true);
        m_host.clearCalls();
        for (int source : {0, 2, -1})
            sendDeviceList({}, {"cam"}, source);
        QCOMPARE(panels().size(), 1);
        QCOMPARE(m_host.calls(), QStringList());
        m_window->hide();
        sendDeviceList({}, {"cam"});
        m_window->show();
        QCOMPARE(shown(), QString());
        ParamterWidget *const panel = panelOf("cam");
        QVERIFY(panel);
        sendDeviceList({}, {});
        sendDeviceList({}, {"cam"});
        QCOMPARE(panelOf("cam"), panel);
        QCOMPARE(panels().size(), 2);
    }

    void newCardEndsTheEvent()
    {
        setCamera("cam", true);
        setCard("card", true);
        sendDeviceList({"card", "second card"}, {"cam"});
        QVERIFY(panelOf("card", true));
        QVERIFY(!panelOf("cam"));
        sendDeviceList({"card"}, {"cam"});
        QVERIFY(panelOf("cam"));
        QCOMPARE(panels().size(), 3);
    }

    /// The view goes to the default panel even if another device's panel was shown.
    void notReadyCameras()
    {
        for (const auto &[name, opened, ready, stays] :
             {std::tuple("both", "1", "1", true), std::tuple("not opened", "0", "1", false),
              std::tuple("not ready", "1", "0", false), std::tuple("unknown texts", "1 ", "yes", false)}) {
            const InRow inRow(name);
            end();
            start();
            setCamera("cam", true);
            setCamera("other", true);
            sendDeviceList({}, {"cam", "other"});
            sendFocus(3, "other");
            m_host.setCameraInfo("cam", HostCore::CAM_INFO_OPENED, opened);
            m_host.setCameraInfo("cam", HostCore::CAM_INFO_READY, ready);
            sendDeviceList({}, {"other", "cam"});
            QCOMPARE(shown(), stays ? "other"_s : QString());
            QTRY_COMPARE(panelOf("cam") != nullptr, stays);
            QVERIFY(panelOf("other"));
        }
        sendFocus(3, "other");
        setCamera("never opened", false);
        sendDeviceList({}, {"never opened"});
        QCOMPARE(shown(), QString());
    }

    void removingTheShownPanel()
    {
        setCard("card", true);
        m_host.setCardInfo("card", HostCore::CARD_INFO_STATE, "3");
        sendDeviceList({"card"}, {});
        QCOMPARE(panels().size(), 1);
        m_host.setCardInfo("card", HostCore::CARD_INFO_STATE, "4");
        sendDeviceList({"card"}, {});
        sendFocus(2, "card");
        QCOMPARE(shown(), "card"_s);
        setCard("card", false);
        setCamera("cam", true);
        sendDeviceList({"card"}, {"cam"}); // goes on to the cameras
        QTRY_COMPARE(shown(), "0 panels are visible"_s);
        sendFocus(2, "card");
        QCOMPARE(shown(), QString());

        sendFocus(3, "cam");
        QCOMPARE(shown(), "cam"_s);
        setCamera("cam", false);
        sendDeviceList({}, {"cam"});
        QCOMPARE(shown(), QString()); // also before the removed panel is deleted
        QTRY_COMPARE(panels().size(), 1);
        QCOMPARE(shown(), QString());
    }

    void oneKeyForCardAndCamera()
    {
        setCard("device", true);
        setCamera("device", true);
        sendDeviceList({"device"}, {});
        sendDeviceList({"device"}, {"device"});
        QCOMPARE(panels().size(), 3);
        sendFocus(2, "device");
        QVERIFY(panelOf("device", true)->isVisible());
        sendFocus(3, "device");
        QVERIFY(panelOf("device", false)->isVisible());
        QVERIFY(!panelOf("device", true)->isVisible());
        m_window->setParamterViewDisable("other"_s);
        m_window->setParamterViewDisable("device"_s); // concerns cameras only
        for (bool card : {false, true}) {
            const auto *tree = panelOf("device", card)->findChild<FeatureTreeView *>();
            QCOMPARE(qobject_cast<TreeModel *>(tree->model())->dataDisabled, !card);
        }
    }

    void acquisition()
    {
        setCamera("cam", true);
        // An unknown text changes nothing, also before any other.
        for (const auto &[state, unlocked] : {std::pair("", true), std::pair("1", false), std::pair("stopped", false),
                                              std::pair("", false), std::pair("0", true)}) {
            const InRow inRow(state);
            m_host.setCameraInfo("cam", HostCore::CAM_INFO_ACQUISITION, state);
            sendDeviceList({}, {"cam"});
            QCOMPARE(panelOf("cam")->findChild<SelectedButton *>()->isEnabled(), unlocked);
        }
    }

    void languageReachesAllPanels()
    {
        const auto buttonWidths = [this] {
            QList<int> widths;
            for (ParamterWidget *panel : panels())
                widths << panel->findChild<QToolButton *>("toolButton"_s)->width();
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

    void unknownKeysDoNothing()
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

    void defaultPanelTakesTheStoredLevel()
    {
        const auto *level = panelOf("")->findChild<QComboBox *>("cboboxLevel"_s);
        QCOMPARE(level->currentIndex(), 0);
        m_host.setParamterInfo(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL, "2");
        QTRY_COMPARE_WITH_TIMEOUT(level->currentIndex(), 2, 3000);
    }

    /// A host may raise the focus of the same device again and again while a person types. Whenever a closed camera is
    /// listed, the default panel is shown until the next focus event.
    void keyboardFocusOutlivesOtherPanels()
    {
        setCamera("cam", true);
        sendDeviceList({}, {"cam"});
        sendFocus(3, "cam");
        panelOf("cam")->findChild<QTabWidget *>("tabMainWidget"_s)->setCurrentIndex(1);
        QLineEdit beside(m_window.get());
        beside.show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        auto *const search = panelOf("cam")->findChild<QLineEdit *>("edit_search"_s);
        for (QLineEdit *field : {&beside, search}) {
            field->setFocus();
            sendFocus(3, "cam");
            QVERIFY(field->hasFocus());
            sendDeviceList({}, {"cam", "closed"});
            QCOMPARE(shown(), QString());
            sendFocus(3, "cam");
            QVERIFY(field->hasFocus());
        }
        const auto isInPanel = [this](const char *device) {
            return panelOf(device)->isAncestorOf(QApplication::focusWidget());
        };
        sendDeviceList({}, {"cam", "closed"});
        search->setEnabled(false);
        sendFocus(3, "cam");
        QVERIFY(isInPanel("cam"));
        setCamera("cam", false);
        sendDeviceList({}, {"cam"});
        QVERIFY(isInPanel(""));
    }

    /// An exception of the host costs the device it concerns, not the others and not the host's thread.
    void failingHostNeverKeepsTheHostWaiting()
    {
        setCamera("bad", true);
        setCamera("good", true);
        m_host.setCallHook([](const QString &line) {
            if (line == "GetCameraInfo(bad, 6)"_s)
                throw std::runtime_error("no answer");
        });
        QElapsedTimer timer;
        timer.start();
        sendDeviceList({}, {"bad", "good"});
        QVERIFY(timer.elapsed() < 4000);
        QVERIFY(panelOf("good"));
        QCOMPARE(panels().size(), 2);
        QCOMPARE(m_host.callsTo("VLogInfo"_s), QStringList("VLogInfo(ParameterWidgetManager, no answer, 0)"_s));
    }

    /// A host may list a camera again before it returns from a call.
    void listedAgainMeanwhile()
    {
        for (const auto &row : {std::pair("GetAttrNodeMap(3, cam, 3)", true), std::pair("GetCameraInfo(cam, 6)", true),
                                std::pair("GetAttrNodeMap(3, cam, 3)", false)}) {
            const InRow inRow(row.second ? row.first : "as closed");
            end();
            start();
            setCamera("cam", true);
            m_host.setCameraInfo("cam", HostCore::CAM_INFO_ACQUISITION, "1");
            bool listed = false;
            m_host.setCallHook([&](const QString &line) {
                if (line != QLatin1String(row.first) || std::exchange(listed, true))
                    return;
                setCamera("cam", row.second);
                sendDeviceList({}, {"cam"});
            });
            sendDeviceList({}, {"cam"});
            QVERIFY(listed);
            QTRY_COMPARE(panels().size(), row.second ? 2 : 1);
            sendFocus(3, "cam");
            QCOMPARE(shown(), row.second ? "cam"_s : QString());
            m_host.setCallHook({});
        }
    }
};

QTEST_MAIN(tst_ParameterWidgetManager)
#include "tst_ParameterWidgetManager.moc"
