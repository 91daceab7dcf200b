// SPDX-License-Identifier: MIT
#include <QtTest>

#include "Devices/FrameTally.h"
#include "OpenDevice.h"

using namespace std::chrono_literals;

/// What became of frames: counted, and told without flooding the log.
class tst_FrameTally : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachCauseIsToldOnceAMinute()
    {
        std::chrono::milliseconds now = 0ms;
        OncePerMinute reports([&now] { return now; });
        const struct
        {
            std::chrono::milliseconds time;
            const char *cause;
            qint64 times, told;
        } rows[] = {{0s, "a", 1, 1},  {1s, "a", 2, 0},  {1s, "b", 3, 3},       {59999ms, "a", 1, 0}, {60s, "a", 1, 4},
                    {60s, "b", 1, 0}, {61s, "b", 1, 2}, {119999ms, "a", 1, 0}, {1000s, "a", 1, 2}};
        for (const auto &row : rows) {
            now = row.time;
            QVERIFY2(reports.count(QLatin1String(row.cause), row.times) == row.told,
                     qPrintable(QStringLiteral("%1 at %2 ms").arg(QLatin1String(row.cause)).arg(now.count())));
        }
    }

    /// As a stream does it, on its own thread.
    void countsByWhatBecameOfThem()
    {
        FrameTally tally([] { return 0ms; });
        QSignalSpy changes(&tally, &FrameTally::changed);
        QStringList lines;
        connect(
            &tally, &FrameTally::reported, this, [&lines](const QString &line) { lines += line; },
            Qt::DirectConnection);
        std::thread([&tally] {
            for (const FrameFate fate : {FrameFate::Good, FrameFate::MissingPackets, FrameFate::LatePackets,
                                         FrameFate::WrongPackets, FrameFate::Aborted, FrameFate::Unknown,
                                         FrameFate::Good, FrameFate::TooLarge, FrameFate::MissingPackets})
                tally.count(fate);
            tally.count(FrameFate::Lost, 4);
        }).join();
        const FrameCounts counts = tally.counts();
        QCOMPARE(std::make_tuple(counts.good, counts.incomplete, counts.tooLarge, counts.lost),
                 std::make_tuple(qint64(2), qint64(6), qint64(1), qint64(4)));
        QVERIFY(!counts.isFaultless());
        QCOMPARE(lines.size(), 7);
        QVERIFY2(lines.last().contains(QLatin1String("lost")) && lines.last().endsWith(QLatin1String(": 4")),
                 qPrintable(lines.last()));
        QCOMPARE(changes.size(), 0);
        QTRY_COMPARE(changes.size(), 1);
        tally.restart();
        QVERIFY(tally.counts().isFaultless() && tally.counts().good == 0);
        QCOMPARE(changes.size(), 2);
    }

    void simulatedCamerasHaveFaults()
    {
        const OpenDevice camera("SIM-AREA-02");
        QSignalSpy lines(camera.operator->(), &Device::reported);
        const QSignalSpy frames(camera.operator->(), &Device::frameReady);
        camera.start();
        QTRY_VERIFY(!frames.isEmpty());
        const QSize size = frames.last().first().value<QImage>().size();
        QVERIFY(lines.isEmpty());
        camera->frameFaults().setEnlarging(true);
        QTRY_COMPARE(frames.last().first().value<QImage>().size(), size * 2);
        QVERIFY(camera->frameCounts().tooLarge == 1);
        const auto bytes = [](const QSize &area) { return QString::number(area.width() * area.height()); };
        QVERIFY2(lines.last().first().toString().endsWith(
                     QStringLiteral("payload grew from %1 to %2 bytes: acquisition restarted")
                         .arg(bytes(size), bytes(size * 2))),
                 qPrintable(lines.last().first().toString()));
        camera->frameFaults().setLosing(true);
        QTRY_VERIFY(camera->frameCounts().lost > 0 && camera->frameCounts().incomplete > 0);
        camera->stopAcquisition();
        camera.start();
        QVERIFY(camera->frameCounts().isFaultless());
    }
};

QTEST_MAIN(tst_FrameTally)
#include "tst_FrameTally.moc"
