// SPDX-License-Identifier: MIT
// What a node may do now, and what an unverified write may do all the same.
#include "Camera.h"
#include "TableRows.h"

#include <QTest>

using namespace GenApi;

namespace {

const std::string Helpers =
    intReg("Rw", "0x10") + intReg("Ro", "0x14", "", 4, "RO") + intReg("Wo", "0x18", "", 4, "WO") + described(R"(
        Integer Zero; Value=0
        Integer One; Value=1
        Integer Gone; pIsAvailable=Zero; Value=1
        Integer Never; pIsImplemented=Zero; Value=1)");

} // namespace

class tst_AccessModes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void followTheRules()
    {
        const Row<EAccessMode> rows[] = {{"Integer A; Value=1", RW},
                                         {"Integer A; pValue=Ro", RO},
                                         {"Integer A; pValue=Wo", WO},
                                         {"Integer A; pIsAvailable=Zero; pValue=Rw", NA},
                                         {"Integer A; pIsImplemented=Zero; pValue=Rw", NI},
                                         {"Integer A; pIsImplemented=Zero; pIsAvailable=Zero; pValue=Rw", NI},
                                         {"Integer A; pIsLocked=One; pValue=Rw", RO},
                                         {"Integer A; pIsLocked=One; pValue=Wo", NA},
                                         {"Integer A; pIsLocked=Zero; pValue=Wo", WO},
                                         {"Integer A; ImposedAccessMode=RO; pValue=Rw", RO},
                                         {"Integer A; ImposedAccessMode=RO; pValue=Wo", NA},
                                         {"Integer A; pIsAvailable=Gone; pValue=Rw", NA},
                                         {"Integer A; pIsAvailable=Never; pValue=Rw", NI},
                                         {"Integer A; pIsAvailable=Wo; pValue=Rw", NA},
                                         {"Integer A; pIsLocked=Gone; pValue=Rw", NA},
                                         {"Integer A; pValue=Gone", NA},
                                         {"Integer A; pValue=Never", NI},
                                         {"Integer A; Value=1; pMax=Gone", NA},
                                         {"Integer A; Value=1; pMin=Never", NI},
                                         {"Integer A; pValueCopy=Wo; pValue=Rw", RW},
                                         {"Integer A; pValueCopy=Ro; pValue=Rw", RO},
                                         {"Integer A; pValueCopy=Gone; pValue=Rw", NA},
                                         {"IntSwissKnife A; pVariable.X=Rw; Formula=X", RO},
                                         {"IntSwissKnife A; pVariable.X=Gone; Formula=X", NA},
                                         {"IntSwissKnife A; pVariable.X=Never; Formula=X", NI},
                                         {"IntReg A; pAddress=Gone; Length=4; AccessMode=RW; pPort=Device", NA},
                                         {"IntReg A; pIndex.4=Never; Length=4; AccessMode=RW; pPort=Device", NI},
                                         {"Command A; pValue=Wo; CommandValue=1", WO},
                                         {"Command A; Value=0; CommandValue=1", RW},
                                         {"Command A; pValue=Wo; pCommandValue=Gone", NA},
                                         {"Category A; pFeature=Never; pFeature=Gone", RO},
                                         {"Category A; pFeature=Never", NI}};
        for (const auto &row : rows)
            COMPARE_ROW(row.text, Camera(Helpers + described(row.text)).access("A"), row.expected);
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
        Camera camera(Helpers + described(R"(
            Integer Width; pValue=Rw; pMax=WidthMax
            IntSwissKnife WidthMax; pVariable.O=Offset; Formula=100 - O
            Integer Offset; pIsAvailable=Zero; pValue=Rw; pMax=OffsetMax
            IntSwissKnife OffsetMax; pVariable.O=Width; Formula=100 - O)"));
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
        Camera camera(Helpers + described(R"(
            Port Events; EventID=9001
            Port Chunks; ChunkID=17
            IntReg Event; Address=0; Length=4; AccessMode=RO; pPort=Events
            IntReg Chunk; Address=0; Length=4; AccessMode=RO; pPort=Chunks)"));
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
        Camera camera(integer("Switch", "0x20") + described(R"(
            IntSwissKnife Test; pVariable.S=Switch; Formula=S = 2
            Integer A; pIsAvailable=Test; Value=1
            Integer OnA; pValue=A)"));
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
                      + described("Integer A; pIsAvailable=Switch; Value=1"));
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
        const Row<bool> rows[] = {{"Integer A; pIsAvailable=Zero; pValue=Rw", true},
                                  {"Integer A; pIsLocked=One; pValue=Rw", true},
                                  {"Integer A; pValue=B\nInteger B; pIsLocked=One; pValue=Rw", true},
                                  {"Integer A; pIsImplemented=Zero; pValue=Rw", false},
                                  {"Integer A; ImposedAccessMode=RO; pValue=Rw", false},
                                  {"Integer A; pValue=Ro", false}};
        for (const auto &[node, passes] : rows) {
            Camera camera(Helpers + described(node));
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
