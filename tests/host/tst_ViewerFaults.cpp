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

const QString camera = QStringLiteral("SIM-AREA-01");
const QString feature = QStringLiteral("ExposureTime");
constexpr int attributeTab = 1;

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
    void init();
    void cleanup();
    void editOnAFailingLink_data();
    void editOnAFailingLink();
    void closingEndsAnOpenEditor();
    void quittingWhileAcquiring();
    void quittingWhileThePanelFollows();
    void rateEndsWithTheAcquisition();
    void onlyFrameIsShown();

private:
    SimulatedDevice &device() const { return *static_cast<SimulatedDevice *>(context->device(camera)); }
    State state() const { return window->devices().state(camera); }
    bool acquire();
    QWidget *typeValue(const QString &text);
    QString exposure() const;

    QTemporaryDir folder;
    std::unique_ptr<HostContext> context;
    std::unique_ptr<ViewerWindow> window;
    std::unique_ptr<TourStage> stage;
};

void tst_ViewerFaults::init()
{
    HostContext::Options options;
    options.settingsFile = folder.filePath(QStringLiteral("viewer.ini"));
    context = std::make_unique<HostContext>(options);
    for (std::unique_ptr<Device> &one : makeSimulatedDevices())
        QVERIFY(context->addDevice(std::move(one)));
    window = std::make_unique<ViewerWindow>(*context);
    window->show();
    stage = std::make_unique<TourStage>(*window);
    window->openWhenKnown(camera);
    QTRY_VERIFY(stage->tree() && stage->tree()->model());
    QVERIFY(stage->openTab(attributeTab));
}

void tst_ViewerFaults::cleanup()
{
    stage.reset();
    window.reset();
    context.reset();
}

bool tst_ViewerFaults::acquire()
{
    return context->startAcquisition(camera)
        && TourHand::waitUntil([this] { return window->image().framesPerSecond() > 0; });
}

/// The editor with the text, not committed.
QWidget *tst_ViewerFaults::typeValue(const QString &text)
{
    QWidget *editor = stage->openEditor(feature);
    if (editor)
        TourHand::retype(editor, text);
    return editor;
}

QString tst_ViewerFaults::exposure() const
{
    QString value;
    context->readNode(camera, feature, &value);
    return value;
}

void tst_ViewerFaults::editOnAFailingLink_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::addColumn<bool>("acquiring");
    QTest::newRow("silent") << Fault::Timeout << false;
    QTest::newRow("silent, acquiring") << Fault::Timeout << true;
    QTest::newRow("refusing") << Fault::Refuse << false;
    QTest::newRow("refusing, acquiring") << Fault::Refuse << true;
    QTest::newRow("gone") << Fault::Drop << false;
    QTest::newRow("gone, acquiring") << Fault::Drop << true;
}

void tst_ViewerFaults::editOnAFailingLink()
{
    QFETCH(Fault, fault);
    QFETCH(bool, acquiring);
    const QString before = exposure();
    QVERIFY(!acquiring || acquire());
    QVERIFY(typeValue(QStringLiteral("4321")));
    device().setFault(fault);
    if (QWidget *editor = stage->editor())
        TourHand::key(editor, Qt::Key_Return);
    if (fault == Fault::Drop)
        QTRY_COMPARE(state(), State::Lost);
    else
        QTRY_VERIFY(stage->isLogged(feature));
    context->close(camera);
    QTRY_VERIFY(!device().isOpen());
    QTRY_COMPARE(stage->shownRows(), 0);

    device().setFault(Fault::None);
    QVERIFY(context->open(camera));
    QCOMPARE(state(), State::Open);
    QTRY_VERIFY(stage->isShown(QStringLiteral("Device")));
    QCOMPARE(exposure(), before);
}

void tst_ViewerFaults::closingEndsAnOpenEditor()
{
    const QString before = exposure();
    QVERIFY(typeValue(QStringLiteral("4321")));
    context->close(camera);
    QTRY_VERIFY(!device().isOpen());
    QVERIFY(!stage->editor());
    QVERIFY(context->open(camera));
    QCOMPARE(exposure(), before);
}

void tst_ViewerFaults::quittingWhileAcquiring()
{
    QVERIFY(acquire());
    QVERIFY(typeValue(QStringLiteral("4321")));
    QElapsedTimer clock;
    clock.start();
    QVERIFY(window->close());
    cleanup();
    QVERIFY2(clock.elapsed() < 1000, "quitting takes too long");
}

/// The event that opens the camera's panel waits for the thread that deletes the window.
void tst_ViewerFaults::quittingWhileThePanelFollows()
{
    stage.reset();
    window.reset();
    FirstListener listener;
    window = std::make_unique<ViewerWindow>(*context);
    QVERIFY(context->startAcquisition(camera));
    context->close(camera);
    QVERIFY(listener.called.tryAcquire(1, 5000));
    QElapsedTimer clock;
    clock.start();
    cleanup();
    QVERIFY2(clock.elapsed() < 1000, "quitting takes too long");
}

void tst_ViewerFaults::rateEndsWithTheAcquisition()
{
    QVERIFY(acquire());
    context->stopAcquisition(camera);
    QTRY_COMPARE(state(), State::Open);
    QTRY_COMPARE(window->image().framesPerSecond(), 0.0);
    QVERIFY(!window->image().frame().isNull());
}

/// The camera has stopped by itself when its image comes.
void tst_ViewerFaults::onlyFrameIsShown()
{
    QVERIFY(context->writeNode(camera, QStringLiteral("AcquisitionMode"), QStringLiteral("SingleFrame")));
    QVERIFY(context->startAcquisition(camera));
    QTRY_VERIFY(!window->image().frame().isNull());
}

QTEST_MAIN(tst_ViewerFaults)
#include "tst_ViewerFaults.moc"
