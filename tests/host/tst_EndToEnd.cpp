// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QUdpSocket>
#include <QtTest>

#include "Devices/AravisDevice.h"
#include "FeatureTree/FeatureTreeView.h"
#include "ParamterWidget/ParamterWidget.h"
#include "ParamterWnd/ParamterWnd.h"
#include "TestHost.h"
#include "support/FakeCamera.h"

namespace {

constexpr quint16 ControlPort = 3956; // of every GigE Vision device
constexpr quint32 WidthRegister = 0x100; // of the fake camera
constexpr int LossTimeout = 20'000; // ms; a heartbeat has to be missed for some seconds

/// Reads a register past the whole host: READREG of the GigE Vision control protocol. -1 without an answer.
qint64 cameraRegister(quint32 address)
{
    QUdpSocket socket;
    QByteArray request(QByteArray::fromHex("420100800004000100000000"));
    qToBigEndian(address, request.data() + 8);
    socket.connectToHost(QHostAddress(FakeCamera::address()), ControlPort);
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
    void initTestCase()
    {
        if (!FakeCamera::isInstalled())
            QSKIP("the fake GigE Vision camera is not installed");
        startCamera();
        if (QTest::currentTestFailed())
            return;
        m_host.renew(aravisFinder());
        m_window = std::make_unique<ParamterWnd>();
        connect(&m_host->deviceReturn(), &DeviceReturn::returningChanged, m_window.get(),
                [this](const QStringList &ids) { m_window->setProperty("returningDevices", ids); });
        m_window->resize(500, 700);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }

    void showsADiscoveredCamera()
    {
        m_host->devices().refresh();
        QTRY_VERIFY_WITH_TIMEOUT(m_host->devices().device(m_id), 10'000);
        QVERIFY(!m_host->devices().isReady(m_id));
        m_host->focus().set(m_id);
        QVERIFY2(m_host->sessions().open(m_id), qPrintable(m_host.log.join(QLatin1Char('\n'))));
        QTRY_VERIFY(shownPanel() && shownPanel()->deviceName() == m_id);
        const QModelIndex width = valueCell(QStringLiteral("Width"));
        QVERIFY(width.isValid());
        QCOMPARE(width.data().toLongLong(), cameraRegister(WidthRegister));
        QVERIFY(valueCell(QStringLiteral("PixelFormat")).isValid());
    }

    void editsReachTheCamera()
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

    void writesByNameReachTheCamera()
    {
        const struct
        {
            const char *feature, *value;
            quint32 address;
            qint64 contents;
        } rows[] = {{"Height", "240", 0x104, 240},
                    {"ExposureTimeAbs", "5000", 0x120, 5000},
                    {"AcquisitionFrameRate", "50", 0x138, 20'000},
                    {"PixelFormat", "BayerRG8", 0x128, 0x01080009}};
        for (const auto &row : rows) {
            QVERIFY2(cameraRegister(row.address) != row.contents, row.feature);
            QVERIFY2(write(row.feature, row.value) == 0, row.feature);
            QVERIFY2(cameraRegister(row.address) == row.contents, row.feature);
            std::string text;
            QVERIFY2(HostCore::GetCameraNodeValue(m_id.toStdString(), row.feature, text) == 0, row.feature);
            QCOMPARE(text, std::string(row.value));
        }
        QVERIFY(write("Width", "70000") != 0); // is refused
        QCOMPARE(cameraRegister(WidthRegister), qint64(320));
    }

    void framesArriveAsSet()
    {
        const QSignalSpy frames(&m_host->devices(), &KnownDevices::frameReady);
        QVERIFY2(m_host->sessions().startAcquisition(m_id), qPrintable(m_host.log.join(QLatin1Char('\n'))));
        QTRY_VERIFY_WITH_TIMEOUT(frames.size() >= 3, 10'000);
        const QImage frame = frames.first().at(1).value<QImage>();
        QCOMPARE(frame.size(), QSize(320, 240));
        QVERIFY(!frame.isGrayscale());
    }

    /// They are written while the camera sends; smaller ones fit as they are.
    void largerFramesRestartTheStream()
    {
        QSignalSpy frames(&m_host->devices(), &KnownDevices::frameReady);
        for (const int width : {480, 320}) {
            QVERIFY(write("Width", QByteArray::number(width)) == 0);
            const auto isShown = [&] {
                return !frames.isEmpty() && frames.last().at(1).value<QImage>().width() == width;
            };
            QTRY_VERIFY2(isShown(), qPrintable(m_host.log.join(QLatin1Char('\n'))));
        }
        const QString line = QStringLiteral("payload grew from 76800 to 115200 bytes: acquisition restarted");
        QCOMPARE(m_host.log.filter(line).size(), 1);
        QVERIFY(m_host->devices().device(m_id)->frameCounts().tooLarge > 0);
        m_host->sessions().stopAcquisition(m_id);
        QCOMPARE(HostCore::GetCameraInfo(m_id.toStdString(), HostCore::CAM_INFO_ACQUISITION), std::string("0"));
    }

    void aDeadCameraCostsOneDeadline()
    {
        QVERIFY(m_host->sessions().startAcquisition(m_id));
        QVERIFY(m_camera.unplug());
        QElapsedTimer timer;
        timer.start();
        QVERIFY(write("GainRaw", "5") != 0);
        QVERIFY2(timer.elapsed() < 1500, "one deadline of 500 ms");
        timer.restart();
        for (int i = 0; i < 100; ++i)
            QVERIFY(write("GainRaw", "5") != 0);
        QVERIFY2(timer.elapsed() < 500, "further accesses fail at once");
        m_window->grab();
        QVERIFY(shownPanel());
    }

    void aLostCameraIsClosed()
    {
        QTRY_VERIFY_WITH_TIMEOUT(!m_host->devices().device(m_id)->isOpen(), LossTimeout);
        QCOMPARE(m_host.log.filter(QStringLiteral("is lost")).size(), 1);
        QTRY_VERIFY(shownPanel() && shownPanel()->deviceName().isEmpty());
        QVERIFY(!HostCore::GetAttrNodeMap(HostCore::FOCUS_CAMERA, m_id.toStdString(), HostCore::NODE_MAP_DEVICE));
        m_window->grab();
    }

    void reachingADeadCameraKeepsNobodyWaiting()
    {
        m_host.log.clear();
        QElapsedTimer timer;
        timer.start();
        m_host->sessions().openLater(m_id);
        qint64 longest = timer.restart(); // between two turns of the event loop, ms
        const QDeadlineTimer patience(10'000);
        QVERIFY(m_host->devices().isOpening(m_id));
        while (m_host->devices().isOpening(m_id) && !patience.hasExpired()) {
            QTest::qWait(5);
            longest = std::max(longest, timer.restart());
        }
        QCOMPARE(m_host.log.filter(QStringLiteral("Opening %1 failed").arg(m_id)).size(), 1);
        QVERIFY2(longest < 500, QByteArray::number(longest).constData());
    }

    void aReturnedCameraOpensAgain()
    {
        startCamera();
        m_host->sessions().openLater(m_id);
        QTRY_VERIFY2(m_host->devices().isReady(m_id), qPrintable(m_host.log.join(QLatin1Char('\n'))));
        QTRY_VERIFY(shownPanel() && shownPanel()->deviceName() == m_id);
        QCOMPARE(valueCell(QStringLiteral("Width")).data().toLongLong(), cameraRegister(WidthRegister));
    }

    /// Nobody does anything but to plug it in again.
    void aLostCameraComesBack()
    {
        auto *tabs = shownPanel()->findChild<QTabWidget *>(QStringLiteral("tabMainWidget"));
        tabs->setCurrentIndex(1);
        m_host->automaticSearch().start();
        QVERIFY(m_host->sessions().startAcquisition(m_id));
        QVERIFY(m_camera.unplug());
        QTRY_VERIFY_WITH_TIMEOUT(m_host->deviceReturn().isLost(m_id), LossTimeout);
        QTRY_VERIFY(!m_host->devices().device(m_id)->isOpen());
        m_host.log.clear();
        const QSignalSpy frames(&m_host->devices(), &KnownDevices::frameReady);
        startCamera();
        QElapsedTimer timer;
        timer.start();
        const auto isLive = [this] {
            return shownPanel() && shownPanel()->deviceName() == m_id && valueCell(QStringLiteral("Width")).isValid()
                && valueCell(QStringLiteral("Width")).data().toLongLong() == cameraRegister(WidthRegister);
        };
        QTRY_VERIFY2(isLive(), qPrintable(m_host.log.join(QLatin1Char('\n'))));
        qInfo("live again after %lld ms", timer.elapsed());
        QVERIFY2(timer.elapsed() < 3000, "values are live within three seconds");
        tabs = shownPanel()->findChild<QTabWidget *>(QStringLiteral("tabMainWidget"));
        QCOMPARE(tabs->currentIndex(), 1);
        QTRY_VERIFY2(!frames.isEmpty(), "it acquires again");
        QCOMPARE(m_host->focus().id(), m_id);
    }

    void cleanupTestCase()
    {
        m_window.reset();
        m_host.end();
        m_camera.unplug();
    }

private:
    void startCamera()
    {
        QVERIFY2(cameraRegister(WidthRegister) < 0, "a camera that is none of this test answers here");
        QVERIFY(m_camera.plug(m_serial));
        QTRY_VERIFY2(cameraRegister(WidthRegister) > 0, m_camera.output().constData());
    }

    ParamterWidget *shownPanel() const
    {
        for (ParamterWidget *panel : m_window->findChildren<ParamterWidget *>()) {
            if (panel->isVisible())
                return panel;
        }
        return nullptr;
    }
    FeatureTreeView *tree() const { return shownPanel()->findChild<FeatureTreeView *>(); }
    QModelIndex valueCell(const QString &feature) const
    {
        const QAbstractItemModel *model = tree()->model();
        const QModelIndexList names = model->match(model->index(0, 0), Qt::DisplayRole, feature, 1,
                                                   Qt::MatchExactly | Qt::MatchRecursive | Qt::MatchCaseSensitive);
        return names.isEmpty() ? QModelIndex() : names.first().siblingAtColumn(1);
    }

    int write(const char *feature, const char *value) const
    {
        return HostCore::SetCameraNodeValue(m_id.toStdString(), feature, value);
    }

    const QString m_serial = QStringLiteral("T%1").arg(QCoreApplication::applicationPid());
    const QString m_id = QStringLiteral("Aravis-Fake-") + m_serial;
    FakeCamera m_camera;
    TestHost m_host;
    std::unique_ptr<ParamterWnd> m_window;
};

QTEST_MAIN(tst_EndToEnd)
#include "tst_EndToEnd.moc"
