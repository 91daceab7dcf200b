// SPDX-License-Identifier: MIT
// The test producer itself, through the C interface: what is true of it is what its consumers are tested against.
#include <atomic>
#include <cmath>
#include <csignal>
#include <cstring>
#include <dlfcn.h>
#include <functional>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include <QFile>
#include <QRegularExpression>
#include <QtTest>

#include "tests/gentl/TestConsumer.h"

using namespace GenTL;
using namespace TestConsumer;

namespace {

constexpr std::size_t AreaScanFrame = 2448 * 2048;
constexpr std::size_t StructuredLightFrame = 640 * 480 * 12;

} // namespace

class TestTestProducer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void exportsWhatTheHeaderDeclares();
    void listsWhatWasSearched();
    void refusesWhatIsNotAllowed();
    void readsAndWritesRegisters();
    void descriptionsAreWhereTheUrlsSay_data();
    void descriptionsAreWhereTheUrlsSay();
    void acquires();
    void isFastEnough();
    void acquiresPartsAndHeights();
    void chunksFollowTheImage();
    void spoilsFrames();
    void spoilsTexts();
    void spoilsNumbersAndTransfers();
    void unplugged();
    void heldByOthers();
    void raisesEvents();
    void waitingEnds();
    void crashes();
};

void TestTestProducer::initTestCase()
{
    TestConsumer::library = dlopen(TEST_PRODUCER, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    QVERIFY2(TestConsumer::library, dlerror());
    TL_HANDLE system = nullptr;
    QCOMPARE(CALL(TLOpen)(&system), GC_ERROR(GC_ERR_NOT_INITIALIZED));
}

void TestTestProducer::init()
{
    script("clear; power-up");
    QCOMPARE(CALL(GCInitLib)(), GC_ERROR(GC_ERR_SUCCESS));
}

void TestTestProducer::cleanup()
{
    QCOMPARE(script("open"), QByteArray());
    QCOMPARE(script("complaints"), QByteArray());
    QCOMPARE(CALL(GCCloseLib)(), GC_ERROR(GC_ERR_SUCCESS));
}

void TestTestProducer::exportsWhatTheHeaderDeclares()
{
    QFile header(QStringLiteral(GENTL_HEADER));
    QVERIFY(header.open(QIODevice::ReadOnly));
    const QRegularExpression function(QStringLiteral("^GC_ERROR (\\w+)\\("), QRegularExpression::MultilineOption);
    int count = 0;
    for (auto match = function.globalMatch(QString::fromUtf8(header.readAll())); match.hasNext(); ++count) {
        const QByteArray name = match.next().captured(1).toUtf8();
        QVERIFY2(dlsym(TestConsumer::library, name.constData()), name.constData());
    }
    QCOMPARE(count, 64);
}

void TestTestProducer::listsWhatWasSearched()
{
    TL_HANDLE system = nullptr;
    IF_HANDLE interface = nullptr;
    uint32_t count = 7;
    bool8_t changed = 0;
    CALL(TLOpen)(&system);
    CALL(TLGetNumInterfaces)(system, &count);
    QCOMPARE(count, 0u); // before the first search
    CALL(TLUpdateInterfaceList)(system, &changed, 100);
    CALL(TLGetNumInterfaces)(system, &count);
    QCOMPARE(count + changed, 3u);
    QCOMPARE(CALL(TLOpenInterface)(system, "GEV-IF", &interface), GC_ERROR(GC_ERR_SUCCESS));
    CALL(IFUpdateDeviceList)(interface, &changed, 100);
    CALL(IFUpdateDeviceList)(interface, &changed, 100);
    CALL(IFGetNumDevices)(interface, &count);
    QCOMPARE(count, 2u);
    QCOMPARE(changed, bool8_t(0)); // since the last search
    QCOMPARE(told(CALL(TLGetInterfaceInfo), system, "GEV-IF", INTERFACE_INFO_TLTYPE), QByteArray("GEV"));
    QCOMPARE(told(CALL(IFGetDeviceInfo), interface, "GEV-AREA", DEVICE_INFO_SERIAL_NUMBER), QByteArray("SIM-AREA-01"));
    TL_HANDLE parent = nullptr;
    CALL(IFGetParentTL)(interface, &parent);
    QCOMPARE(parent, system);
    CALL(IFClose)(interface);
    CALL(TLClose)(system);
}

void TestTestProducer::refusesWhatIsNotAllowed()
{
    void *handle = nullptr;
    const Opened camera("GEV-IF", "GEV-AREA");
    DS_HANDLE stream = nullptr;
    CALL(DevOpenDataStream)(camera.device, "Stream0", &stream);
    alignas(64) static char memory[128];
    BUFFER_HANDLE buffer = nullptr;
    CALL(DSAnnounceBuffer)(stream, memory, 64, nullptr, &buffer);
    CALL(DSQueueBuffer)(stream, buffer);
    const struct
    {
        const char *what;
        GC_ERROR_LIST expected;
        std::function<GC_ERROR()> call;
    } rows[] = {
        {"second init", GC_ERR_RESOURCE_IN_USE, [] { return CALL(GCInitLib)(); }},
        {"second system", GC_ERR_RESOURCE_IN_USE, [&] { return CALL(TLOpen)(&handle); }},
        {"second interface", GC_ERR_RESOURCE_IN_USE,
         [&] { return CALL(TLOpenInterface)(camera.system, "GEV-IF", &handle); }},
        {"second device", GC_ERR_RESOURCE_IN_USE,
         [&] { return CALL(IFOpenDevice)(camera.interface, "GEV-AREA", DEVICE_ACCESS_CONTROL, &handle); }},
        {"second stream", GC_ERR_RESOURCE_IN_USE,
         [&] { return CALL(DevOpenDataStream)(camera.device, "Stream0", &handle); }},
        {"unknown device", GC_ERR_INVALID_ID,
         [&] { return CALL(IFOpenDevice)(camera.interface, "X", DEVICE_ACCESS_CONTROL, &handle); }},
        {"no access asked for", GC_ERR_INVALID_PARAMETER,
         [&] { return CALL(IFOpenDevice)(camera.interface, "GEV-PROFILER", DEVICE_ACCESS_NONE, &handle); }},
        {"another module's handle", GC_ERR_INVALID_HANDLE, [&] { return CALL(TLClose)(camera.device); }},
        {"no handle", GC_ERR_INVALID_HANDLE, [] { return CALL(DevClose)(nullptr); }},
        {"buffer not aligned", GC_ERR_INVALID_BUFFER,
         [&] { return CALL(DSAnnounceBuffer)(stream, memory + 1, 64, nullptr, &handle); }},
        {"buffer announced twice", GC_ERR_RESOURCE_IN_USE,
         [&] { return CALL(DSAnnounceBuffer)(stream, memory, 64, nullptr, &handle); }},
        {"buffer queued twice", GC_ERR_BUSY, [&] { return CALL(DSQueueBuffer)(stream, buffer); }},
        {"queued buffer revoked", GC_ERR_BUSY, [&] { return CALL(DSRevokeBuffer)(stream, buffer, nullptr, nullptr); }},
        {"too few buffers", GC_ERR_INVALID_BUFFER,
         [&] { return CALL(DSStartAcquisition)(stream, ACQ_START_FLAGS_DEFAULT, GENTL_INFINITE); }},
        {"events of the wrong module", GC_ERR_NOT_IMPLEMENTED,
         [&] { return CALL(GCRegisterEvent)(camera.device, EVENT_NEW_BUFFER, &handle); }},
    };
    for (const auto &row : rows) {
        QVERIFY2(row.call() == row.expected, row.what);
        GC_ERROR last = 0;
        std::size_t size = 0;
        CALL(GCGetLastError)(&last, nullptr, &size);
        QVERIFY2(last == row.expected && size > 10, row.what);
    }
    CALL(DSClose)(stream);
    QVERIFY(script("complaints").contains("a buffer is open"));
    QCOMPARE(CALL(DSClose)(stream), GC_ERROR(GC_ERR_INVALID_HANDLE)); // a stale one
    script("clear");
}

void TestTestProducer::readsAndWritesRegisters()
{
    const Opened camera("GEV-IF", "GEV-AREA");
    const auto registers = registersOf("area_scan");
    qint32 value = 0;
    std::size_t size = sizeof value;
    QCOMPARE(camera.write(registers["Width"], 800), GC_ERROR(GC_ERR_SUCCESS));
    QCOMPARE(camera.read(registers["Width"], &value, &size), GC_ERROR(GC_ERR_SUCCESS));
    QCOMPARE(value, 800);
    QCOMPARE(camera.read(0x7000000, &value, &size), GC_ERROR(GC_ERR_INVALID_ADDRESS));

    qint32 height = 0;
    PORT_REGISTER_STACK_ENTRY entries[] = {{registers["Width"], &value, 4},
                                           {registers["Height"], &height, 4},
                                           {0x7000000, &height, 4},
                                           {registers["Width"], &value, 4}};
    std::size_t count = 4;
    QCOMPARE(CALL(GCReadPortStacked)(camera.port, entries, &count), GC_ERROR(GC_ERR_INVALID_ADDRESS));
    QCOMPARE(count, std::size_t(2)); // those before the bad one
    QCOMPARE(height, 2048);

    const QByteArray enumerated = told(CALL(GCGetPortInfo), camera.interface, PORT_INFO_MODULE);
    QCOMPARE(enumerated, QByteArray("TLInterface"));
}

void TestTestProducer::descriptionsAreWhereTheUrlsSay_data()
{
    QTest::addColumn<uint32_t>("count");
    QTest::addColumn<QString>("pattern");
    QTest::newRow("local") << 1u
                           << QStringLiteral("^Local:///area_scan\\.xml;(\\w+);(\\w+)\\?SchemaVersion=1\\.1\\.0$");
    QTest::newRow("plain") << 1u << QStringLiteral("^Local:area_scan\\.xml;(\\w+);(\\w+)$");
    QTest::newRow("zip") << 1u << QStringLiteral("^Local:///area_scan\\.zip;(\\w+);(\\w+)\\?");
    QTest::newRow("several") << 3u << QStringLiteral("^local:///area_scan\\.xml;(\\w+);(\\w+)\\?");
    QTest::newRow("none") << 0u << QStringLiteral("^Local:area_scan\\.xml;(\\w+);(\\w+)$");
    QTest::newRow("file") << 1u << QStringLiteral("^file://(/.*%20.*/area_scan\\.xml)$");
}

void TestTestProducer::descriptionsAreWhereTheUrlsSay()
{
    QFETCH(uint32_t, count);
    QFETCH(QString, pattern);
    script(QByteArray("urls ") + QTest::currentDataTag());
    const Opened camera("GEV-IF", "GEV-AREA");
    uint32_t found = 99;
    CALL(GCGetNumPortURLs)(camera.port, &found);
    QCOMPARE(found, count);
    char single[1000] = {};
    std::size_t size = sizeof single;
    CALL(GCGetPortURL)(camera.port, single, &size);
    const QByteArray url =
        count == 0 ? QByteArray(single) : told(CALL(GCGetPortURLInfo), camera.port, count - 1, URL_INFO_URL);
    const QRegularExpressionMatch match = QRegularExpression(pattern).match(QString::fromUtf8(url));
    QVERIFY2(match.hasMatch(), url.constData());
    if (match.captured(2).isEmpty()) {
        QVERIFY(QFile::exists(match.captured(1).replace(QStringLiteral("%20"), QStringLiteral(" "))));
        return;
    }
    QByteArray text(match.captured(2).toInt(nullptr, 16), '\0');
    size = std::size_t(text.size());
    QCOMPARE(camera.read(match.captured(1).toULongLong(nullptr, 16), text.data(), &size), GC_ERROR(GC_ERR_SUCCESS));
    QVERIFY(text.startsWith(url.contains(".zip") ? "PK" : "<?xml"));
}

void TestTestProducer::acquires()
{
    const Opened camera("GEV-IF", "GEV-AREA");
    Acquisition acquisition(camera, "area_scan", AreaScanFrame);
    QCOMPARE(number(CALL(DSGetInfo), acquisition.stream, STREAM_INFO_DEFINES_PAYLOADSIZE), quint64(0));
    script("rate GEV-AREA 100");
    QCOMPARE(acquisition.start(20), GC_ERROR(GC_ERR_SUCCESS));
    uchar first = 0;
    for (quint64 id = 1; id <= 20; ++id) {
        const BUFFER_HANDLE buffer = acquisition.next();
        QVERIFY2(buffer, qPrintable(QString::number(acquisition.error)));
        QCOMPARE(acquisition.info(buffer, BUFFER_INFO_FRAMEID), id);
        QCOMPARE(acquisition.info(buffer, BUFFER_INFO_WIDTH), quint64(2448));
        QCOMPARE(acquisition.info(buffer, BUFFER_INFO_PIXELFORMAT), quint64(0x01080001));
        QCOMPARE(acquisition.info(buffer, BUFFER_INFO_IS_INCOMPLETE), quint64(0));
        const auto *pixels = reinterpret_cast<const uchar *>(acquisition.info(buffer, BUFFER_INFO_BASE));
        QCOMPARE(pixels[AreaScanFrame - 1], uchar(pixels[0] + AreaScanFrame - 1)); // a ramp ...
        QVERIFY(id == 1 || pixels[0] == uchar(first + 1)); // ... that moves
        first = pixels[0];
        CALL(DSQueueBuffer)(acquisition.stream, buffer);
    }
    QVERIFY(!acquisition.next(200)); // no more than were wanted
    QCOMPARE(acquisition.error, GC_ERROR(GC_ERR_TIMEOUT));
    script("rate GEV-AREA 0");
    QCOMPARE(acquisition.start(), GC_ERROR(GC_ERR_SUCCESS)); // with the pictures of the simulation
    QVERIFY(acquisition.next());
}

void TestTestProducer::isFastEnough()
{
    script("rate GEV-AREA 60; register GEV-AREA Width 1920; register GEV-AREA Height 1200");
    const Opened camera("GEV-IF", "GEV-AREA");
    Acquisition acquisition(camera, "area_scan", 1920 * 1200);
    acquisition.start();
    QElapsedTimer clock;
    clock.start();
    for (quint64 id = 1; id <= 90; ++id) {
        const BUFFER_HANDLE buffer = acquisition.next();
        QCOMPARE(acquisition.info(buffer, BUFFER_INFO_FRAMEID), id);
        CALL(DSQueueBuffer)(acquisition.stream, buffer);
    }
    const qint64 passed = clock.elapsed();
    QVERIFY2(passed > 1300 && passed < 3000, qPrintable(QString::number(passed))); // 1.5 s and a busy machine
}

void TestTestProducer::acquiresPartsAndHeights()
{
    const Opened camera("CXP-IF", "CXP-SL");
    Acquisition acquisition(camera, "structured_light", StructuredLightFrame);
    QCOMPARE(number(CALL(DSGetInfo), acquisition.stream, STREAM_INFO_PAYLOAD_SIZE), quint64(StructuredLightFrame));
    acquisition.start();
    const BUFFER_HANDLE buffer = acquisition.next();
    QVERIFY(buffer);
    QCOMPARE(acquisition.info(buffer, BUFFER_INFO_PAYLOADTYPE), quint64(PAYLOAD_TYPE_MULTI_PART));
    uint32_t parts = 0;
    CALL(DSGetNumBufferParts)(acquisition.stream, buffer, &parts);
    QCOMPARE(parts, 2u);
    QCOMPARE(acquisition.part(buffer, 0, BUFFER_PART_INFO_DATA_TYPE), quint64(PART_DATATYPE_3D_IMAGE));
    QCOMPARE(acquisition.part(buffer, 1, BUFFER_PART_INFO_DATA_TYPE), quint64(PART_DATATYPE_2D_IMAGE));
    QCOMPARE(acquisition.part(buffer, 1, BUFFER_PART_INFO_DATA_SIZE), quint64(640 * 480));
    QCOMPARE(acquisition.part(buffer, 1, BUFFER_PART_INFO_BASE) - acquisition.info(buffer, BUFFER_INFO_BASE),
             quint64(640 * 480 * 4));
    const auto *heights = reinterpret_cast<const float *>(acquisition.part(buffer, 0, BUFFER_PART_INFO_BASE));
    const auto measured = std::count_if(heights, heights + 640 * 480, [](float z) { return std::fabs(z) < 100; });
    QVERIFY2(measured > 640 * 480 / 2, qPrintable(QString::number(measured)));
}

void TestTestProducer::chunksFollowTheImage()
{
    script("register GEV-AREA ChunkModeActive 1; rate GEV-AREA 50");
    const Opened camera("GEV-IF", "GEV-AREA");
    Acquisition acquisition(camera, "area_scan", AreaScanFrame + 64);
    acquisition.start();
    for (qint64 id = 1; id <= 3; ++id) {
        const BUFFER_HANDLE buffer = acquisition.next();
        SINGLE_CHUNK_DATA chunk{};
        std::size_t count = 1;
        QCOMPARE(CALL(DSGetBufferChunkData)(acquisition.stream, buffer, &chunk, &count), GC_ERROR(GC_ERR_SUCCESS));
        QCOMPARE(quint64(chunk.ChunkID), quint64(0xF00D));
        const auto registers = registersOf("area_scan");
        qint64 frame = 0;
        std::memcpy(&frame,
                    reinterpret_cast<const char *>(acquisition.info(buffer, BUFFER_INFO_BASE)) + chunk.ChunkOffset
                        + (registers["ChunkFrameID"] - registers["ChunkWidth"]),
                    sizeof frame);
        QCOMPARE(frame, id);
    }
}

void TestTestProducer::spoilsFrames()
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

void TestTestProducer::spoilsTexts()
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

void TestTestProducer::spoilsNumbersAndTransfers()
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

void TestTestProducer::unplugged()
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

void TestTestProducer::heldByOthers()
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

void TestTestProducer::raisesEvents()
{
    const Opened camera("GEV-IF", "GEV-AREA");
    EVENT_HANDLE invalidate = nullptr;
    EVENT_HANDLE remote = nullptr;
    CALL(GCRegisterEvent)(camera.port, EVENT_FEATURE_INVALIDATE, &invalidate);
    CALL(GCRegisterEvent)(camera.device, EVENT_REMOTE_DEVICE, &remote);
    QCOMPARE(script("invalidate GEV-AREA Gain"), QByteArray("1"));
    QCOMPARE(script("remote-event GEV-AREA 0x9001 CAFE"), QByteArray("1"));
    char data[100] = {};
    std::size_t size = sizeof data;
    QCOMPARE(CALL(EventGetData)(invalidate, data, &size, 1000), GC_ERROR(GC_ERR_SUCCESS));
    QCOMPARE(told(CALL(EventGetDataInfo), invalidate, data, size, EVENT_DATA_ID), QByteArray("Gain"));
    size = sizeof data;
    QCOMPARE(CALL(EventGetData)(remote, data, &size, 1000), GC_ERROR(GC_ERR_SUCCESS));
    QCOMPARE(told(CALL(EventGetDataInfo), remote, data, size, EVENT_DATA_ID), QByteArray("9001"));
    QCOMPARE(told(CALL(EventGetDataInfo), remote, data, size, EVENT_DATA_VALUE), QByteArray("\xCA\xFE"));
    CALL(GCUnregisterEvent)(camera.port, EVENT_FEATURE_INVALIDATE);
    CALL(GCUnregisterEvent)(camera.device, EVENT_REMOTE_DEVICE);
}

void TestTestProducer::waitingEnds()
{
    const Opened camera("GEV-IF", "GEV-AREA");
    {
        Acquisition acquisition(camera, "area_scan", AreaScanFrame);
        std::thread waiting([&acquisition] { acquisition.next(GENTL_INFINITE); });
        CALL(EventKill)(acquisition.event());
        waiting.join();
        QCOMPARE(acquisition.error, GC_ERROR(GC_ERR_ABORT));
    }
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

void TestTestProducer::crashes()
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

QTEST_APPLESS_MAIN(TestTestProducer)
#include "tst_TestProducer.moc"
