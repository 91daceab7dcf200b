// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstring>
#include <dlfcn.h>

#include <QByteArray>
#include <QHash>
#include <QObject>

#include "Devices/gentl/GenTL.h"
#include "tests/gentl/TestScript.h"

/// A consumer of the test producer, as plain as the C interface lets it be.
namespace TestConsumer {

/// The producer that is loaded.
extern void *library;

/// The producer's function of that name.
#define CALL(name) (reinterpret_cast<decltype(&::GenTL::name)>(dlsym(TestConsumer::library, #name)))

/// What the script answers to a line, see TestScript.h.
QByteArray script(const QByteArray &line);

/// A text or number by the usual two calls; empty if one of them fails.
template <class Function, class... Arguments>
QByteArray told(Function function, Arguments... arguments)
{
    GenTL::INFO_DATATYPE type = 0;
    std::size_t size = 0;
    if (function(arguments..., &type, nullptr, &size) != GenTL::GC_ERR_SUCCESS)
        return {};
    QByteArray data(int(size), '\0');
    if (function(arguments..., &type, data.data(), &size) != GenTL::GC_ERR_SUCCESS)
        return {};
    return type == GenTL::INFO_DATATYPE_STRING && data.endsWith('\0') ? data.chopped(1) : data;
}

template <class Function, class... Arguments>
quint64 number(Function function, Arguments... arguments)
{
    const QByteArray data = told(function, arguments...);
    quint64 value = 0;
    std::memcpy(&value, data.constData(), std::min(size_t(data.size()), sizeof value));
    return value;
}

/// Where the registers of a camera are, as its description places them.
QHash<QByteArray, quint64> registersOf(const char *description);

/// A test that has the library initialised, and the cameras as they are when they are switched on. It fails when a test
/// function leaves something open, or has made the producer complain.
class LoadedProducer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
};

constexpr std::size_t AreaScanFrame = 2448 * 2048; // bytes

/// A camera opened down to its port.
struct Opened
{
    Opened(const char *interfaceId, const char *id, GenTL::DEVICE_ACCESS_FLAGS flags = GenTL::DEVICE_ACCESS_CONTROL);
    ~Opened();
    Opened(const Opened &) = delete;
    Opened &operator=(const Opened &) = delete;

    GenTL::GC_ERROR read(quint64 address, void *buffer, std::size_t *size) const
    {
        return CALL(GCReadPort)(port, address, buffer, size);
    }
    GenTL::GC_ERROR write(quint64 address, qint32 value) const
    {
        std::size_t size = sizeof value;
        return CALL(GCWritePort)(port, address, &value, &size);
    }

    GenTL::TL_HANDLE system = nullptr;
    GenTL::IF_HANDLE interface = nullptr;
    GenTL::DEV_HANDLE device = nullptr;
    GenTL::PORT_HANDLE port = nullptr;
    GenTL::GC_ERROR error = GenTL::GC_ERR_SUCCESS;
};

/// A stream with buffers that takes frames from an opened camera.
class Acquisition
{
public:
    Acquisition(const Opened &camera, const char *description, std::size_t size);
    ~Acquisition();
    Acquisition(const Acquisition &) = delete;
    Acquisition &operator=(const Acquisition &) = delete;

    GenTL::GC_ERROR start(quint64 frames = GenTL::GENTL_INFINITE);
    void stop();
    /// The next frame's buffer, or null. Queue it again.
    GenTL::BUFFER_HANDLE next(quint64 timeout = 10000);
    GenTL::EVENT_HANDLE event() const { return m_event; }

    quint64 info(GenTL::BUFFER_HANDLE buffer, GenTL::BUFFER_INFO_CMD command) const
    {
        return number(CALL(DSGetBufferInfo), stream, buffer, command);
    }
    quint64 part(GenTL::BUFFER_HANDLE buffer, uint32_t index, GenTL::BUFFER_PART_INFO_CMD command) const
    {
        return number(CALL(DSGetBufferPartInfo), stream, buffer, index, command);
    }

    GenTL::DS_HANDLE stream = nullptr;
    GenTL::GC_ERROR error = GenTL::GC_ERR_SUCCESS; ///< of the last wait

private:
    static constexpr int Buffers = 4;

    const Opened &m_camera;
    QHash<QByteArray, quint64> m_registers;
    GenTL::EVENT_HANDLE m_event = nullptr;
    void *m_memory[Buffers] = {};
};

} // namespace TestConsumer
