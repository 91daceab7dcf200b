// SPDX-License-Identifier: MIT
#include <limits>
#include <vector>

#include <QtTest>

#include "Devices/AlignedPort.h"
#include "Devices/LoadedNodeMap.h"
#include "Devices/SparseMemoryPort.h"

namespace {

/// Refuses what a GigE Vision camera refuses, and notes the accesses as text.
class WordPort : public GenApi::IPort
{
public:
    WordPort(SparseMemoryPort &deviceMemory, QString &accessTrace) : m_memory(deviceMemory), m_trace(accessTrace) { }

    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void *buffer, int64_t address, int64_t length) override
    {
        note('R', address, length);
        m_memory.Read(buffer, address, length);
    }
    void Write(const void *buffer, int64_t address, int64_t length) override
    {
        note('W', address, length);
        m_memory.Write(buffer, address, length);
    }

private:
    void note(char direction, int64_t address, int64_t length)
    {
        if (address % 4 != 0 || length % 4 != 0)
            throw RUNTIME_EXCEPTION("bad alignment");
        m_trace += QStringLiteral("%1%2:%3 ").arg(QLatin1Char(direction)).arg(address).arg(length);
    }

    SparseMemoryPort &m_memory;
    QString &m_trace;
};

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
    void alignedAccesses_data();
    void alignedAccesses();
    void swapsWordsForDescriptionsThatWantIt_data();
    void swapsWordsForDescriptionsThatWantIt();
    void sparseMemoryRemembers_data();
    void sparseMemoryRemembers();
};

void tst_RegisterPorts::alignedAccesses_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("reading");
    QTest::addColumn<QString>("writing");
    const auto row = [](const char *name, int address, int length, const char *reading, const char *writing) {
        QTest::newRow(name) << address << length << QString::fromLatin1(reading) << QString::fromLatin1(writing);
    };
    row("whole words", 8, 8, "R8:8 ", "W8:8 ");
    row("short head", 8, 2, "R8:4 ", "R8:4 W8:4 ");
    row("inside a word", 9, 2, "R8:4 ", "R8:4 W8:4 ");
    row("to the end of a word", 9, 3, "R8:4 ", "R8:4 W8:4 ");
    row("across two words", 10, 4, "R8:8 ", "R8:4 R12:4 W8:8 ");
    row("odd start", 10, 10, "R8:12 ", "R8:4 W8:12 ");
    row("odd end", 8, 9, "R8:12 ", "R16:4 W8:12 ");
}

void tst_RegisterPorts::alignedAccesses()
{
    QFETCH(int, address);
    QFETCH(int, length);
    QFETCH(QString, reading);
    QFETCH(QString, writing);

    SparseMemoryPort memory;
    QByteArray expected = "0123456789abcdefghijklmnopqrstuvwxyz";
    write(memory, 0, expected);
    QString trace;
    AlignedPort port(std::make_unique<WordPort>(memory, trace));
    QCOMPARE(read(port, address, length), expected.mid(address, length));
    QCOMPARE(trace, reading);

    trace.clear();
    const QByteArray text(length, '#');
    write(port, address, text);
    QCOMPARE(trace, writing);
    expected.replace(address, length, text);
    QCOMPARE(read(memory, 0, expected.size()), expected);
}

void tst_RegisterPorts::swapsWordsForDescriptionsThatWantIt_data()
{
    QTest::addColumn<QByteArray>("swap");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("not said") << QByteArray() << QByteArray("abcdefgh");
    QTest::newRow("no") << QByteArray("<SwapEndianess>No</SwapEndianess>") << QByteArray("abcdefgh");
    QTest::newRow("yes") << QByteArray("<SwapEndianess>Yes</SwapEndianess>") << QByteArray("dcbahgfe");
}

void tst_RegisterPorts::swapsWordsForDescriptionsThatWantIt()
{
    QFETCH(QByteArray, swap);
    QFETCH(QByteArray, bytes);
    const QByteArray place = "<Length>8</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>";
    SparseMemoryPort memory;
    const LoadedNodeMap map("<RegisterDescription><StringReg Name=\"Text\"><Address>0</Address>" + place
                                + "</StringReg><IntReg Name=\"Half\"><Address>2</Address>"
                                + QByteArray(place).replace("8", "2")
                                + "<Endianess>BigEndian</Endianess></IntReg><Port Name=\"Device\">" + swap
                                + "</Port></RegisterDescription>",
                            memory);
    write(memory, 0, bytes);
    GenApi::CStringPtr text(map.get()->GetNode("Text"));
    QCOMPARE(QByteArray(text->GetValue()), QByteArray("abcdefgh"));
    GenApi::CIntegerPtr(map.get()->GetNode("Half"))->SetValue('C' << 8 | 'D');
    QCOMPARE(read(memory, 0, 8), bytes.replace('c', 'C').replace('d', 'D'));
}

void tst_RegisterPorts::sparseMemoryRemembers_data()
{
    QTest::addColumn<qint64>("address");
    QTest::newRow("start") << qint64(0);
    QTest::newRow("across a page") << qint64(253);
    QTest::newRow("last bytes") << std::numeric_limits<qint64>::max() - 2;
    QTest::newRow("wraps around") << qint64(-3);
    QTest::newRow("negative") << std::numeric_limits<qint64>::min();
}

void tst_RegisterPorts::sparseMemoryRemembers()
{
    QFETCH(qint64, address);
    SparseMemoryPort memory;
    QCOMPARE(read(memory, address, 6), QByteArray(6, '\0'));
    write(memory, address, "abcdef");
    QCOMPARE(read(memory, address, 7), QByteArray("abcdef\0", 7));
    write(memory, address, "X");
    QCOMPARE(read(memory, address, 6), QByteArray("Xbcdef"));
    memory.Read(nullptr, address, -1);
    memory.Write(nullptr, address, 0);
}

QTEST_APPLESS_MAIN(tst_RegisterPorts)
#include "tst_RegisterPorts.moc"
