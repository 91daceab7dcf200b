// SPDX-License-Identifier: MIT
// The test producer itself, through the C interface: what is true of it is what its consumers are tested against.
#include <algorithm>
#include <cmath>
#include <functional>

#include <QFile>
#include <QRegularExpression>
#include <QUrl>
#include <QtTest>

#include "tests/gentl/TestConsumer.h"

using namespace GenTL;
using namespace TestConsumer;

namespace {

constexpr std::size_t StructuredLightFrame = 640 * 480 * 12;

} // namespace

class TestTestProducer : public LoadedProducer
{
    Q_OBJECT

private Q_SLOTS:
    void exportsWhatTheHeaderDeclares();
    void listsWhatWasSearched();
    void refusesWhatIsNotAllowed();
    void readsAndWritesRegisters();
    void descriptionsAreWhereTheUrlsSay();
    void acquires();
    void isFastEnough();
    void sendsEveryPixelFormat();
    void acquiresPartsAndHeights();
    void acquiresProfiles();
    void chunksFollowTheImage();
    void raisesEvents();
};

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

void TestTestProducer::descriptionsAreWhereTheUrlsSay()
{
    const struct
    {
        const char *mode;
        uint32_t count;
        const char *pattern; ///< of the last URL
    } rows[] = {
        {"local", 1, "^Local:///area_scan\\.xml;(\\w+);(\\w+)\\?SchemaVersion=1\\.1\\.0$"},
        {"plain", 1, "^Local:area_scan\\.xml;(\\w+);(\\w+)$"},
        {"zip", 1, "^Local:///area_scan\\.zip;(\\w+);(\\w+)\\?"},
        {"several", 3, "^local:///area_scan\\.xml;(\\w+);(\\w+)\\?"},
        {"none", 0, "^Local:area_scan\\.xml;(\\w+);(\\w+)$"},
        {"file", 1, "^file://(/.*%20.*/area_scan\\.xml)$"},
    };
    const Opened camera("GEV-IF", "GEV-AREA");
    for (const auto &row : rows) {
        script(QByteArray("urls ") + row.mode);
        uint32_t count = 99;
        CALL(GCGetNumPortURLs)(camera.port, &count);
        QVERIFY2(count == row.count, row.mode);
        char single[1000] = {};
        std::size_t size = sizeof single;
        CALL(GCGetPortURL)(camera.port, single, &size);
        const QByteArray url =
            count == 0 ? QByteArray(single) : told(CALL(GCGetPortURLInfo), camera.port, count - 1, URL_INFO_URL);
        const auto match = QRegularExpression(QLatin1String(row.pattern)).match(QString::fromUtf8(url));
        QVERIFY2(match.hasMatch(), url.constData());
        if (match.captured(2).isEmpty()) {
            QVERIFY2(QFile::exists(QUrl(QString::fromUtf8(url)).toLocalFile()), url.constData());
            continue;
        }
        QByteArray text(match.captured(2).toInt(nullptr, 16), '\0');
        size = std::size_t(text.size());
        const GC_ERROR error = camera.read(match.captured(1).toULongLong(nullptr, 16), text.data(), &size);
        QVERIFY2(error == GC_ERR_SUCCESS && text.startsWith(url.contains(".zip") ? "PK" : "<?xml"), row.mode);
    }
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

void TestTestProducer::sendsEveryPixelFormat()
{
    script("register GEV-AREA Width 64; register GEV-AREA Height 32");
    for (const quint64 format :
         {0x01080001, 0x01100003, 0x01100005, 0x010C0047, 0x01080009, 0x01100011, 0x02180014, 0x02180015, 0x02100032}) {
        const QByteArray name = QByteArray::number(format, 16);
        script("register GEV-AREA PixelFormat 0x" + name);
        const Opened camera("GEV-IF", "GEV-AREA");
        const std::size_t size = 64 * 32 * (format >> 16 & 0xFF) / 8;
        Acquisition acquisition(camera, "area_scan", size);
        acquisition.start();
        const BUFFER_HANDLE buffer = acquisition.next();
        QVERIFY2(acquisition.info(buffer, BUFFER_INFO_PIXELFORMAT) == format, name);
        QVERIFY2(acquisition.info(buffer, BUFFER_INFO_DATA_SIZE) == size, name);
        const auto *data = reinterpret_cast<const uchar *>(acquisition.info(buffer, BUFFER_INFO_BASE));
        QVERIFY2(std::any_of(data + size - 100, data + size, [](uchar byte) { return byte != 0; }), name);
    }
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

void TestTestProducer::acquiresProfiles()
{
    constexpr std::size_t Points = 2048 * 100;
    script("register GEV-PROFILER AcquisitionLineCount 100");
    for (const bool intensity : {false, true}) {
        script(intensity ? "register GEV-PROFILER DepthDataType 1" : "");
        const Opened camera("GEV-IF", "GEV-PROFILER");
        Acquisition acquisition(camera, "profiler", Points * (intensity ? 4 : 2));
        acquisition.start();
        const BUFFER_HANDLE buffer = acquisition.next();
        QCOMPARE(acquisition.info(buffer, BUFFER_INFO_DATA_SIZE), quint64(Points * (intensity ? 3 : 2)));
        QCOMPARE(acquisition.info(buffer, BUFFER_INFO_PAYLOADTYPE),
                 quint64(intensity ? PAYLOAD_TYPE_MULTI_PART : PAYLOAD_TYPE_IMAGE));
        QCOMPARE(intensity ? acquisition.part(buffer, 0, BUFFER_PART_INFO_DATA_FORMAT)
                           : acquisition.info(buffer, BUFFER_INFO_PIXELFORMAT),
                 quint64(0x011000B8));
        const auto *heights = reinterpret_cast<const quint16 *>(acquisition.info(buffer, BUFFER_INFO_BASE));
        QVERIFY(std::count_if(heights, heights + Points, [](quint16 z) { return z > 0; }) > int(Points / 2));
    }
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

QTEST_APPLESS_MAIN(TestTestProducer)
#include "tst_TestProducer.moc"
