// SPDX-License-Identifier: MIT
#include <climits>

#include <QtTest>

#include "TestHost.h"

namespace {

const QString Camera = QStringLiteral("SIM-AREA-01");
const std::string CameraKey = Camera.toStdString();

struct RegionListener final : HostCore::IROIDrawUpdate
{
    void OnUpdate(std::string id, int leftX, int leftY, int rightX, int rightY, int operation, int &roiId, bool &status,
                  int, int) override
    {
        QStringList words{QString::fromStdString(id)};
        for (const int number : {operation, roiId, leftX, leftY, rightX, rightY})
            words += QString::number(number);
        events += words.join(QLatin1Char(' '));
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
    void init()
    {
        m_host.renewSimulated();
        QVERIFY(m_host.add("silent"));
        QVERIFY(m_host.open("SIM-AREA-01"));
        QVERIFY(m_host.open("silent"));
        m_host.set("SIM-AREA-01", "Width=640 Height=480");
        m_listener = RegionListener();
        HostCore::RegisterROIUpdateListener(&m_listener);
    }
    void cleanup()
    {
        HostCore::UnRegisterROIUpdateListener(&m_listener);
        m_host.end();
    }

    void cornersBecomeAnArea()
    {
        const QRect before(1, 2, 3, 4);
        const struct
        {
            const char *name;
            QPoint corner, opposite;
            QRect drawn;
        } rows[] = {{"whole image", {0, 0}, {640, 480}, {0, 0, 640, 480}},
                    {"part", {100, 50}, {300, 80}, {100, 50, 200, 30}},
                    {"swapped", {300, 80}, {100, 50}, {100, 50, 200, 30}},
                    {"beyond the image", {-10, 400}, {INT_MAX, 900}, {0, 400, 640, 80}},
                    {"all there is", {INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}, {0, 0, 640, 480}},
                    {"no width", {10, 10}, {10, 50}, {}},
                    {"outside", {640, 0}, {700, 50}, {}}};
        for (const auto &row : rows) {
            m_host.log.clear();
            const int handle = draw(row.corner, row.opposite);
            QVERIFY2(area(handle) == row.drawn, row.name);
            QVERIFY2(m_host.log.size() == (row.drawn.isNull() ? 1 : 0), row.name);
            const int placed = draw({1, 2}, {4, 6});
            place(placed, row.corner, row.opposite);
            QVERIFY2(area(placed) == (row.drawn.isNull() ? before : row.drawn), row.name);
        }
        QCOMPARE(m_listener.events, QStringList());
    }

    void userMovesAreReportedOnce()
    {
        const int handle = draw({0, 0}, {640, 480});
        const QSignalSpy placed(&m_host->regions(), &ImageRegions::placed);
        m_host->regions().move(handle, QRect(100, 50, 200, 30));
        m_host->regions().move(handle, QRect(100, 50, 200, 30));
        QCOMPARE(m_listener.events, QStringList{text("SIM-AREA-01 1 %1 100 50 300 80").arg(handle)});
        QVERIFY(m_listener.accepted);
        QCOMPARE(placed.size(), 1);
        place(handle, {0, 0}, {10, 10});
        QCOMPARE(placed.size(), 2);
        QCOMPARE(m_listener.events.size(), 1);
    }

    void regionsAreApart()
    {
        const int first = draw({0, 0}, {10, 10});
        const int second = draw({20, 20}, {30, 30});
        place(first, {1, 1}, {5, 5});
        QCOMPARE(area(first), QRect(1, 1, 4, 4));
        QCOMPARE(area(second), QRect(20, 20, 10, 10));
        HostCore::RomoveROI(CameraKey, second);
        QCOMPARE(area(second), QRect());
        const int third = draw({20, 20}, {30, 30});
        QVERIFY(third != first && third != second);
        QCOMPARE(m_host->regions().of(Camera).size(), 2);
        QCOMPARE(m_host.log, QStringList());

        for (const auto &[device, stranger] :
             {std::pair(CameraKey.c_str(), second), {"silent", third}, {"nobody", third}}) {
            m_host.log.clear();
            HostCore::SetROIPos(device, stranger, 1, 1, 5, 5);
            HostCore::RomoveROI(device, stranger);
            QVERIFY2(m_host.log.size() == 2, device); // strangers are refused
        }
        QCOMPARE(area(third), QRect(20, 20, 10, 10));
    }

    void closingRemovesRegions()
    {
        for (const bool isLost : {false, true}) {
            QTRY_VERIFY(m_host.open("SIM-AREA-01"));
            int other = 0;
            bool status = false;
            QVERIFY(draw({0, 0}, {10, 10}));
            QCOMPARE(HostCore::DrawROI("silent", 5, 5, 20, 10, other, status, 0, 0), 0); // it tells no image size
            const QSignalSpy changed(&m_host->regions(), &ImageRegions::listChanged);
            if (isLost)
                Q_EMIT m_host.device("SIM-AREA-01")->lost(text("cable"));
            else
                m_host.close("SIM-AREA-01");
            QTRY_COMPARE(changed.size(), 1);
            QVERIFY(m_host->regions().of(Camera).isEmpty());
            QCOMPARE(m_host->regions().of(text("silent")).value(0).area, QRect(5, 5, 15, 5));
            m_host.log.clear();
            status = true;
            QVERIFY(HostCore::DrawROI(CameraKey, 0, 0, 10, 10, other, status, 0, 0) != 0);
            QVERIFY(!status);
            QCOMPARE(m_host.log.size(), 1);
        }
    }

    void listenerMayRemoveTheRegion()
    {
        const int handle = draw({0, 0}, {10, 10});
        connect(&m_host->regions(), &ImageRegions::placed, &m_host->regions(),
                [&] { HostCore::RomoveROI(CameraKey, handle); });
        m_host->regions().move(handle, QRect(1, 1, 5, 5));
        QVERIFY(m_host->regions().of(Camera).isEmpty());
        QVERIFY(m_listener.events.isEmpty());
    }

private:
    /// The handle; 0 when the host refuses.
    int draw(const QPoint &from, const QPoint &to)
    {
        int handle = 0;
        bool status = false;
        const int result = HostCore::DrawROI(CameraKey, from.x(), from.y(), to.x(), to.y(), handle, status, 0, 0);
        return result == 0 && status ? handle : 0;
    }
    void place(int handle, const QPoint &from, const QPoint &to)
    {
        HostCore::SetROIPos(CameraKey, handle, from.x(), from.y(), to.x(), to.y());
    }
    QRect area(int handle) { return m_host->regions().region(handle).area; }

    TestHost m_host;
    RegionListener m_listener;
};

QTEST_GUILESS_MAIN(tst_ImageRegions)
#include "tst_ImageRegions.moc"
