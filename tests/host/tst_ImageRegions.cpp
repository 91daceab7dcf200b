// SPDX-License-Identifier: MIT
#include <climits>

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include "Host/HostContext.h"
#include "Host/ImageRegions.h"
#include "Simulation/SimulatedDevice.h"
#include "Simulation/SimulatedDevices.h"
#include "TestDevice.h"

namespace {

const QString Camera = QStringLiteral("SIM-AREA-01");
const std::string CameraKey = Camera.toStdString();

struct RegionListener final : HostCore::IROIDrawUpdate
{
    void OnUpdate(std::string id, int leftX, int leftY, int rightX, int rightY, int operation, int &roiId, bool &status,
                  int, int) override
    {
        const QStringList numbers{QString::number(operation), QString::number(roiId),  QString::number(leftX),
                                  QString::number(leftY),     QString::number(rightX), QString::number(rightY)};
        events << QString::fromStdString(id) + QLatin1Char(' ') + numbers.join(QLatin1Char(' '));
        accepted = accepted && status;
    }

    QStringList events;
    bool accepted = true;
};

} // namespace

/// Regions of interest from HostCore's calls to the listener's events.
class tst_ImageRegions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void cornersBecomeAnArea_data();
    void cornersBecomeAnArea();
    void userMovesAreReportedOnce();
    void regionsAreApart();
    void strangersAreLogged_data();
    void strangersAreLogged();
    void closingRemovesRegions_data();
    void closingRemovesRegions();
    void listenerMayRemoveTheRegion();

private:
    int draw(int left, int top, int right, int bottom);
    QRect area(int handle) const { return m_context->regions().region(handle).area; }

    QTemporaryDir m_folder;
    std::unique_ptr<HostContext> m_context;
    std::unique_ptr<QSignalSpy> m_lines;
    RegionListener m_listener;
};

void tst_ImageRegions::init()
{
    m_context = std::make_unique<HostContext>(HostContext::Options{m_folder.filePath(QStringLiteral("host.ini")), {}});
    for (std::unique_ptr<Device> &one : makeSimulatedDevices())
        QVERIFY(m_context->devices().add(std::move(one)));
    QVERIFY(m_context->devices().add(std::make_unique<TestDevice>(QStringLiteral("silent"))));
    QVERIFY(m_context->sessions().open(Camera));
    QVERIFY(m_context->sessions().open(QStringLiteral("silent")));
    QVERIFY(m_context->values().write(Camera, QStringLiteral("Width"), QStringLiteral("640")));
    QVERIFY(m_context->values().write(Camera, QStringLiteral("Height"), QStringLiteral("480")));
    m_lines = std::make_unique<QSignalSpy>(&m_context->log(), &HostLog::lineAdded);
    m_listener = RegionListener();
    HostCore::RegisterROIUpdateListener(&m_listener);
}

void tst_ImageRegions::cleanup()
{
    HostCore::UnRegisterROIUpdateListener(&m_listener);
    m_context.reset();
}

/// 0 when the host refuses.
int tst_ImageRegions::draw(int left, int top, int right, int bottom)
{
    int handle = 0;
    bool status = false;
    const int result = HostCore::DrawROI(CameraKey, left, top, right, bottom, handle, status, 0, 0);
    return result == 0 && status ? handle : 0;
}

void tst_ImageRegions::cornersBecomeAnArea_data()
{
    QTest::addColumn<QPoint>("corner");
    QTest::addColumn<QPoint>("opposite");
    QTest::addColumn<QRect>("drawn");
    QTest::newRow("whole image") << QPoint(0, 0) << QPoint(640, 480) << QRect(0, 0, 640, 480);
    QTest::newRow("part") << QPoint(100, 50) << QPoint(300, 80) << QRect(100, 50, 200, 30);
    QTest::newRow("swapped") << QPoint(300, 80) << QPoint(100, 50) << QRect(100, 50, 200, 30);
    QTest::newRow("beyond the image") << QPoint(-10, 400) << QPoint(INT_MAX, 900) << QRect(0, 400, 640, 80);
    QTest::newRow("all there is") << QPoint(INT_MIN, INT_MIN) << QPoint(INT_MAX, INT_MAX) << QRect(0, 0, 640, 480);
    QTest::newRow("no width") << QPoint(10, 10) << QPoint(10, 50) << QRect();
    QTest::newRow("outside") << QPoint(640, 0) << QPoint(700, 50) << QRect();
}

void tst_ImageRegions::cornersBecomeAnArea()
{
    QFETCH(QPoint, corner);
    QFETCH(QPoint, opposite);
    QFETCH(QRect, drawn);
    const int handle = draw(corner.x(), corner.y(), opposite.x(), opposite.y());
    QCOMPARE(area(handle), drawn);
    QCOMPARE(m_lines->size(), drawn.isNull() ? 1 : 0);

    const QRect before(1, 2, 3, 4);
    const int placed = draw(1, 2, 4, 6);
    HostCore::SetROIPos(CameraKey, placed, corner.x(), corner.y(), opposite.x(), opposite.y());
    QCOMPARE(area(placed), drawn.isNull() ? before : drawn);
    QCOMPARE(m_listener.events, QStringList());
}

void tst_ImageRegions::userMovesAreReportedOnce()
{
    const int handle = draw(0, 0, 640, 480);
    QSignalSpy placed(&m_context->regions(), &ImageRegions::placed);
    m_context->regions().move(handle, QRect(100, 50, 200, 30));
    m_context->regions().move(handle, QRect(100, 50, 200, 30));
    QCOMPARE(m_listener.events, QStringList{QStringLiteral("SIM-AREA-01 1 %1 100 50 300 80").arg(handle)});
    QVERIFY(m_listener.accepted);
    QCOMPARE(placed.size(), 1);
    HostCore::SetROIPos(CameraKey, handle, 0, 0, 10, 10);
    QCOMPARE(placed.size(), 2);
    QCOMPARE(m_listener.events.size(), 1);
}

void tst_ImageRegions::regionsAreApart()
{
    const int first = draw(0, 0, 10, 10);
    const int second = draw(20, 20, 30, 30);
    HostCore::SetROIPos(CameraKey, first, 1, 1, 5, 5);
    QCOMPARE(area(first), QRect(1, 1, 4, 4));
    QCOMPARE(area(second), QRect(20, 20, 10, 10));
    HostCore::RomoveROI(CameraKey, second);
    QCOMPARE(area(second), QRect());
    const int third = draw(20, 20, 30, 30);
    QVERIFY(third != first && third != second);
    QCOMPARE(m_context->regions().of(Camera).size(), 2);
    QVERIFY(m_lines->isEmpty());
}

void tst_ImageRegions::strangersAreLogged_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<int>("offset");
    QTest::newRow("handle") << Camera << 1;
    QTest::newRow("another device's handle") << QStringLiteral("silent") << 0;
    QTest::newRow("device") << QStringLiteral("nobody") << 0;
}

void tst_ImageRegions::strangersAreLogged()
{
    QFETCH(QString, device);
    QFETCH(int, offset);
    const int handle = draw(0, 0, 10, 10);
    HostCore::SetROIPos(device.toStdString(), handle + offset, 1, 1, 5, 5);
    HostCore::RomoveROI(device.toStdString(), handle + offset);
    QCOMPARE(m_lines->size(), 2);
    QCOMPARE(area(handle), QRect(0, 0, 10, 10));
}

void tst_ImageRegions::closingRemovesRegions_data()
{
    QTest::addColumn<bool>("lost");
    QTest::newRow("closed") << false;
    QTest::newRow("lost") << true;
}

void tst_ImageRegions::closingRemovesRegions()
{
    QFETCH(bool, lost);
    int other = 0;
    bool status = false;
    QVERIFY(draw(0, 0, 10, 10));
    QCOMPARE(HostCore::DrawROI("silent", 5, 5, 20, 10, other, status, 0, 0), 0); // it does not tell its image's size
    QSignalSpy changed(&m_context->regions(), &ImageRegions::listChanged);
    if (lost)
        Q_EMIT m_context->devices().device(Camera)->lost(QStringLiteral("cable"));
    else
        m_context->sessions().close(Camera);
    QTRY_COMPARE(changed.size(), 1);
    QVERIFY(m_context->regions().of(Camera).isEmpty());
    QCOMPARE(m_context->regions().of(QStringLiteral("silent")).value(0).area, QRect(5, 5, 15, 5));
    m_lines->clear();
    QVERIFY(!draw(0, 0, 10, 10));
    QCOMPARE(m_lines->size(), 1);
    status = true;
    QVERIFY(HostCore::DrawROI(CameraKey, 0, 0, 10, 10, other, status, 0, 0) != 0);
    QVERIFY(!status);
}

void tst_ImageRegions::listenerMayRemoveTheRegion()
{
    const int handle = draw(0, 0, 10, 10);
    connect(&m_context->regions(), &ImageRegions::placed, m_context.get(),
            [&] { HostCore::RomoveROI(CameraKey, handle); });
    m_context->regions().move(handle, QRect(1, 1, 5, 5));
    QVERIFY(m_context->regions().of(Camera).isEmpty());
    QVERIFY(m_listener.events.isEmpty());
}

QTEST_GUILESS_MAIN(tst_ImageRegions)
#include "tst_ImageRegions.moc"
