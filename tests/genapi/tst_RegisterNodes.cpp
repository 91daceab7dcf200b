// SPDX-License-Identifier: MIT
// Bytes of the device as numbers and texts, and ports that fail, lie or answer short.
#include "Camera.h"
#include "TableRows.h"

#include <QTest>

#include <limits>

using namespace GenApi;

namespace {

const std::string BigEndianTag = "<Endianess>BigEndian</Endianess>";
const std::string IsSigned = "<Sign>Signed</Sign>";

std::string masked(const char *name, int lsb, int msb, const std::string &more = "", const char *mode = "RW")
{
    const bool isBig = more.find("BigEndian") != std::string::npos;
    return std::string("<MaskedIntReg Name=\"") + name + "\"><Address>0x10</Address><Length>4</Length><AccessMode>"
        + mode + "</AccessMode><pPort>Device</pPort><LSB>" + std::to_string(lsb) + "</LSB><MSB>" + std::to_string(msb)
        + "</MSB>" + (isBig ? "" : "<Endianess>LittleEndian</Endianess>") + more + "</MaskedIntReg>";
}

} // namespace

class tst_RegisterNodes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void integersOfEveryLength()
    {
        for (int length = 1; length <= 8; ++length) {
            Camera camera(intReg("U", "0x10", "", length) + intReg("S", "0x20", IsSigned, length)
                          + intReg("B", "0x30", BigEndianTag, length));
            const uint64_t bits = 0x8182838485868788u >> (64 - 8 * length);
            camera.port.poke(0x10, bits, length);
            camera.port.poke(0x20, bits, length);
            camera.port.pokeBigEndian(0x30, bits, length);
            QCOMPARE(camera.integer("U")->GetValue(), static_cast<int64_t>(bits));
            QCOMPARE(camera.integer("B")->GetValue(), static_cast<int64_t>(bits));
            const int64_t extended = static_cast<int64_t>(bits << (64 - 8 * length)) >> (64 - 8 * length);
            QCOMPARE(camera.integer("S")->GetValue(), extended);
            const int64_t greatest = static_cast<int64_t>(~uint64_t(0) >> (65 - 8 * length));
            QCOMPARE(camera.integer("S")->GetMax(), greatest);
            QCOMPARE(camera.integer("S")->GetMin(), -greatest - 1);
            QCOMPARE(camera.integer("U")->GetMin(), int64_t(0));
            QCOMPARE(camera.integer("U")->GetMax(),
                     length == 8 ? std::numeric_limits<int64_t>::max() : (int64_t(1) << (8 * length)) - 1);
            for (const char *name : {"S", "B"}) {
                camera.integer(name)->SetValue(greatest);
                QCOMPARE(camera.integer(name)->GetValue(false, true), greatest);
            }
            camera.integer("S")->SetValue(-2);
            QCOMPARE(camera.port.peek(0x20, length), (~uint64_t(0) >> (64 - 8 * length)) - 1);
            QCOMPARE(camera.port.peek(0x20 + length, 1), uint64_t(0));
        }
    }

    void maskedFields()
    {
        const struct
        {
            std::string node;
            uint64_t bytes; // little-endian word at the address
            int64_t value, min, max;
        } rows[] = {{masked("F", 4, 11), 0x50AB0, 0xAB, 0, 255},
                    {masked("F", 16, 18, IsSigned), 0x50AB0, -3, -4, 3},
                    {masked("F", 31, 31), 0x80000000u, 1, 0, 1},
                    {masked("F", 0, 31), 0xFFFFFFFFu, 0xFFFFFFFF, 0, 0xFFFFFFFF},
                    {masked("F", 11, 4), 0xAB0, 0xAB, 0, 255}, // swapped bounds
                    // big-endian counts from the other end
                    {masked("F", 31, 24, BigEndianTag), 0x44332211, 0x44, 0, 255},
                    {masked("F", 0, 0, BigEndianTag), 0x00000080, 1, 0, 1},
                    {masked("F", 28, 70), 0xF0000000u, 15, 0, 15}}; // beyond the register
        for (const auto &[node, bytes, value, min, max] : rows) {
            Camera camera(node);
            camera.port.poke(0x10, bytes);
            CIntegerPtr field = camera.integer("F");
            COMPARE_ROW(node, field->GetValue(), value);
            COMPARE_ROW(node, field->GetMin(), min);
            COMPARE_ROW(node, field->GetMax(), max);
            field->SetValue(0);
            COMPARE_ROW(node, field->GetValue(false, true), 0);
            field->SetValue(value);
            COMPARE_ROW(node, camera.port.peek(0x10), bytes);
        }
    }

    void maskedWritesKeepTheOtherBits()
    {
        Camera camera(masked("Low", 0, 7) + masked("High", 8, 15)
                      + masked("Fresh", 16, 23, "<Cachable>NoCache</Cachable>") + masked("Blind", 24, 31, "", "WO"));
        camera.port.poke(0x10, 0x44332211);
        camera.integer("Low")->SetValue(0xAA);
        QCOMPARE(camera.port.peek(0x10), uint64_t(0x443322AA));
        camera.integer("High")->SetValue(0xBB);
        QCOMPARE(camera.port.trace(), std::string("R0x10:4 W0x10:4 W0x10:4")); // the word is known by then
        QCOMPARE(camera.port.peek(0x10), uint64_t(0x4433BBAA));
        camera.port.poke(0x10, 0x99887766);
        camera.integer("Fresh")->SetValue(0xCC); // starts from the word as it is
        QCOMPARE(camera.port.peek(0x10), uint64_t(0x99CC7766));
        QCOMPARE(camera.integer("Low")->GetValue(), int64_t(0x66));
        camera.integer("Blind")->SetValue(1); // nothing to start from
        QCOMPARE(camera.port.peek(0x10), uint64_t(0x01000000));
    }

    void structuresShareOneRegister()
    {
        Camera camera(
            "<Integer Name=\"Block\"><Value>1</Value></Integer><StructReg><Address>0x10</Address>"
            "<IntSwissKnife Name=\"Offset\"><pVariable Name=\"B\">Block</pVariable><Formula>B * 4</Formula>"
            "</IntSwissKnife><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>"
            "<Endianess>LittleEndian</Endianess><StructEntry Name=\"A\"><LSB>0</LSB><MSB>7</MSB></StructEntry>"
            "<StructEntry Name=\"B\"><LSB>8</LSB><MSB>15</MSB></StructEntry>"
            "<StructEntry Name=\"C\"><Bit>31</Bit><AccessMode>RO</AccessMode></StructEntry></StructReg>");
        camera.port.poke(0x14, 0x80004321u);
        for (const auto &[name, value] : {std::pair("A", 0x21), {"B", 0x43}, {"C", 1}})
            COMPARE_ROW(name, camera.integer(name)->GetValue(), value);
        QCOMPARE(camera.port.reads, 1u);
        QCOMPARE(camera.access("B"), RW);
        QCOMPARE(camera.access("C"), RO);
        gcstring value, attribute;
        QVERIFY(camera.node("A")->GetProperty("NodeType", value, attribute));
        QCOMPARE(QByteArray(value), QByteArray("MaskedIntReg"));
        camera.integer("Block")->SetValue(2);
        camera.integer("B")->SetValue(5);
        QCOMPARE(camera.port.peek(0x18), uint64_t(0x500));
    }

    void unverifiedWritesAreCutToTheRegister()
    {
        Camera camera(intReg("A", "0x10", "", 2));
        camera.port.poke(0x12, 0x5555, 2);
        camera.integer("A")->SetValue(0x12345, false);
        QCOMPARE(camera.port.peek(0x10), uint64_t(0x55552345));
        QCOMPARE(camera.integer("A")->GetValue(), int64_t(0x2345));
    }

    void floatsOfBothWidths()
    {
        Camera camera(described(R"(
            FloatReg D; Address=0x10; Length=8; AccessMode=RW; pPort=Device; Endianess=LittleEndian
            FloatReg F; Address=0x18; Length=4; AccessMode=RW; pPort=Device; Endianess=LittleEndian
            FloatReg B; Address=0x20; Length=4; AccessMode=RW; pPort=Device; Endianess=BigEndian
            FloatReg Odd; Address=0x28; Length=3; AccessMode=RW; pPort=Device; Endianess=LittleEndian)"));
        camera.port.pokeDouble(0x10, 12.375);
        QCOMPARE(camera.real("D")->GetValue(), 12.375);
        camera.real("F")->SetValue(0.1);
        QCOMPARE(camera.real("F")->GetValue(), static_cast<double>(0.1f));
        QCOMPARE(camera.real("F")->GetMax(), static_cast<double>(std::numeric_limits<float>::max()));
        QVERIFY(!thrownBy([&] { camera.real("F")->SetValue(1e39); }).empty());
        camera.port.pokeBigEndian(0x20, 0x3FC00000, 4);
        QCOMPARE(camera.real("B")->GetValue(), 1.5);
        QVERIFY(!thrownBy([&] { camera.real("Odd")->GetValue(); }).empty());
        QVERIFY(!thrownBy([&] { camera.real("Odd")->SetValue(1); }).empty());
    }

    void stringsArePaddedAndEndAtTheFirstZero()
    {
        Camera camera(described(R"(
            String Text; pValue=TextReg
            StringReg TextReg; Address=0x10; Length=8; AccessMode=RW; pPort=Device)"));
        CStringPtr text = camera.string("Text");
        camera.port.pokeText(0x10, std::string("ab\0cd", 5), 8);
        QCOMPARE(QByteArray(text->GetValue()), QByteArray("ab"));
        text->SetValue("exactly8");
        QCOMPARE(QByteArray(text->GetValue(false, true)), QByteArray("exactly8"));
        text->SetValue("gr\xC3\xBC");
        QCOMPARE(camera.port.peekText(0x10, 8), std::string("gr\xC3\xBC"));
        QCOMPARE(camera.port.peek(0x14, 4), uint64_t(0));
        QCOMPARE(text->GetMaxLength(), int64_t(8));
        for (const bool verify : {true, false})
            QCOMPARE(thrownBy([&] { text->SetValue("too long!", verify); }),
                     std::string("OutOfRange: String exceeds maximum length. Max length is 8"));
    }

    void rawRegisters()
    {
        Camera camera(described("Register Raw; Address=0x10; Length=3; AccessMode=RW; pPort=Device"));
        CValuePtr value = camera.value("Raw");
        value->FromString("0x0a0bFF");
        QCOMPARE(QByteArray(value->ToString()), QByteArray("0x0a0bff"));
        for (const char *bad : {"0x0a0", "0xzz", "0x01020304"})
            QVERIFY2(!thrownBy([&] { value->FromString(bad); }).empty(), bad);
        CRegisterPtr raw(camera.node("Raw"));
        uint8_t bytes[4] = {1, 2, 3, 4};
        raw->Set(bytes, 3);
        QCOMPARE(camera.port.peek(0x10), uint64_t(0x030201));
        QVERIFY(!thrownBy([&] { raw->Get(bytes, 4); }).empty());
        QCOMPARE(raw->GetLength(), int64_t(3));
        QCOMPARE(raw->GetAddress(), int64_t(0x10));
    }

    void emptyRegistersAreEmptyTexts()
    {
        Camera camera(described(R"(
            Integer Length; Value=0
            StringReg StringReg; Address=0x10; pLength=Length; AccessMode=RW; pPort=Device
            Register Register; Address=0x10; pLength=Length; AccessMode=RW; pPort=Device
            IntReg IntReg; Address=0x10; pLength=Length; AccessMode=RW; pPort=Device)"));
        for (const char *kind : {"StringReg", "Register"}) {
            CValuePtr text = camera.value(kind);
            QCOMPARE(camera.access(kind), RW);
            QCOMPARE(QByteArray(text->ToString(false, true)), QByteArray());
            text->FromString("");
            QVERIFY2(!thrownBy([&] { text->FromString("0x01"); }).empty(), kind);
        }
        QVERIFY(!thrownBy([&] { camera.integer("IntReg")->GetValue(); }).empty());
        QCOMPARE(camera.port.trace(), std::string());
        camera.integer("Length")->SetValue(2);
        camera.port.pokeText(0x10, "ab", 2);
        QCOMPARE(QByteArray(camera.value("StringReg")->ToString()), QByteArray("ab"));
        QCOMPARE(QByteArray(camera.value("Register")->ToString()), QByteArray("0x6162"));
    }

    void addressesAreSums()
    {
        Camera camera(
            described("Integer Base; Value=0x100\nInteger Line; Value=2\nInteger Stride; Value=0x20\n"
                      "IntReg ByLength; pIndex=Line; Length=4; AccessMode=RW; pPort=Device")
            + "<IntReg Name=\"Sum\"><Address>0x1000</Address><Address>8</Address><pAddress>Base</pAddress>"
              "<IntSwissKnife Name=\"Inner\"><pVariable Name=\"L\">Line</pVariable><Formula>L * 0x200</Formula>"
              "</IntSwissKnife><pIndex Offset=\"0x10\">Line</pIndex><Length>4</Length><AccessMode>RW</AccessMode>"
              "<pPort>Device</pPort></IntReg>"
              "<IntReg Name=\"ByNode\"><pIndex pOffset=\"Stride\">Line</pIndex><Length>4</Length>"
              "<AccessMode>RW</AccessMode><pPort>Device</pPort></IntReg>");
        const auto address = [&](const char *name) { return CRegisterPtr(camera.node(name))->GetAddress(); };
        QCOMPARE(address("Sum"), int64_t(0x1000 + 8 + 0x100 + 0x400 + 0x20));
        QCOMPARE(address("ByLength"), int64_t(8));
        QCOMPARE(address("ByNode"), int64_t(0x40));
        camera.integer("Line")->SetValue(1);
        camera.integer("Sum")->SetValue(5);
        QCOMPARE(camera.port.peek(0x1318), uint64_t(5));
    }

    // To swap them for a port with SwapEndianess is the host's part.
    void portsGetBytesAsTheyAre()
    {
        Camera camera(described(R"(
            Port Swapped; SwapEndianess=Yes
            IntReg A; Address=0x10; Length=4; AccessMode=RW; pPort=Swapped; Endianess=LittleEndian)"));
        MemoryPort other;
        camera.map->Connect(&other, "Swapped");
        other.poke(0x10, 0x01020304);
        QCOMPARE(camera.integer("A")->GetValue(), int64_t(0x01020304));
        gcstring value, attribute;
        QVERIFY(camera.node("Swapped")->GetProperty("SwapEndianess", value, attribute));
        QCOMPARE(QByteArray(value), QByteArray("Yes"));
    }

    void portErrorsPassUnchanged()
    {
        const std::pair<MemoryPort::Fault, std::string> rows[] = {
            {MemoryPort::Fault::Timeout, "Timeout: memory port: timed out"},
            {MemoryPort::Fault::Refused, "Runtime: memory port: refused"},
            {MemoryPort::Fault::Foreign, "std: memory port: foreign error"}};
        for (const auto &[fault, expected] : rows) {
            Camera camera(integer("A", "0x10", "<pMax>Max</pMax>") + integer("Max", "0x14") + masked("Field", 0, 3)
                          + described("Float F; pValue=A\nSwissKnife K; pVariable.X=A; Formula=X / 2\n"
                                      "Boolean B; pValue=Max\nInteger Gated; pIsAvailable=Max; Value=1"));
            camera.port.readFault = fault;
            QCOMPARE(thrownBy([&] { camera.integer("A")->GetMax(); }), expected);
            QCOMPARE(thrownBy([&] { camera.integer("Field")->SetValue(1); }), expected);
            QCOMPARE(thrownBy([&] { camera.access("Gated"); }), expected);
            for (const char *name : {"A", "F", "K", "B", "Gated"})
                COMPARE_ROW(name, thrownBy([&] { camera.value(name)->ToString(); }), expected);
            camera.port.readFault = MemoryPort::Fault::None;
            camera.port.poke(0x14, 1);
            for (const char *name : {"A", "F", "K", "B", "Gated"})
                COMPARE_ROW(name, thrownBy([&] { camera.value(name)->ToString(); }), "");
        }
    }

    void shortAnswersLeaveZeros()
    {
        Camera camera(intReg("A", "0x10")
                      + described("StringReg T; Address=0x20; Length=8; AccessMode=RW; pPort=Device"));
        camera.port.poke(0x10, 0x44332211);
        camera.port.pokeText(0x20, "longtext", 8);
        camera.port.readFault = MemoryPort::Fault::Short;
        QCOMPARE(camera.integer("A")->GetValue(), int64_t(0x2211));
        QCOMPARE(QByteArray(camera.string("T")->GetValue()), QByteArray("long"));
        camera.port.readFault = MemoryPort::Fault::Drop;
        QCOMPARE(camera.integer("A")->GetValue(false, true), int64_t(0));
        camera.port.readFault = MemoryPort::Fault::None;
        QCOMPARE(camera.integer("A")->GetValue(false, true), int64_t(0x44332211));
    }

    void oddLengthsNeverCrash()
    {
        for (const std::string length : {"0", "-4", "9", "16", "x", "9223372036854775807", "0xFFFFFFFFFFFFFFFF"}) {
            for (const char *kind : {"IntReg", "MaskedIntReg", "FloatReg", "StringReg", "Register"}) {
                const std::string element = kind;
                const bool isEmpty =
                    (length == "0" || length == "x") && (element == "StringReg" || element == "Register");
                const std::string parts = "Address=0xFFFFFFFFFFFFFFF8; AccessMode=RW; pPort=Device; ";
                const Camera camera(described(element + " A;" + parts + "LSB=2; MSB=3; Length=" + length + "\n"
                                              + element + " B;" + parts + "pLength=L\nInteger L; Value=" + length));
                for (const char *name : {"A", "B"}) {
                    QCOMPARE(thrownBy([&] { camera.value(name)->ToString(); }).empty(), isEmpty); // no memory there
                    QVERIFY(!thrownBy([&] { camera.value(name)->FromString("1", false); }).empty());
                }
            }
        }
    }
};

QTEST_GUILESS_MAIN(tst_RegisterNodes)
#include "tst_RegisterNodes.moc"
