// SPDX-License-Identifier: MIT
#include <QSignalSpy>
#include <QtTest>

#include "Devices/AravisDevice.h"
#include "Features/NodeText.h"

namespace {

const QString CameraId = QStringLiteral("Fake_1");

QString width(const Device &device)
{
    return readNodeText(*device.nodeMap(), QStringLiteral("Width"));
}

} // namespace

/// Against the camera that Aravis simulates in the process.
class tst_AravisDevice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void openingAgainStartsAfresh();
    void unknownCamerasDoNotOpen();
    void framesArrive();
    void aBusyReceiverGetsAFewFrames();

private:
    std::unique_ptr<Device> make() const { return m_camera.create(); }

    FoundDevice m_camera;
};

void tst_AravisDevice::initTestCase()
{
    for (const FoundDevice &found : aravisFinder(true)()) {
        if (found.id == CameraId)
            m_camera = found;
    }
    QVERIFY2(m_camera.create, "the fake camera is not found");
    const std::unique_ptr<Device> device = make();
    QCOMPARE(device->id(), CameraId);
    QCOMPARE(device->transport(), Device::Transport::Fake);
    QVERIFY(!device->displayName().isEmpty());
}

void tst_AravisDevice::openingAgainStartsAfresh()
{
    const std::unique_ptr<Device> device = make();
    QVERIFY(!device->nodeMap());
    QString error;
    for (int i = 0; i < 3; ++i) {
        QVERIFY2(device->open(&error), qPrintable(error));
        QVERIFY(device->open(&error));
        writeNodeText(*device->nodeMap(), QStringLiteral("Width"), QString::number(100 + i));
        device->nodeMap()->InvalidateNodes();
        QCOMPARE(width(*device), QString::number(100 + i));
        device->close();
        QVERIFY(!device->isOpen());
        QVERIFY(!device->nodeMap());
    }
}

void tst_AravisDevice::unknownCamerasDoNotOpen()
{
    AravisDevice device({QStringLiteral("Nobody-0"), QStringLiteral("nobody"), Device::Transport::Other});
    QString error;
    QVERIFY(!device.open(&error));
    QVERIFY(!error.isEmpty());
}

void tst_AravisDevice::framesArrive()
{
    const std::unique_ptr<Device> device = make();
    QString error;
    QVERIFY2(device->open(&error), qPrintable(error));
    writeNodeText(*device->nodeMap(), QStringLiteral("Width"), QStringLiteral("160"));
    QSignalSpy frames(device.get(), &Device::frameReady);
    QSignalSpy states(device.get(), &Device::acquiringChanged);
    QVERIFY2(device->startAcquisition(&error), qPrintable(error));
    QVERIFY(device->startAcquisition(&error));
    QTRY_VERIFY(frames.size() >= 2);
    QCOMPARE(frames.first().first().value<QImage>().width(), 160);
    device->stopAcquisition();
    QVERIFY(!device->isAcquiring());
    QCoreApplication::processEvents(); // frames that were underway
    const int received = frames.size();
    QVERIFY2(device->startAcquisition(&error), qPrintable(error));
    QTRY_VERIFY(frames.size() > received);
    device->close();
    QVERIFY(!device->isAcquiring());
    QCOMPARE(states.size(), 4);
    QCOMPARE(states.last().first().toBool(), false);
}

void tst_AravisDevice::aBusyReceiverGetsAFewFrames()
{
    const std::unique_ptr<Device> device = make();
    QString error;
    QVERIFY2(device->open(&error), qPrintable(error));
    QSignalSpy frames(device.get(), &Device::frameReady);
    QVERIFY2(device->startAcquisition(&error), qPrintable(error));
    QTRY_VERIFY(frames.size() > 0);
    frames.clear();
    QThread::msleep(400); // the camera takes 25 frames a second
    QCoreApplication::processEvents();
    QVERIFY2(frames.size() == 3 || frames.size() == 4, qPrintable(QString::number(frames.size())));
}

QTEST_GUILESS_MAIN(tst_AravisDevice)
#include "tst_AravisDevice.moc"
