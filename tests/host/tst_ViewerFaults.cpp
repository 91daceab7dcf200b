// SPDX-License-Identifier: MIT
#include <QAbstractItemModel>
#include <QElapsedTimer>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

#include "Host/HostContext.h"
#include "Simulation/SimulatedDevice.h"
#include "Simulation/SimulatedDevices.h"
#include "Viewer/DeviceTree.h"
#include "Viewer/ImageView.h"
#include "Viewer/ViewerWindow.h"
#include "tour/TourHand.h"
#include "tour/TourStage.h"

namespace {

using Fault = SimulatedDevice::Fault;
using State = DeviceTree::State;

const QString Camera = QStringLiteral("SIM-AREA-01");
const QString Feature = QStringLiteral("ExposureTime");
constexpr int AttributeTab = 1;
constexpr double PoweredUp = 10000; ///< value of the feature

/// Tells when a device-list event has begun. Who registers later is called after it.
class FirstListener final : public HostCore::IDeviceListUpdate
{
public:
    FirstListener() { HostCore::RegisterDeviceListUpdateListener(this); }
    ~FirstListener() { HostCore::UnRegisterDeviceListUpdateListener(this); }

    void OnUpdate(int, std::vector<std::string>, std::vector<std::string>) override { called.release(); }

    QSemaphore called;
};

} // namespace

Q_DECLARE_METATYPE(SimulatedDevice::Fault)

/// The viewer on devices that fail or go while a person works on them.
class tst_ViewerFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_context =
            std::make_unique<HostContext>(HostContext::Options{m_folder.filePath(QStringLiteral("viewer.ini")), {}});
        for (std::unique_ptr<Device> &one : makeSimulatedDevices())
            QVERIFY(m_context->devices().add(std::move(one)));
        m_window = std::make_unique<ViewerWindow>(*m_context);
        m_window->show();
        m_stage = std::make_unique<TourStage>(*m_window);
        m_window->openWhenKnown(Camera);
        QTRY_VERIFY(m_stage->tree().view() && m_stage->tree().view()->model());
        QVERIFY(m_stage->panel().openTab(AttributeTab));
    }

    void cleanup()
    {
        m_stage.reset();
        m_window.reset();
        m_context.reset();
    }

    void editOnAFailingLink_data()
    {
        QTest::addColumn<Fault>("fault");
        QTest::addColumn<bool>("acquiring");
        QTest::newRow("silent, acquiring") << Fault::Timeout << true;
        QTest::newRow("refusing") << Fault::Refuse << false;
        QTest::newRow("gone") << Fault::Drop << false;
        QTest::newRow("gone, acquiring") << Fault::Drop << true;
    }

    void editOnAFailingLink()
    {
        QFETCH(Fault, fault);
        QFETCH(bool, acquiring);
        QVERIFY(!acquiring || acquire());
        QVERIFY(typeValue());
        device().setFault(fault);
        if (QWidget *editor = m_stage->tree().editor())
            TourHand::key(editor, Qt::Key_Return);
        if (fault == Fault::Drop)
            QTRY_COMPARE(state(), State::Lost);
        else
            QTRY_VERIFY(m_stage->isLogged(Feature));
        m_context->sessions().close(Camera);
        QTRY_VERIFY(!device().isOpen());
        QTRY_COMPARE(m_stage->tree().shownRows(), 0);
        device().setFault(Fault::None);
        QVERIFY(m_context->sessions().open(Camera));
        QCOMPARE(state(), State::Open);
        QTRY_VERIFY(m_stage->tree().isShown(QStringLiteral("Device")));
        QCOMPARE(m_stage->value(Feature).toDouble(), PoweredUp);
    }

    void closingEndsAnOpenEditor()
    {
        QVERIFY(typeValue());
        m_context->sessions().close(Camera);
        QTRY_VERIFY(!device().isOpen());
        QVERIFY(!m_stage->tree().editor());
        QVERIFY(m_context->sessions().open(Camera));
        QCOMPARE(m_stage->value(Feature).toDouble(), PoweredUp);
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
        FirstListener listener;
        m_window = std::make_unique<ViewerWindow>(*m_context);
        QVERIFY(m_context->sessions().startAcquisition(Camera));
        m_context->sessions().close(Camera);
        QVERIFY(listener.called.tryAcquire(1, 5000));
        QVERIFY2(quitsAtOnce(), "quitting takes too long");
    }

    void rateEndsWithTheAcquisition()
    {
        QVERIFY(acquire());
        m_context->sessions().stopAcquisition(Camera);
        QTRY_COMPARE(state(), State::Open);
        QTRY_COMPARE(m_window->image().framesPerSecond(), 0.0);
        QVERIFY(!m_window->image().frame().isNull());
    }

    /// The camera has stopped by itself when its image comes.
    void onlyFrameIsShown()
    {
        QVERIFY(m_context->values().write(Camera, QStringLiteral("AcquisitionMode"), QStringLiteral("SingleFrame")));
        QVERIFY(m_context->sessions().startAcquisition(Camera));
        QTRY_VERIFY(!m_window->image().frame().isNull());
    }

private:
    SimulatedDevice &device() const { return *static_cast<SimulatedDevice *>(m_context->devices().device(Camera)); }
    State state() const { return m_window->devices().state(Camera); }

    bool acquire()
    {
        return m_context->sessions().startAcquisition(Camera)
            && TourHand::waitUntil([this] { return m_window->image().framesPerSecond() > 0; });
    }

    /// In the editor, not committed.
    bool typeValue()
    {
        QWidget *editor = m_stage->tree().openEditor(Feature);
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

    QTemporaryDir m_folder;
    std::unique_ptr<HostContext> m_context;
    std::unique_ptr<ViewerWindow> m_window;
    std::unique_ptr<TourStage> m_stage;
};

QTEST_MAIN(tst_ViewerFaults)
#include "tst_ViewerFaults.moc"
