// SPDX-License-Identifier: MIT
#include "tests/gentl/TestConsumer.h"

#include <cstdlib>

#include <QFile>
#include <QRegularExpression>
#include <QtTest>

using namespace GenTL;

namespace TestConsumer {

void *library = nullptr;

QByteArray script(const QByteArray &line)
{
    return reinterpret_cast<decltype(&paramter_test_script)>(dlsym(library, "paramter_test_script"))(line.constData());
}

QHash<QByteArray, quint64> registersOf(const char *description)
{
    QFile file(QStringLiteral(SIMULATION "/%1.xml").arg(QLatin1String(description)));
    QHash<QByteArray, quint64> found;
    if (!file.open(QIODevice::ReadOnly))
        return found;
    const QRegularExpression place(QStringLiteral("Name=\"(\\w+)Reg\">\\s*<Address>(\\w+)<"));
    for (auto match = place.globalMatch(QString::fromUtf8(file.readAll())); match.hasNext();) {
        const QRegularExpressionMatch one = match.next();
        found.insert(one.captured(1).toUtf8(), one.captured(2).toULongLong(nullptr, 0));
    }
    return found;
}

Opened::Opened(const char *interfaceId, const char *id, DEVICE_ACCESS_FLAGS flags)
{
    bool8_t changed = 0;
    CALL(TLOpen)(&system);
    CALL(TLUpdateInterfaceList)(system, &changed, 100);
    CALL(TLOpenInterface)(system, interfaceId, &interface);
    CALL(IFUpdateDeviceList)(interface, &changed, 100);
    error = CALL(IFOpenDevice)(interface, id, flags, &device);
    if (error == GC_ERR_SUCCESS)
        CALL(DevGetPort)(device, &port);
}

Opened::~Opened()
{
    if (device)
        CALL(DevClose)(device);
    CALL(IFClose)(interface);
    CALL(TLClose)(system);
}

Acquisition::Acquisition(const Opened &camera, const char *description, std::size_t size)
    : m_camera(camera), m_registers(registersOf(description))
{
    constexpr std::size_t Alignment = 64; // what the producer asks for
    CALL(DevOpenDataStream)(camera.device, "Stream0", &stream);
    CALL(GCRegisterEvent)(stream, EVENT_NEW_BUFFER, &m_event);
    for (void *&memory : m_memory) {
        BUFFER_HANDLE handle = nullptr;
        memory = std::aligned_alloc(Alignment, (size + Alignment - 1) / Alignment * Alignment);
        if (CALL(DSAnnounceBuffer)(stream, memory, size, this, &handle) == GC_ERR_SUCCESS)
            CALL(DSQueueBuffer)(stream, handle);
    }
}

Acquisition::~Acquisition()
{
    stop();
    CALL(DSFlushQueue)(stream, ACQ_QUEUE_ALL_DISCARD);
    BUFFER_HANDLE handle = nullptr;
    while (CALL(DSGetBufferID)(stream, 0, &handle) == GC_ERR_SUCCESS)
        CALL(DSRevokeBuffer)(stream, handle, nullptr, nullptr);
    CALL(GCUnregisterEvent)(stream, EVENT_NEW_BUFFER);
    CALL(DSClose)(stream);
    for (void *memory : m_memory)
        std::free(memory);
}

GC_ERROR Acquisition::start(quint64 frames)
{
    const GC_ERROR result = CALL(DSStartAcquisition)(stream, ACQ_START_FLAGS_DEFAULT, frames);
    m_camera.write(m_registers["TLParamsLocked"], 1);
    m_camera.write(m_registers["AcquisitionStart"], 1);
    return result;
}

void Acquisition::stop()
{
    m_camera.write(m_registers["AcquisitionStop"], 1);
    m_camera.write(m_registers["TLParamsLocked"], 0);
    CALL(DSStopAcquisition)(stream, ACQ_STOP_FLAGS_DEFAULT);
}

BUFFER_HANDLE Acquisition::next(quint64 timeout)
{
    EVENT_NEW_BUFFER_DATA data{};
    std::size_t size = sizeof data;
    error = CALL(EventGetData)(m_event, &data, &size, timeout);
    return error == GC_ERR_SUCCESS && data.pUserPointer == this ? data.BufferHandle : nullptr;
}

void LoadedProducer::initTestCase()
{
    library = dlopen(TEST_PRODUCER, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    QVERIFY2(library, dlerror());
    TL_HANDLE system = nullptr;
    QCOMPARE(CALL(TLOpen)(&system), GC_ERROR(GC_ERR_NOT_INITIALIZED));
}

void LoadedProducer::init()
{
    script("clear; power-up");
    QCOMPARE(CALL(GCInitLib)(), GC_ERROR(GC_ERR_SUCCESS));
}

void LoadedProducer::cleanup()
{
    const QByteArray open = script("open");
    const QByteArray complaints = script("complaints");
    QCOMPARE(CALL(GCCloseLib)(), GC_ERROR(GC_ERR_SUCCESS));
    QCOMPARE(open, QByteArray());
    QCOMPARE(complaints, QByteArray());
}

} // namespace TestConsumer
