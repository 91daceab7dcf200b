// SPDX-License-Identifier: MIT
// What a node may do now, and what an unverified write may do all the same.
#include "Camera.h"

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
    void followTheRules_data();
    void followTheRules();
    void enumerationsNeedAnEntry();
    void limitsInARingDoNotRestrict();
    void portsDecideForTheirRegisters();
    void changeWithTheirSwitch();
    void switchesThatAreNotCachedAreReadEveryTime();
    void unverifiedWritesPassGatesAndLocksOnly_data();
    void unverifiedWritesPassGatesAndLocksOnly();
    void imposedModesRestrict();
};

void tst_AccessModes::followTheRules_data()
{
    QTest::addColumn<QByteArray>("node");
    QTest::addColumn<int>("mode");
    const auto row = [](const char *title, const std::string &node, EAccessMode mode) {
        QTest::newRow(title) << QByteArray::fromStdString(node) << int(mode);
    };
    const std::string rw = "<pValue>Rw</pValue>", ro = "<pValue>Ro</pValue>", wo = "<pValue>Wo</pValue>";
    row("constant", gated("", "<Value>1</Value>"), RW);
    row("read-only register", gated("", ro), RO);
    row("write-only register", gated("", wo), WO);
    row("not available", gated("<pIsAvailable>Zero</pIsAvailable>", rw), NA);
    row("not implemented", gated("<pIsImplemented>Zero</pIsImplemented>", rw), NI);
    row("neither", gated("<pIsImplemented>Zero</pIsImplemented><pIsAvailable>Zero</pIsAvailable>", rw), NI);
    row("locked", gated("<pIsLocked>One</pIsLocked>", rw), RO);
    row("locked write-only", gated("<pIsLocked>One</pIsLocked>", wo), NA);
    row("not locked", gated("<pIsLocked>Zero</pIsLocked>", wo), WO);
    row("imposed on RW", gated("<ImposedAccessMode>RO</ImposedAccessMode>", rw), RO);
    row("imposed RO on WO", gated("<ImposedAccessMode>RO</ImposedAccessMode>", wo), NA);
    row("switch that is gone", gated("<pIsAvailable>Gone</pIsAvailable>", rw), NA);
    row("switch that never was", gated("<pIsAvailable>Never</pIsAvailable>", rw), NI);
    row("switch that cannot be read", gated("<pIsAvailable>Wo</pIsAvailable>", rw), NA);
    row("lock that is gone", gated("<pIsLocked>Gone</pIsLocked>", rw), NA);
    row("value that is gone", gated("", "<pValue>Gone</pValue>"), NA);
    row("value that never was", gated("", "<pValue>Never</pValue>"), NI);
    row("limit that is gone", gated("", "<Value>1</Value><pMax>Gone</pMax>"), NA);
    row("limit that never was", gated("", "<Value>1</Value><pMin>Never</pMin>"), NI);
    const std::string knife = "<IntSwissKnife Name=\"A\"><pVariable Name=\"X\">";
    row("copy that is write-only", gated("", "<pValueCopy>Wo</pValueCopy>" + rw), RW);
    row("copy that is read-only", gated("", "<pValueCopy>Ro</pValueCopy>" + rw), RO);
    row("copy that is gone", gated("", "<pValueCopy>Gone</pValueCopy>" + rw), NA);
    row("formula", knife + "Rw</pVariable><Formula>X</Formula></IntSwissKnife>", RO);
    row("formula on what is gone", knife + "Gone</pVariable><Formula>X</Formula></IntSwissKnife>", NA);
    row("formula on what never was", knife + "Never</pVariable><Formula>X</Formula></IntSwissKnife>", NI);
    const std::string indexed =
        "<Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>";
    row("address that is gone", "<IntReg Name=\"A\"><pAddress>Gone</pAddress>" + indexed + "</IntReg>", NA);
    row("index that never was", "<IntReg Name=\"A\"><pIndex Offset=\"4\">Never</pIndex>" + indexed + "</IntReg>", NI);
    row("command", "<Command Name=\"A\">" + wo + "<CommandValue>1</CommandValue></Command>", WO);
    row("command with a constant", "<Command Name=\"A\"><Value>0</Value><CommandValue>1</CommandValue></Command>", RW);
    row("command value that is gone", "<Command Name=\"A\">" + wo + "<pCommandValue>Gone</pCommandValue></Command>",
        NA);
    row("category with one feature left",
        "<Category Name=\"A\"><pFeature>Never</pFeature><pFeature>Gone</pFeature></Category>", RO);
    row("category with none", "<Category Name=\"A\"><pFeature>Never</pFeature></Category>", NI);
}

void tst_AccessModes::followTheRules()
{
    QFETCH(QByteArray, node);
    const Camera camera(Helpers + node.toStdString());
    QTEST(int(camera.access("A")), "mode");
}

void tst_AccessModes::enumerationsNeedAnEntry()
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

void tst_AccessModes::limitsInARingDoNotRestrict()
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

void tst_AccessModes::portsDecideForTheirRegisters()
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

void tst_AccessModes::changeWithTheirSwitch()
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

void tst_AccessModes::switchesThatAreNotCachedAreReadEveryTime()
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

void tst_AccessModes::unverifiedWritesPassGatesAndLocksOnly_data()
{
    QTest::addColumn<QByteArray>("node");
    QTest::addColumn<bool>("passes");
    const auto row = [](const char *title, const std::string &node, bool passes) {
        QTest::newRow(title) << QByteArray::fromStdString(node) << passes;
    };
    const std::string rw = "<pValue>Rw</pValue>";
    row("not available", gated("<pIsAvailable>Zero</pIsAvailable>", rw), true);
    row("locked", gated("<pIsLocked>One</pIsLocked>", rw), true);
    row("value locked",
        gated("", "<pValue>B</pValue>") + "<Integer Name=\"B\"><pIsLocked>One</pIsLocked>" + rw + "</Integer>", true);
    row("not implemented", gated("<pIsImplemented>Zero</pIsImplemented>", rw), false);
    row("imposed", gated("<ImposedAccessMode>RO</ImposedAccessMode>", rw), false);
    row("read-only register", gated("", "<pValue>Ro</pValue>"), false);
}

void tst_AccessModes::unverifiedWritesPassGatesAndLocksOnly()
{
    QFETCH(QByteArray, node);
    QFETCH(bool, passes);
    Camera camera(Helpers + node.toStdString());
    QCOMPARE(thrownBy([&] { camera.integer("A")->SetValue(9, true); }), std::string("Access: Node is not writable."));
    QCOMPARE(camera.port.writes, 0u);
    QCOMPARE(thrownBy([&] { camera.integer("A")->SetValue(9, false); }).empty(), passes);
    QCOMPARE(camera.port.peek(0x10), uint64_t(passes ? 9 : 0));
}

void tst_AccessModes::imposedModesRestrict()
{
    const Camera camera(integer("A", "0x10"));
    QCOMPARE(camera.access("A"), RW);
    camera.node("A")->ImposeAccessMode(RO);
    QCOMPARE(camera.access("A"), RO);
    camera.node("A")->ImposeAccessMode(WO);
    QCOMPARE(camera.access("A"), NA);
}

QTEST_GUILESS_MAIN(tst_AccessModes)
#include "tst_AccessModes.moc"
