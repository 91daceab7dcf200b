// SPDX-License-Identifier: MIT
// What a script can do to the test producer.
#include <atomic>
#include <csignal>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include <QtTest>

#include "tests/gentl/TestConsumer.h"

using namespace GenTL;
using namespace TestConsumer;

class TestTestProducerFaults : public LoadedProducer
{
    Q_OBJECT

private Q_SLOTS:
    void spoilsFrames();
    void spoilsTexts();
    void spoilsNumbersAndTransfers();
    void unplugged();
    void heldByOthers();
    void waitingEnds();
    void hangsInOneFunction();
    void crashes();
};

void TestTestProducerFaults::spoilsFrames()
{
    const struct
    {
        const char *fault;
        BUFFER_INFO_CMD command;
        quint64 value; ///< of the second frame
    } rows[] = {
        {"incomplete", BUFFER_INFO_SIZE_FILLED, AreaScanFrame / 2},
        {"lost", BUFFER_INFO_FRAMEID, 3},
        {"empty", BUFFER_INFO_IMAGEPRESENT, 0},
        {"huge", BUFFER_INFO_WIDTH, 1 << 30},
        {"alien", BUFFER_INFO_PIXELFORMAT, 0x81230042},
        {"grown", BUFFER_INFO_DATA_LARGER_THAN_BUFFER, 1},
    };
    script("rate GEV-AREA 50");
    for (const auto &row : rows) {
        script(QByteArray("frames GEV-AREA ") + row.fault + " 2");
        const Opened camera("GEV-IF", "GEV-AREA");
        Acquisition acquisition(camera, "area_scan", AreaScanFrame);
        acquisition.start();
        QVERIFY2(acquisition.info(acquisition.next(), row.command) != row.value, row.fault);
        QVERIFY2(acquisition.info(acquisition.next(), row.command) == row.value, row.fault);
    }
}

void TestTestProducerFaults::spoilsTexts()
{
    const struct
    {
        const char *line;
        int calls; ///< of five, that are spoilt
        QByteArray outcome;
    } rows[] = {
        {"fail IFGetDeviceID -1010", 5, "-1010"},    {"fail IFGetDeviceID -1010 1", 1, "-1010"},
        {"lack IFGetDeviceID", 5, "-1003"},          {"text IFGetDeviceID a\\xFF b", 5, "0 5 a\xFF b."},
        {"odd-ids on", 5, "0 11 GEV-AREA\xFF\xE4."}, {"unterminated IFGetDeviceID", 5, "0 8 GEV-AREA"},
        {"grow IFGetDeviceID 2", 2, "-1016"},        {"fail IFGetDeviceID:7 -1010", 0, ""},
    };
    for (const auto &row : rows) {
        script(row.line);
        const Opened camera("GEV-IF", "GEV-PROFILER"); // not the one that is asked for
        for (int i = 0; i < 5; ++i) {
            char id[20] = {};
            std::size_t size = row.line[0] == 'g' ? 9 : sizeof id;
            const GC_ERROR error = CALL(IFGetDeviceID)(camera.interface, 0, id, &size);
            QByteArray got = QByteArray::number(error);
            if (error == GC_ERR_SUCCESS)
                got += ' ' + QByteArray::number(qulonglong(size)) + ' ' + QByteArray(id, int(size)).replace('\0', '.');
            QVERIFY2(got == (i < row.calls ? row.outcome : QByteArray("0 9 GEV-AREA.")), row.line + (" gives " + got));
        }
        script("clear");
    }
}

void TestTestProducerFaults::spoilsNumbersAndTransfers()
{
    const Opened camera("GEV-IF", "GEV-AREA");
    const auto frequency = [&camera] { return told(CALL(DevGetInfo), camera.device, DEVICE_INFO_TIMESTAMP_FREQUENCY); };
    QCOMPARE(frequency(), QByteArray("\0\xCA\x9A\x3B\0\0\0\0", 8));
    script("type DevGetInfo:9 6 2"); // UINT32, for the two calls that ask
    QCOMPARE(frequency(), QByteArray("\0\xCA\x9A\x3B", 4));
    script("value DevGetInfo:9 0x8000000000000000");
    QCOMPARE(frequency(), QByteArray("\0\0\0\0\0\0\0\x80", 8));
    script("size DevGetInfo:9 0x8000000000000000");
    std::size_t size = 0;
    CALL(DevGetInfo)(camera.device, DEVICE_INFO_TIMESTAMP_FREQUENCY, nullptr, nullptr, &size);
    QCOMPARE(size, std::size_t(1) << 63);

    qint32 value = 0;
    const auto read = [&](quint64 address) {
        size = sizeof value;
        return camera.read(address, &value, &size);
    };
    script("short GCReadPort:4 2; align GCReadPort 4; slow GCReadPort:8 50");
    QCOMPARE(read(0), GC_ERROR(GC_ERR_SUCCESS));
    QCOMPARE(size, std::size_t(4));
    QCOMPARE(read(4), GC_ERROR(GC_ERR_SUCCESS));
    QCOMPARE(size, std::size_t(2));
    QCOMPARE(read(2), GC_ERROR(GC_ERR_INVALID_ADDRESS));
    QElapsedTimer clock;
    clock.start();
    read(8);
    QVERIFY(clock.elapsed() >= 49);
}

void TestTestProducerFaults::unplugged()
{
    uint32_t count = 0;
    bool8_t changed = 0;
    {
        const Opened camera("GEV-IF", "GEV-AREA");
        script("vanish GEV-AREA");
        QCOMPARE(camera.write(0, 0), GC_ERROR(GC_ERR_IO));
        CALL(IFUpdateDeviceList)(camera.interface, &changed, 100);
        CALL(IFGetNumDevices)(camera.interface, &count);
        QCOMPARE(count + changed, 2u);
        script("return GEV-AREA");
        QCOMPARE(camera.write(0, 0), GC_ERROR(GC_ERR_IO)); // opened before, it has lost its link
    }
    QCOMPARE(Opened("GEV-IF", "GEV-AREA").error, GC_ERROR(GC_ERR_SUCCESS));
    script("vanish CXP-IF");
    TL_HANDLE system = nullptr;
    CALL(TLOpen)(&system);
    CALL(TLUpdateInterfaceList)(system, nullptr, 100);
    CALL(TLGetNumInterfaces)(system, &count);
    QCOMPARE(count, 1u);
    CALL(TLClose)(system);
}

void TestTestProducerFaults::heldByOthers()
{
    script("hold GEV-AREA control");
    QCOMPARE(Opened("GEV-IF", "GEV-AREA").error, GC_ERROR(GC_ERR_ACCESS_DENIED));
    {
        const Opened camera("GEV-IF", "GEV-AREA", DEVICE_ACCESS_READONLY);
        qint32 value = 0;
        std::size_t size = sizeof value;
        QCOMPARE(camera.read(0, &value, &size), GC_ERROR(GC_ERR_SUCCESS));
        QCOMPARE(camera.write(0, 0), GC_ERROR(GC_ERR_ACCESS_DENIED));
    }
    script("hold GEV-AREA exclusive");
    QCOMPARE(Opened("GEV-IF", "GEV-AREA", DEVICE_ACCESS_READONLY).error, GC_ERROR(GC_ERR_ACCESS_DENIED));
}

void TestTestProducerFaults::waitingEnds()
{
    const Opened camera("GEV-IF", "GEV-AREA");
    Acquisition acquisition(camera, "area_scan", AreaScanFrame);
    std::thread waiting([&acquisition] { acquisition.next(GENTL_INFINITE); });
    CALL(EventKill)(acquisition.event());
    waiting.join();
    QCOMPARE(acquisition.error, GC_ERROR(GC_ERR_ABORT));
}

void TestTestProducerFaults::hangsInOneFunction()
{
    const Opened camera("GEV-IF", "GEV-AREA");
    script("hang GCReadPort");
    GC_ERROR error = GC_ERR_ERROR;
    std::atomic_bool done{false};
    std::thread hanging([&] {
        qint32 value = 0;
        std::size_t size = sizeof value;
        error = camera.read(0, &value, &size);
        done = true;
    });
    QTRY_COMPARE(script("calls GCReadPort"), QByteArray("1"));
    QCOMPARE(camera.write(0x7000000, 0), GC_ERROR(GC_ERR_INVALID_ADDRESS)); // others go on
    QVERIFY(!done);
    script("release");
    hanging.join();
    QCOMPARE(error, GC_ERROR(GC_ERR_SUCCESS));
}

void TestTestProducerFaults::crashes()
{
    QCOMPARE(CALL(GCCloseLib)(), GC_ERROR(GC_ERR_SUCCESS));
    qputenv("PARAMTER_TEST_SCRIPT", "crash GCInitLib; nothing");
    const pid_t child = fork();
    if (child == 0) {
        std::signal(SIGABRT, SIG_DFL);
        CALL(GCInitLib)();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    qunsetenv("PARAMTER_TEST_SCRIPT");
    QVERIFY(WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT);
    QCOMPARE(CALL(GCInitLib)(), GC_ERROR(GC_ERR_SUCCESS));
}

QTEST_APPLESS_MAIN(TestTestProducerFaults)
#include "tst_TestProducerFaults.moc"
