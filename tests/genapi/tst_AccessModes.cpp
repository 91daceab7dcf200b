// SPDX-License-Identifier: MIT
// What a node may do now, and what an unverified write may do all the same.
#include "Camera.h"
#include "TableRows.h"

#include <QTest>

using namespace GenApi;

namespace {

std::string constant(const char *name, int value)
{
    return std::string("<Integer Name=\"") + name + "\"><Value>" + std::to_string(value) + "</Value></Integer>";
}

std::string gated(const std::string &gate, const std::string &value)
{
    return "<Integer Name=\"A\">" + gate + value + "</Integer>";
}

const std::string Helpers = constant("Zero", 0) + constant("One", 1) + intReg("Rw", "0x10")
    + intReg("Ro", "0x14", "", 4, "RO") + intReg("Wo", "0x18", "", 4, "WO")
    + "<Integer Name=\"Gone\"><pIsAvailable>Zero</pIsAvailable><Value>1</Value></Integer>"
      "<Integer Name=\"Never\"><pIsImplemented>Zero</pIsImplemented><Value>1</Value></Integer>";

} // namespace

class tst_AccessModes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void followTheRules()
    {
        const std::string rw = "<pValue>Rw</pValue>", ro = "<pValue>Ro</pValue>", wo = "<pValue>Wo</pValue>";
        const std::string knife = "<IntSwissKnife Name=\"A\"><pVariable Name=\"X\">";
        const std::string indexed =
            "<Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>";
        const struct
        {
            std::string node;
            EAccessMode mode;
        } rows[] = {{gated("", "<Value>1</Value>"), RW},
                    {gated("", ro), RO},
                    {gated("", wo), WO},
                    {gated("<pIsAvailable>Zero</pIsAvailable>", rw), NA},
                    {gated("<pIsImplemented>Zero</pIsImplemented>", rw), NI},
                    {gated("<pIsImplemented>Zero</pIsImplemented><pIsAvailable>Zero</pIsAvailable>", rw), NI},
                    {gated("<pIsLocked>One</pIsLocked>", rw), RO},
                    {gated("<pIsLocked>One</pIsLocked>", wo), NA},
                    {gated("<pIsLocked>Zero</pIsLocked>", wo), WO},
                    {gated("<ImposedAccessMode>RO</ImposedAccessMode>", rw), RO},
                    {gated("<ImposedAccessMode>RO</ImposedAccessMode>", wo), NA},
                    {gated("<pIsAvailable>Gone</pIsAvailable>", rw), NA},
                    {gated("<pIsAvailable>Never</pIsAvailable>", rw), NI},
                    {gated("<pIsAvailable>Wo</pIsAvailable>", rw), NA},
                    {gated("<pIsLocked>Gone</pIsLocked>", rw), NA},
                    {gated("", "<pValue>Gone</pValue>"), NA},
                    {gated("", "<pValue>Never</pValue>"), NI},
                    {gated("", "<Value>1</Value><pMax>Gone</pMax>"), NA},
                    {gated("", "<Value>1</Value><pMin>Never</pMin>"), NI},
                    {gated("", "<pValueCopy>Wo</pValueCopy>" + rw), RW},
                    {gated("", "<pValueCopy>Ro</pValueCopy>" + rw), RO},
                    {gated("", "<pValueCopy>Gone</pValueCopy>" + rw), NA},
                    {knife + "Rw</pVariable><Formula>X</Formula></IntSwissKnife>", RO},
                    {knife + "Gone</pVariable><Formula>X</Formula></IntSwissKnife>", NA},
                    {knife + "Never</pVariable><Formula>X</Formula></IntSwissKnife>", NI},
                    {"<IntReg Name=\"A\"><pAddress>Gone</pAddress>" + indexed + "</IntReg>", NA},
                    {"<IntReg Name=\"A\"><pIndex Offset=\"4\">Never</pIndex>" + indexed + "</IntReg>", NI},
                    {"<Command Name=\"A\">" + wo + "<CommandValue>1</CommandValue></Command>", WO},
                    {"<Command Name=\"A\"><Value>0</Value><CommandValue>1</CommandValue></Command>", RW},
                    {"<Command Name=\"A\">" + wo + "<pCommandValue>Gone</pCommandValue></Command>", NA},
                    {"<Category Name=\"A\"><pFeature>Never</pFeature><pFeature>Gone</pFeature></Category>", RO},
                    {"<Category Name=\"A\"><pFeature>Never</pFeature></Category>", NI}};
        for (const auto &row : rows)
            COMPARE_ROW(row.node, Camera(Helpers + row.node).access("A"), row.mode);
    }

    void enumerationsNeedAnEntry()
    {
        const auto entry = [](const char *name, const std::string &gate) {
            return std::string("<EnumEntry Name=\"") + name + "\">" + gate + "<Value>1</Value></EnumEntry>";
        };
        const std::string gone = entry("G", "<pIsAvailable>Zero</pIsAvailable>");
        const std::string never = entry("N", "<pIsImplemented>Zero</pIsImplemented>");
        const auto enumeration = [](const char *name, const std::string &entries) {
            return std::string("<Enumeration Name=\"") + name + "\">" + entries + "<pValue>Rw</pValue></Enumeration>";
        };
        const std::string closed = "<pIsAvailable>Zero</pIsAvailable>";
        const Camera camera(Helpers + enumeration("Some", entry("S", "") + never) + enumeration("None", gone + never)
                            + enumeration("Never1", never) + enumeration("NeverNow", closed + never)
                            + enumeration("NotNow", closed + gone)
                            + "<Category Name=\"Empty\"><pFeature>NeverNow</pFeature></Category>");
        QCOMPARE(camera.access("NeverNow"), NI);
        QCOMPARE(camera.access("Empty"), NI);
        QCOMPARE(camera.access("NotNow"), NA);
        QCOMPARE(camera.access("Some"), RW);
        QCOMPARE(camera.access("None"), NA);
        QCOMPARE(camera.access("Never1"), NI);
        camera.integer("Zero")->SetValue(1);
        QCOMPARE(camera.access("None"), RW);
    }

    void limitsInARingDoNotRestrict()
    {
        // What one has left depends on what the other one takes, as width and offset do.
        const auto ringed = [](const char *name, const char *other, const std::string &gate) {
            return std::string("<Integer Name=\"") + name + "\">" + gate + "<pValue>Rw</pValue><pMax>" + name
                + "Max</pMax></Integer><IntSwissKnife Name=\"" + name + "Max\"><pVariable Name=\"O\">" + other
                + "</pVariable><Formula>100 - O</Formula></IntSwissKnife>";
        };
        const Camera camera(Helpers + ringed("Width", "Offset", "")
                            + ringed("Offset", "Width", "<pIsAvailable>Zero</pIsAvailable>"));
        QCOMPARE(camera.access("Width"), RW);
        QCOMPARE(camera.access("Offset"), NA);
        QCOMPARE(camera.integer("Width")->GetMax(), int64_t(0xFFFFFFFF));
        camera.integer("Width")->SetValue(200);
        camera.integer("Width")->SetValue(40);
        camera.integer("Zero")->SetValue(1);
        QCOMPARE(camera.access("Offset"), RW);
        QCOMPARE(camera.integer("Width")->GetMax(), int64_t(60));
    }

    void portsDecideForTheirRegisters()
    {
        Camera camera(Helpers
                      + "<Port Name=\"Events\"><EventID>9001</EventID></Port>"
                        "<Port Name=\"Chunks\"><ChunkID>17</ChunkID></Port>"
                        "<IntReg Name=\"Event\"><Address>0</Address><Length>4</Length><AccessMode>RO</AccessMode>"
                        "<pPort>Events</pPort></IntReg>"
                        "<IntReg Name=\"Chunk\"><Address>0</Address><Length>4</Length><AccessMode>RO</AccessMode>"
                        "<pPort>Chunks</pPort></IntReg>");
        QCOMPARE(camera.access("Event"), NI);
        QCOMPARE(camera.access("Chunk"), NA);
        MemoryPort data;
        QVERIFY(camera.map->Connect(&data, "Chunks"));
        QCOMPARE(camera.access("Chunk"), RO);
        QVERIFY(!camera.map->Connect(&data, "Nowhere"));
        camera.port.accessMode = RO;
        camera.map->InvalidateNodes();
        QCOMPARE(camera.access("Rw"), RO);
        QCOMPARE(camera.access("Wo"), NA);
    }

    void changeWithTheirSwitch()
    {
        Camera camera(integer("Switch", "0x20")
                      + "<Integer Name=\"A\"><pIsAvailable>Test</pIsAvailable><Value>1</Value></Integer>"
                        "<IntSwissKnife Name=\"Test\"><pVariable Name=\"S\">Switch</pVariable><Formula>S = 2</Formula>"
                        "</IntSwissKnife><Integer Name=\"OnA\"><pValue>A</pValue></Integer>");
        QCOMPARE(camera.access("OnA"), NA);
        camera.port.resetCounters();
        QCOMPARE(camera.access("OnA"), NA);
        QCOMPARE(camera.port.reads, 0u);
        camera.integer("Switch")->SetValue(2);
        QCOMPARE(camera.access("OnA"), RW);
        camera.port.poke(0x20, 1);
        QCOMPARE(camera.access("OnA"), RW); // nobody told
        camera.integer("Switch")->GetValue(false, true);
        QCOMPARE(camera.access("OnA"), NA);
    }

    void switchesThatAreNotCachedAreReadEveryTime()
    {
        Camera camera(integer("Switch", "0x20", "", "<Cachable>NoCache</Cachable>")
                      + "<Integer Name=\"A\"><pIsAvailable>Switch</pIsAvailable><Value>1</Value></Integer>");
        QCOMPARE(camera.node("A")->IsAccessModeCacheable(), No);
        QCOMPARE(camera.access("A"), NA);
        camera.port.poke(0x20, 1);
        QCOMPARE(camera.access("A"), RW);
        camera.port.readFault = MemoryPort::Fault::Timeout;
        QCOMPARE(thrownBy([&] { camera.access("A"); }), std::string("Timeout: memory port: timed out"));
        camera.port.readFault = MemoryPort::Fault::None;
        QCOMPARE(camera.access("A"), RW);
    }

    void unverifiedWritesPassGatesAndLocksOnly()
    {
        const std::string rw = "<pValue>Rw</pValue>";
        const struct
        {
            std::string node;
            bool passes;
        } rows[] = {
            {gated("<pIsAvailable>Zero</pIsAvailable>", rw), true},
            {gated("<pIsLocked>One</pIsLocked>", rw), true},
            {gated("", "<pValue>B</pValue>") + "<Integer Name=\"B\"><pIsLocked>One</pIsLocked>" + rw + "</Integer>",
             true},
            {gated("<pIsImplemented>Zero</pIsImplemented>", rw), false},
            {gated("<ImposedAccessMode>RO</ImposedAccessMode>", rw), false},
            {gated("", "<pValue>Ro</pValue>"), false}};
        for (const auto &[node, passes] : rows) {
            Camera camera(Helpers + node);
            const std::string refused = "Access: Node is not writable.";
            COMPARE_ROW(node, thrownBy([&] { camera.integer("A")->SetValue(9, true); }), refused);
            COMPARE_ROW(node, camera.port.writes, 0u);
            COMPARE_ROW(node, thrownBy([&] { camera.integer("A")->SetValue(9, false); }), passes ? "" : refused);
            COMPARE_ROW(node, camera.port.peek(0x10), uint64_t(passes ? 9 : 0));
        }
    }

    void imposedModesRestrict()
    {
        const Camera camera(integer("A", "0x10"));
        QCOMPARE(camera.access("A"), RW);
        camera.node("A")->ImposeAccessMode(RO);
        QCOMPARE(camera.access("A"), RO);
        camera.node("A")->ImposeAccessMode(WO);
        QCOMPARE(camera.access("A"), NA);
    }
};

QTEST_GUILESS_MAIN(tst_AccessModes)
#include "tst_AccessModes.moc"
