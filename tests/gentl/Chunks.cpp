// SPDX-License-Identifier: MIT
#include "tests/gentl/Chunks.h"

#include "Simulation/Firmware.h"

namespace TestProducer {

namespace {

constexpr qint64 FirstRegister = 0x7424; // ChunkWidth
constexpr qint64 End = 0x7460; // after ChunkLineStatusAll

/// Where a register is: on the device, or in the chunk.
QByteArray place(qint64 address, int length, bool inChunk)
{
    const qint64 shown = inChunk ? address - FirstRegister : address;
    return "<Address>0x" + QByteArray::number(shown, 16).toUpper() + "</Address><Length>" + QByteArray::number(length)
        + "</Length><AccessMode>RO</AccessMode><pPort>" + (inChunk ? "FrameData" : "Device") + "</pPort>";
}

} // namespace

QByteArray chunks(const Firmware &firmware)
{
    return firmware.inspect([](const RegisterMemory &memory) {
        QByteArray data;
        if (memory.integer("ChunkModeActive") == 1) {
            data.fill('\0', ChunkBytes);
            memory.read(data.data(), FirstRegister, End - FirstRegister);
        }
        return data;
    });
}

QByteArray withChunkPort(QByteArray description)
{
    if (!description.contains("\"ChunkModeActive\""))
        return description;
    for (qint64 address = FirstRegister; address < End; address += 4) {
        for (const int length : {4, 8})
            description.replace(place(address, length, false), place(address, length, true));
    }
    const QByteArray port =
        "<Port Name=\"FrameData\"><ChunkID>" + QByteArray::number(ChunkId, 16) + "</ChunkID></Port>";
    return description.replace("</RegisterDescription>", port + "</RegisterDescription>");
}

} // namespace TestProducer
