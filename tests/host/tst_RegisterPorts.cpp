// SPDX-License-Identifier: MIT
#include <limits>

#include <QtTest>

#include "Devices/AlignedPort.h"
#include "Devices/LoadedNodeMap.h"
#include "Devices/SparseMemoryPort.h"
#include "support/MemoryPort.h"

namespace {

QByteArray read(GenApi::IPort &port, int64_t address, int length)
{
    QByteArray bytes(length, '?');
    port.Read(bytes.data(), address, length);
    return bytes;
}

void write(GenApi::IPort &port, int64_t address, const QByteArray &bytes)
{
    port.Write(bytes.constData(), address, bytes.size());
}

} // namespace

class tst_RegisterPorts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void alignedAccesses()
    {
        const struct
        {
            const char *name;
            int address, length;
            const char *reading, *writing;
        } rows[] = {{"whole words", 8, 8, "R0x8:8", "W0x8:8"},
                    {"short head", 8, 2, "R0x8:4", "R0x8:4 W0x8:4"},
                    {"inside a word", 9, 2, "R0x8:4", "R0x8:4 W0x8:4"},
                    {"to the end of a word", 9, 3, "R0x8:4", "R0x8:4 W0x8:4"},
                    {"across two words", 10, 4, "R0x8:8", "R0x8:4 R0xc:4 W0x8:8"},
                    {"odd start", 10, 10, "R0x8:12", "R0x8:4 W0x8:12"},
                    {"odd end", 8, 9, "R0x8:12", "R0x10:4 W0x8:12"}};
        for (const auto &row : rows) { // all accesses are of whole words
            auto device = std::make_unique<MemoryPort>();
            MemoryPort &memory = *device;
            AlignedPort port(std::move(device));
            QByteArray expected = "0123456789abcdefghijklmnopqrstuvwxyz";
            memory.pokeText(0, expected.toStdString(), 36);
            QVERIFY2(read(port, row.address, row.length) == expected.mid(row.address, row.length), row.name);
            QVERIFY2(memory.trace() == row.reading, row.name);

            memory.resetCounters();
            const QByteArray text(row.length, '#');
            write(port, row.address, text);
            QVERIFY2(memory.trace() == row.writing, row.name);
            QVERIFY2(memory.peekText(0, 36) == expected.replace(row.address, row.length, text).toStdString(), row.name);
        }
    }

    void swapsWordsForDescriptionsThatWantIt()
    {
        const QByteArray place = "<Length>8</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>";
        const QByteArray text = "<StringReg Name=\"Text\"><Address>0</Address>" + place + "</StringReg>";
        const QByteArray half = "<IntReg Name=\"Half\"><Address>2</Address>" + QByteArray(place).replace("8", "2")
            + "<Endianess>BigEndian</Endianess></IntReg>";
        const struct
        {
            QByteArray swap, bytes;
        } rows[] = {{"", "abcdefgh"},
                    {"<SwapEndianess>No</SwapEndianess>", "abcdefgh"},
                    {"<SwapEndianess>Yes</SwapEndianess>", "dcbahgfe"}};
        for (const auto &row : rows) {
            SparseMemoryPort memory;
            const LoadedNodeMap map("<RegisterDescription>" + text + half + "<Port Name=\"Device\">" + row.swap
                                        + "</Port></RegisterDescription>",
                                    memory);
            write(memory, 0, row.bytes);
            QVERIFY2(GenApi::CStringPtr(map.get()->GetNode("Text"))->GetValue() == "abcdefgh", row.swap);
            GenApi::CIntegerPtr(map.get()->GetNode("Half"))->SetValue('C' << 8 | 'D');
            QVERIFY2(read(memory, 0, 8) == QByteArray(row.bytes).replace('c', 'C').replace('d', 'D'), row.swap);
        }
    }

    void sparseMemoryRemembers()
    {
        constexpr auto Last = std::numeric_limits<qint64>::max();
        for (const qint64 address : {qint64(0), qint64(253), Last - 2, qint64(-3), -Last - 1}) { // pages, wraps, ends
            const QByteArray name = QByteArray::number(address);
            SparseMemoryPort memory;
            QVERIFY2(read(memory, address, 6) == QByteArray(6, '\0'), name);
            write(memory, address, "abcdef");
            QVERIFY2(read(memory, address, 7) == QByteArray("abcdef\0", 7), name);
            write(memory, address, "X");
            QVERIFY2(read(memory, address, 6) == QByteArray("Xbcdef"), name);
            memory.Read(nullptr, address, -1);
            memory.Write(nullptr, address, 0);
        }
    }
};

QTEST_APPLESS_MAIN(tst_RegisterPorts)
#include "tst_RegisterPorts.moc"
