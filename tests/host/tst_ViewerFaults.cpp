// SPDX-License-Identifier: MIT
#include <QLabel>
#include <QTreeView>
#include <QtTest>

#include "Simulation/SimulatedDevice.h"
#include "Simulation/SimulatedDevices.h"
#include "Viewer/DeviceTree.h"
#include "Viewer/FrameStatus.h"
#include "Viewer/ImageView.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/ViewerWindow.h"
#include "host/TestHost.h"
#include "tour/TourHand.h"
#include "tour/TourStage.h"

namespace {

using Fault = SimulatedDevice::Fault;
using State = DeviceTree::State;

const QString Camera = QStringLiteral("SIM-AREA-01");
const QString Feature = QStringLiteral("ExposureTime");
constexpr int AttributeTab = 1;
constexpr double PoweredUp = 10000; ///< value of the feature

} // namespace

/// The viewer on devices that fail or go while a person works on them.
class tst_ViewerFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_host.renewSimulated();
        m_window = std::make_unique<ViewerWindow>(*m_host);
        m_window->show();
        m_stage = std::make_unique<TourStage>(*m_window);
        m_window->openWhenKnown(Camera);
        QTRY_VERIFY(m_stage->tree().view() && m_stage->tree().view()->model());
    }

    void cleanup()
    {
        m_stage.reset();
        m_window.reset();
        m_host.end();
    }

    void anOpeningIsShownAndGivenUp()
    {
        const auto shownState = [this](const QString &name) {
            DeviceTree &tree = m_window->devices();
            const QModelIndexList rows =
                tree.model()->match(tree.model()->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchRecursive);
            return rows.isEmpty() ? QString() : rows.first().siblingAtColumn(1).data().toString();
        };
        QSemaphore gate;
        m_host.add("slow")->onReach = [&](const std::atomic_bool &cancelled, const ReadProgress &progress) {
            progress(40, 100);
            gate.acquire(); // it hangs
            QVERIFY(cancelled);
        };
        m_window->openWhenKnown(text("slow"));
        QTRY_COMPARE(shownState(text("slow")), text("Opening... 40 %"));
        const QAction *close = m_window->commands().action(Command::CloseDevice);
        QVERIFY(close->isEnabled());
        QTest::keyClick(&m_window->devices(), Qt::Key_Escape);
        QCOMPARE(shownState(text("slow")), text("Cancelling..."));
        gate.release();
        QTRY_COMPARE(shownState(text("slow")), text("Closed"));
        QVERIFY(!close->isEnabled());
    }

    void theLoadIsShown()
    {
        auto *load = m_window->findChild<QLabel *>(text("loadStatus"));
        QVERIFY(!load->isVisible());
        m_window->commands().action(Command::ShowLoad)->trigger();
        QVERIFY(load->isVisible());
        const QString before = load->text();
        device().setFault(Fault::Timeout);
        device().nodeMap()->InvalidateNodes();
        m_host.number(Camera.toUtf8(), Feature.toUtf8());
        device().setFault(Fault::None);
        QTRY_VERIFY2(load->text() != before && !load->text().contains(text(" 0 time-outs")), qPrintable(load->text()));
    }

    void editOnAFailingLink()
    {
        for (const auto &[fault, acquiring] :
             {std::pair{Fault::Timeout, true}, {Fault::Refuse, false}, {Fault::Drop, false}, {Fault::Drop, true}}) {
            m_host.log.clear();
            QVERIFY(!acquiring || acquire());
            QVERIFY(typeValue());
            device().setFault(fault);
            if (QWidget *editor = m_stage->tree().editor())
                TourHand::key(editor, Qt::Key_Return);
            if (fault == Fault::Drop)
                QTRY_COMPARE(state(), State::Lost);
            else
                QTRY_VERIFY(m_stage->isLogged(Feature) && !m_host.log.filter(Feature).isEmpty());
            m_host->sessions().close(Camera);
            QTRY_VERIFY(!device().isOpen());
            QTRY_COMPARE(m_stage->tree().shownRows(), 0);
            device().setFault(Fault::None);
            QVERIFY(m_host->sessions().open(Camera));
            QCOMPARE(state(), State::Open);
            QTRY_VERIFY(m_stage->tree().isShown(QStringLiteral("Device")));
            QCOMPARE(m_stage->value(Feature).toDouble(), PoweredUp);
        }
    }

    void quittingWhileAcquiring()
    {
        QVERIFY(acquire());
        QVERIFY(typeValue());
        QVERIFY(m_window->close());
        QVERIFY2(quitsAtOnce(), "quitting takes too long");
    }

    /// The event that opens the camera's panel waits for the thread that deletes the window.
    void quittingWhileThePanelFollows()
    {
        m_stage.reset();
        m_window.reset();
        QSemaphore called; // before the window's listeners, which register later
        const ListListener listener([&](int, const auto &, const auto &) { called.release(); });
        m_window = std::make_unique<ViewerWindow>(*m_host);
        QVERIFY(m_host->sessions().startAcquisition(Camera));
        m_host->sessions().close(Camera);
        QVERIFY(called.tryAcquire(1, 5000));
        QVERIFY2(quitsAtOnce(), "quitting takes too long");
    }

    void rateEndsWithTheAcquisition()
    {
        QVERIFY(acquire());
        m_host->sessions().stopAcquisition(Camera);
        QTRY_COMPARE(state(), State::Open);
        QTRY_COMPARE(m_window->image().framesPerSecond(), 0.0);
        QVERIFY(!m_window->image().frame().isNull());
    }

    void faultyFramesAreCounted()
    {
        QVERIFY(acquire());
        QVERIFY(m_window->host().devices().device(Camera)->frameCounts().isFaultless());
        const auto *label = m_window->frameStatus().findChild<QLabel *>(QStringLiteral("frameFaults"));
        QCOMPARE(label->text(), QString());
        order(Command::EnlargeFrames);
        QTRY_COMPARE(label->text(), QStringLiteral("1 too large"));
        QVERIFY(m_stage->isLogged(QStringLiteral("acquisition restarted")));
        order(Command::LoseFrames);
        QTRY_VERIFY(label->text().contains(QStringLiteral("1 lost, 1 incomplete, ")));
        QVERIFY(m_window->frameStatus().text().contains(label->text()));
        for (const char *word : {"Lost:", "Incomplete:", "Too large:"})
            QVERIFY2(label->toolTip().contains(QLatin1String(word)), word);
        m_window->devices().select(QStringLiteral("SIM-AREA-02"));
        QCOMPARE(label->text(), QString()); // of another camera
    }

    void missingFramesAreExplained()
    {
        auto *timer = m_window->findChild<QTimer *>(QStringLiteral("missingFrames"));
        const ImageView &view = m_window->image();
        m_host.set("SIM-AREA-01", "TriggerMode=On");
        QVERIFY(m_host->sessions().startAcquisition(Camera));
        QTRY_VERIFY(timer->isActive());
        QCOMPARE(timer->interval(), 3000);
        QVERIFY(view.notice().isEmpty());
        timer->start(1);
        QTRY_VERIFY2(view.notice().contains(QLatin1String("trigger from Software")), qPrintable(view.notice()));
        timer->setInterval(3000);
        for (const char *word : {"GevSCPSPacketSize is 1500", "Another controller"})
            QVERIFY2(view.notice().contains(QLatin1String(word)), qPrintable(view.notice()));
        m_host.set("SIM-AREA-01", "TriggerMode=Off");
        QTRY_VERIFY(!view.frame().isNull() && view.notice().isEmpty());
        m_host->sessions().stopAcquisition(Camera);
        QTRY_VERIFY(!timer->isActive());
    }

    void silentDevicesAreGray()
    {
        const QTreeWidgetItem *row = m_window->devices().currentItem();
        const auto isGray = [row] { return row->data(0, Qt::ForegroundRole).isValid(); };
        order(Command::Silence);
        QCOMPARE(row->text(1), QStringLiteral("Not answering"));
        QVERIFY(isGray() && state() == State::Open);
        order(Command::Silence);
        QCOMPARE(row->text(1), QStringLiteral("Open"));
        QVERIFY(!isGray());
        order(Command::Unplug);
        QVERIFY(isGray() && row->text(1) == QStringLiteral("Lost"));
        QVERIFY(row->toolTip(0).contains(QLatin1String("opened again")));
    }

    void settingsAreInTheMenu()
    {
        const auto states = [this] {
            const DeviceReturn &back = m_host->deviceReturn();
            return std::make_tuple(m_host->automaticSearch().isEnabled(), back.isEnabled(), back.isAcquiringAgain());
        };
        QCOMPARE(states(), std::make_tuple(true, true, true));
        order(Command::SearchAutomatically);
        QCOMPARE(states(), std::make_tuple(false, true, true));
        order(Command::OpenLostAgain);
        QCOMPARE(states(), std::make_tuple(false, false, true));
        order(Command::AcquireAgain);
        QCOMPARE(states(), std::make_tuple(false, false, false));
    }

    void unpluggedDevicesComeBack()
    {
        QVERIFY(m_stage->panel().openTab(AttributeTab));
        QVERIFY(acquire());
        order(Command::Unplug);
        QTRY_VERIFY(!device().isOpen());
        QTRY_COMPARE(m_stage->tree().shownRows(), 0);
        m_host->devices().searchQuietly();
        QVERIFY2(state() == State::Lost, "it is not there yet");
        order(Command::Unplug);
        m_host->devices().searchQuietly();
        QTRY_COMPARE(state(), State::Acquiring);
        QTRY_VERIFY(m_stage->tree().isShown(QStringLiteral("Device"))); // its tab is in front

        order(Command::Unplug);
        QTRY_VERIFY(!device().isOpen());
        m_window->commands().action(Command::CloseDevice)->trigger();
        QCOMPARE(state(), State::Closed);
        order(Command::Unplug);
        m_host->devices().searchQuietly();
        QCOMPARE(state(), State::Closed);
    }

    /// The camera has stopped by itself when its image comes.
    void onlyFrameIsShown()
    {
        m_host.set("SIM-AREA-01", "AcquisitionMode=SingleFrame");
        QVERIFY(m_host->sessions().startAcquisition(Camera));
        QTRY_VERIFY(!m_window->image().frame().isNull());
    }

private:
    SimulatedDevice &device() const { return *static_cast<SimulatedDevice *>(m_host->devices().device(Camera)); }
    State state() const { return m_window->devices().state(Camera); }

    void order(Command command) const { m_window->commands().action(command)->trigger(); }

    bool acquire()
    {
        return m_host->sessions().startAcquisition(Camera)
            && TourHand::waitUntil([this] { return m_window->image().framesPerSecond() > 0; });
    }

    /// In the editor, not committed.
    bool typeValue()
    {
        QWidget *editor = m_stage->panel().openTab(AttributeTab) ? m_stage->tree().openEditor(Feature) : nullptr;
        if (editor)
            TourHand::retype(editor, QStringLiteral("4321"));
        return editor;
    }

    bool quitsAtOnce()
    {
        QElapsedTimer clock;
        clock.start();
        cleanup();
        return clock.elapsed() < 1000;
    }

    TestHost m_host;
    std::unique_ptr<ViewerWindow> m_window;
    std::unique_ptr<TourStage> m_stage;
};

QTEST_MAIN(tst_ViewerFaults)
#include "tst_ViewerFaults.moc"
