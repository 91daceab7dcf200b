// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUdpSocket>
#include <QtEndian>
#include <QtTest>

#include "Devices/AravisDevice.h"
#include "FeatureTree/FeatureTreeView.h"
#include "Host/HostContext.h"
#include "ParamterWidget/ParamterWidget.h"
#include "ParamterWnd/ParamterWnd.h"

namespace {

const QString Program = QStringLiteral("arv-fake-gv-camera-0.8");
constexpr quint16 ControlPort = 3956; // of every GigE Vision device
constexpr quint32 WidthRegister = 0x100; // of the fake camera
constexpr int LossTimeout = 20'000; // ms; a heartbeat has to be missed for some seconds

/// Reads a register past the whole host: READREG of the GigE Vision control protocol. -1 without an answer.
qint64 cameraRegister(quint32 address)
{
    QUdpSocket socket;
    QByteArray request(QByteArray::fromHex("420100800004000100000000"));
    qToBigEndian(address, request.data() + 8);
    socket.connectToHost(QHostAddress(QHostAddress::LocalHost), ControlPort);
    socket.write(request);
    if (!socket.waitForReadyRead(1000))
        return -1;
    const QByteArray answer = socket.read(64);
    return answer.size() < 12 ? qint64(-1) : qFromBigEndian<quint32>(answer.constData() + 8);
}

} // namespace

/// One camera from being found to being lost, over the network and seen through the panel. The steps build on each
/// other, in this order.
class tst_EndToEnd : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void discoversTheCamera();
    void showsItsFeatures();
    void editsReachTheCamera();
    void writesByNameReachTheCamera_data();
    void writesByNameReachTheCamera();
    void refusedWritesDoNot();
    void framesArriveAsSet();
    void framesComeAtTheRate();
    void softwareTriggersMakeFrames();
    void aDeadCameraCostsOneDeadline();
    void aLostCameraIsClosed();
    void reachingADeadCameraKeepsNobodyWaiting();
    void aReturnedCameraOpensAgain();
    void cleanupTestCase();

private:
    void startCamera();
    FeatureTreeView *tree() const;
    QModelIndex valueCell(const QString &feature) const;
    ParamterWidget *shownPanel() const;
    int write(const char *feature, const char *value) const;

    QTemporaryDir m_folder;
    QProcess m_camera;
    QString m_serial;
    QString m_id;
    std::unique_ptr<HostContext> m_context;
    std::unique_ptr<ParamterWnd> m_window;
    QStringList m_log;
};

void tst_EndToEnd::initTestCase()
{
    if (QStandardPaths::findExecutable(Program).isEmpty())
        QSKIP("the fake GigE Vision camera is not installed");
    m_serial = QStringLiteral("T%1").arg(QCoreApplication::applicationPid());
    m_id = QStringLiteral("Aravis-Fake-") + m_serial;
    startCamera();
    if (QTest::currentTestFailed())
        return;

    HostContext::Options options;
    options.settingsFile = m_folder.filePath(QStringLiteral("host.ini"));
    options.finder = aravisFinder();
    m_context = std::make_unique<HostContext>(std::move(options));
    connect(&m_context->log(), &HostLog::lineAdded, this,
            [this](const QDateTime &, const QString &, const QString &message) { m_log += message; });
    m_window = std::make_unique<ParamterWnd>();
    m_window->resize(500, 700);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void tst_EndToEnd::startCamera()
{
    QVERIFY2(cameraRegister(WidthRegister) < 0, "a camera that is none of this test answers here");
    m_camera.setProcessChannelMode(QProcess::MergedChannels);
    m_camera.start(Program, {QStringLiteral("-i"), QStringLiteral("127.0.0.1"), QStringLiteral("-s"), m_serial});
    QVERIFY(m_camera.waitForStarted());
    QTRY_VERIFY2(cameraRegister(WidthRegister) > 0, m_camera.readAll().constData());
}

void tst_EndToEnd::cleanupTestCase()
{
    m_window.reset();
    m_context.reset();
    m_camera.kill();
    m_camera.waitForFinished();
}

void tst_EndToEnd::discoversTheCamera()
{
    m_context->devices().refresh();
    QTRY_VERIFY_WITH_TIMEOUT(m_context->devices().device(m_id), 10'000);
    QVERIFY(!m_context->devices().isReady(m_id));
}

ParamterWidget *tst_EndToEnd::shownPanel() const
{
    for (ParamterWidget *panel : m_window->findChildren<ParamterWidget *>()) {
        if (panel->isVisible())
            return panel;
    }
    return nullptr;
}

FeatureTreeView *tst_EndToEnd::tree() const
{
    return shownPanel()->findChild<FeatureTreeView *>();
}

QModelIndex tst_EndToEnd::valueCell(const QString &feature) const
{
    const QAbstractItemModel *model = tree()->model();
    const QModelIndexList names = model->match(model->index(0, 0), Qt::DisplayRole, feature, 1,
                                               Qt::MatchExactly | Qt::MatchRecursive | Qt::MatchCaseSensitive);
    return names.isEmpty() ? QModelIndex() : names.first().siblingAtColumn(1);
}

void tst_EndToEnd::showsItsFeatures()
{
    m_context->focus().set(m_id);
    QVERIFY2(m_context->sessions().open(m_id), qPrintable(m_log.join(QLatin1Char('\n'))));
    QTRY_VERIFY(shownPanel() && shownPanel()->deviceName() == m_id);
    const QModelIndex width = valueCell(QStringLiteral("Width"));
    QVERIFY(width.isValid());
    QCOMPARE(width.data().toLongLong(), cameraRegister(WidthRegister));
    QVERIFY(valueCell(QStringLiteral("PixelFormat")).isValid());
}

void tst_EndToEnd::editsReachTheCamera()
{
    const QModelIndex width = valueCell(QStringLiteral("Width"));
    QVERIFY(width.isValid());
    tree()->scrollTo(width);
    tree()->setCurrentIndex(width);
    QTest::keyClick(tree(), Qt::Key_F2);
    auto *box = tree()->viewport()->findChild<QAbstractSpinBox *>();
    QVERIFY(box);
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("320"));
    QTest::keyClick(box, Qt::Key_Return);
    QTRY_COMPARE(cameraRegister(WidthRegister), qint64(320));
    QCOMPARE(width.data().toLongLong(), qint64(320));
}

int tst_EndToEnd::write(const char *feature, const char *value) const
{
    return HostCore::SetCameraNodeValue(m_id.toStdString(), feature, value);
}

void tst_EndToEnd::writesByNameReachTheCamera_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<uint>("address");
    QTest::addColumn<qint64>("contents");
    QTest::newRow("Height") << QByteArray("240") << 0x104u << qint64(240);
    QTest::newRow("OffsetX") << QByteArray("16") << 0x130u << qint64(16);
    QTest::newRow("OffsetY") << QByteArray("8") << 0x134u << qint64(8);
    QTest::newRow("ExposureTimeAbs") << QByteArray("5000") << 0x120u << qint64(5000);
    QTest::newRow("GainRaw") << QByteArray("7") << 0x110u << qint64(7);
    QTest::newRow("AcquisitionFrameRate") << QByteArray("50") << 0x138u << qint64(20'000);
    QTest::newRow("PixelFormat") << QByteArray("BayerRG8") << 0x128u << qint64(0x01080009);
    QTest::newRow("TriggerSource") << QByteArray("Software") << 0x304u << qint64(1);
}

void tst_EndToEnd::writesByNameReachTheCamera()
{
    QFETCH(QByteArray, value);
    QFETCH(uint, address);
    QFETCH(qint64, contents);
    QVERIFY(cameraRegister(address) != contents);
    QCOMPARE(write(QTest::currentDataTag(), value.constData()), 0);
    QCOMPARE(cameraRegister(address), contents);
    std::string text;
    QCOMPARE(HostCore::GetCameraNodeValue(m_id.toStdString(), QTest::currentDataTag(), text), 0);
    QCOMPARE(QByteArray::fromStdString(text), value);
}

void tst_EndToEnd::refusedWritesDoNot()
{
    const qint64 before = cameraRegister(WidthRegister);
    QVERIFY(write("Width", "70000") != 0);
    QCOMPARE(cameraRegister(WidthRegister), before);
}

void tst_EndToEnd::framesArriveAsSet()
{
    QSignalSpy frames(&m_context->devices(), &KnownDevices::frameReady);
    QVERIFY2(m_context->sessions().startAcquisition(m_id), qPrintable(m_log.join(QLatin1Char('\n'))));
    QTRY_VERIFY_WITH_TIMEOUT(frames.size() >= 3, 10'000);
    const QImage frame = frames.first().at(1).value<QImage>();
    QCOMPARE(frame.size(), QSize(320, 240));
    QVERIFY(!frame.isGrayscale());
    m_context->sessions().stopAcquisition(m_id);
    QCOMPARE(HostCore::GetCameraInfo(m_id.toStdString(), HostCore::CAM_INFO_ACQUISITION), std::string("0"));
}

void tst_EndToEnd::framesComeAtTheRate()
{
    QCOMPARE(write("AcquisitionFrameRate", "10"), 0);
    QSignalSpy frames(&m_context->devices(), &KnownDevices::frameReady);
    QElapsedTimer clock;
    clock.start(); // a first frame that is seen late makes the others look fast
    QVERIFY(m_context->sessions().startAcquisition(m_id));
    QTRY_VERIFY(frames.size() >= 9);
    QVERIFY2(clock.elapsed() > 550, qPrintable(QString::number(clock.elapsed())));
    m_context->sessions().stopAcquisition(m_id);
}

void tst_EndToEnd::softwareTriggersMakeFrames()
{
    QCOMPARE(write("TriggerMode", "On"), 0);
    QVERIFY(m_context->sessions().startAcquisition(m_id));
    QTest::qWait(100); // a frame that was underway
    QSignalSpy frames(&m_context->devices(), &KnownDevices::frameReady);
    QTest::qWait(300);
    QCOMPARE(frames.size(), 0);
    for (int i = 1; i <= 3; ++i) {
        QCOMPARE(write("TriggerSoftware", ""), 0);
        QTRY_COMPARE(frames.size(), i);
    }
    m_context->sessions().stopAcquisition(m_id);
    QCOMPARE(write("TriggerMode", "Off"), 0);
}

void tst_EndToEnd::aDeadCameraCostsOneDeadline()
{
    QVERIFY(m_context->sessions().startAcquisition(m_id));
    m_camera.kill();
    QVERIFY(m_camera.waitForFinished());
    const std::string key = m_id.toStdString();
    QElapsedTimer timer;
    timer.start();
    QVERIFY(HostCore::SetCameraNodeValue(key, "GainRaw", "5") != 0);
    QVERIFY2(timer.elapsed() < 1500, "one deadline of 500 ms");
    timer.restart();
    for (int i = 0; i < 100; ++i)
        QVERIFY(HostCore::SetCameraNodeValue(key, "GainRaw", "5") != 0);
    QVERIFY2(timer.elapsed() < 500, "further accesses fail at once");
    m_window->grab();
    QVERIFY(shownPanel());
}

void tst_EndToEnd::aLostCameraIsClosed()
{
    QTRY_VERIFY_WITH_TIMEOUT(!m_context->devices().isReady(m_id) && !m_context->devices().device(m_id)->isOpen(),
                             LossTimeout);
    QCOMPARE(m_log.filter(QStringLiteral("is lost")).size(), 1);
    QTRY_VERIFY(shownPanel() && shownPanel()->deviceName().isEmpty());
    QVERIFY(!HostCore::GetAttrNodeMap(HostCore::FOCUS_CAMERA, m_id.toStdString(), HostCore::NODE_MAP_DEVICE));
    m_window->grab();
}

void tst_EndToEnd::reachingADeadCameraKeepsNobodyWaiting()
{
    m_log.clear();
    QElapsedTimer timer;
    timer.start();
    m_context->sessions().openLater(m_id);
    qint64 longest = timer.restart(); // between two turns of the event loop, ms
    const QDeadlineTimer patience(10'000);
    QVERIFY(m_context->devices().isOpening(m_id));
    while (m_context->devices().isOpening(m_id) && !patience.hasExpired()) {
        QTest::qWait(5);
        longest = std::max(longest, timer.restart());
    }
    QCOMPARE(m_log.filter(QStringLiteral("Opening %1 failed").arg(m_id)).size(), 1);
    QVERIFY2(longest < 500, QByteArray::number(longest).constData());
}

void tst_EndToEnd::aReturnedCameraOpensAgain()
{
    startCamera();
    m_context->sessions().openLater(m_id);
    QTRY_VERIFY2(m_context->devices().isReady(m_id), qPrintable(m_log.join(QLatin1Char('\n'))));
    QTRY_VERIFY(shownPanel() && shownPanel()->deviceName() == m_id);
    QCOMPARE(valueCell(QStringLiteral("Width")).data().toLongLong(), cameraRegister(WidthRegister));
}

QTEST_MAIN(tst_EndToEnd)
#include "tst_EndToEnd.moc"
