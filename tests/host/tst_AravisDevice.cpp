// SPDX-License-Identifier: MIT
#include <QtTest>

#include "Devices/AravisDevice.h"
#include "Features/NodeText.h"

namespace {

const QString CameraId = QStringLiteral("Fake_1");
const QString Width = QStringLiteral("Width");

} // namespace

/// Against the camera that Aravis simulates in the process.
class tst_AravisDevice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        for (const FoundDevice &found : aravisFinder(true)()) {
            if (found.id == CameraId)
                m_found = found;
        }
        QVERIFY2(m_found.create, "the fake camera is not found");
    }
    void init()
    {
        m_device = m_found.create();
        QVERIFY(!m_device->nodeMap());
        QVERIFY2(m_device->open(&m_error), qPrintable(m_error));
    }
    void cleanup() { m_device.reset(); }

    void openingAgainStartsAfresh()
    {
        QCOMPARE(m_device->id(), CameraId);
        QCOMPARE(m_device->transport(), Device::Transport::Fake);
        QVERIFY(!m_device->displayName().isEmpty());
        for (int i = 0; i < 3; ++i) {
            QVERIFY2(m_device->open(&m_error), qPrintable(m_error));
            QVERIFY(m_device->open(&m_error));
            writeNodeText(*m_device->nodeMap(), Width, QString::number(100 + i));
            m_device->nodeMap()->InvalidateNodes();
            QCOMPARE(readNodeText(*m_device->nodeMap(), Width), QString::number(100 + i));
            m_device->close();
            QVERIFY(!m_device->isOpen());
            QVERIFY(!m_device->nodeMap());
        }
        AravisDevice unknown({QStringLiteral("Nobody-0"), QStringLiteral("nobody"), Device::Transport::Other});
        QVERIFY(!unknown.open(&m_error));
        QVERIFY(!m_error.isEmpty());
    }

    void framesArrive()
    {
        writeNodeText(*m_device->nodeMap(), Width, QStringLiteral("160"));
        const QSignalSpy frames(m_device.get(), &Device::frameReady);
        const QSignalSpy states(m_device.get(), &Device::acquiringChanged);
        QVERIFY2(m_device->startAcquisition(&m_error), qPrintable(m_error));
        QVERIFY(m_device->startAcquisition(&m_error));
        QTRY_VERIFY(frames.size() >= 2);
        QCOMPARE(frames.first().first().value<QImage>().width(), 160);
        m_device->stopAcquisition();
        QVERIFY(!m_device->isAcquiring());
        QCoreApplication::processEvents(); // frames that were underway
        const int received = frames.size();
        QVERIFY2(m_device->startAcquisition(&m_error), qPrintable(m_error));
        QTRY_VERIFY(frames.size() > received);
        m_device->close();
        QVERIFY(!m_device->isAcquiring());
        QCOMPARE(states.size(), 4);
        QCOMPARE(states.last().first().toBool(), false);
    }

    /// A program that crashed may have left it sending.
    void theFirstStartStopsTheCamera()
    {
        int stops = 0;
        const std::function<void(GenApi::INode *)> count = [&stops](GenApi::INode *) { ++stops; };
        GenApi::Register(m_device->nodeMap()->GetNode("AcquisitionStop"), count);
        const auto stopsOfOneAcquisition = [&] {
            const int before = stops;
            const bool isStarted = m_device->startAcquisition(&m_error);
            m_device->stopAcquisition();
            return isStarted ? stops - before : -1;
        };
        const int first = stopsOfOneAcquisition();
        QVERIFY2(first > 0, qPrintable(m_error));
        QCOMPARE(stopsOfOneAcquisition(), first - 1);
    }

    void aBusyReceiverGetsAFewFrames()
    {
        QSignalSpy frames(m_device.get(), &Device::frameReady);
        QVERIFY2(m_device->startAcquisition(&m_error), qPrintable(m_error));
        QTRY_VERIFY(frames.size() > 0);
        frames.clear();
        QThread::msleep(400); // the camera takes 25 frames a second
        QCoreApplication::processEvents();
        QVERIFY2(frames.size() == 3 || frames.size() == 4, qPrintable(QString::number(frames.size())));
    }

private:
    FoundDevice m_found;
    std::unique_ptr<Device> m_device;
    QString m_error;
};

QTEST_GUILESS_MAIN(tst_AravisDevice)
#include "tst_AravisDevice.moc"
