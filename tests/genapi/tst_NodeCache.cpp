// SPDX-License-Identifier: MIT
// What is read from the device, what is served from caches, and who is told of changes.
#include "Camera.h"
#include "TableRows.h"

#include <QTest>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

using namespace GenApi;

namespace {

std::vector<std::string> fired;

void record(INode *node)
{
    fired.emplace_back(node->GetName().c_str());
}

QByteArray sortedFired()
{
    std::sort(fired.begin(), fired.end());
    QByteArray names;
    for (const std::string &name : fired)
        names += (names.isEmpty() ? "" : " ") + QByteArray::fromStdString(name);
    fired.clear();
    return names;
}

std::string cached(const char *mode)
{
    return integer("A", "0x10", "", std::string("<Cachable>") + mode + "</Cachable>");
}

} // namespace

class tst_NodeCache : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsAsTheCachingModeSays()
    {
        const Row<const char *> rows[] = {{"WriteThrough", "R0x10:4 W0x10:4"},
                                          {"WriteAround", "R0x10:4 W0x10:4 R0x10:4"},
                                          {"NoCache", "R0x10:4 R0x10:4 W0x10:4 R0x10:4 R0x10:4"}};
        for (const auto &row : rows) {
            Camera camera(cached(row.text));
            CIntegerPtr a = camera.integer("A");
            a->GetValue();
            a->GetValue();
            a->SetValue(7);
            COMPARE_ROW(row.text, a->GetValue(), 7);
            COMPARE_ROW(row.text, a->GetValue(), 7);
            COMPARE_ROW(row.text, camera.port.trace(), row.expected);
        }
    }

    void freshReadsReachTheDeviceOnce()
    {
        Camera camera(cached("WriteThrough"));
        CIntegerPtr a = camera.integer("A");
        a->GetValue();
        camera.port.poke(0x10, 5);
        QCOMPARE(a->GetValue(), int64_t(0));
        camera.port.resetCounters();
        QCOMPARE(a->GetValue(false, true), int64_t(5));
        QCOMPARE(a->GetValue(), int64_t(5));
        QCOMPARE(camera.port.trace(), std::string("R0x10:4"));
    }

    void formulasFollowTheirVariables()
    {
        Camera camera(integer("A", "0x10") + integer("B", "0x14", "", "<Cachable>NoCache</Cachable>") + described(R"(
            IntSwissKnife Twice; pVariable.X=A; Formula=X*2
            IntSwissKnife Sum; pVariable.X=Twice; pVariable.Y=B; Formula=X+Y)"));
        QCOMPARE(camera.integer("Sum")->GetValue(), int64_t(0));
        camera.integer("A")->SetValue(4);
        camera.port.poke(0x14, 1);
        QCOMPARE(camera.integer("Sum")->GetValue(), int64_t(9));
        camera.port.resetCounters();
        QCOMPARE(camera.integer("Sum")->GetValue(), int64_t(9));
        QCOMPARE(camera.port.trace(), std::string("R0x14:4"));
        QVERIFY(!camera.node("Sum")->IsCachable());
        QVERIFY(camera.node("Twice")->IsCachable());
        camera.port.poke(0x10, 10);
        QCOMPARE(camera.integer("Twice")->GetValue(false, true), int64_t(20));
        QCOMPARE(camera.integer("Sum")->GetValue(), int64_t(21));
    }

    void limitsFollowOtherFeatures()
    {
        Camera camera(integer("Width", "0x10", "<pMax>Room</pMax>") + integer("Offset", "0x14")
                      + integer("Full", "0x18")
                      + described("IntSwissKnife Room; pVariable.F=Full; pVariable.O=Offset; Formula=F-O"));
        camera.port.poke(0x18, 1000);
        QCOMPARE(camera.integer("Width")->GetMax(), int64_t(1000));
        camera.integer("Offset")->SetValue(300);
        camera.port.resetCounters();
        QCOMPARE(camera.integer("Width")->GetMax(), int64_t(700));
        QVERIFY(!thrownBy([&] { camera.integer("Width")->SetValue(701); }).empty());
        QCOMPARE(camera.port.reads + camera.port.writes, 0u);
    }

    void indexedRegistersFollowTheirSelector()
    {
        Camera camera(integer("Line", "0x10") + described(R"(
            Integer Level; pValue=LevelReg
            IntReg LevelReg; Address=0x100; pIndex.4=Line; Length=4; AccessMode=RW; pPort=Device)"));
        for (int line = 0; line < 3; ++line)
            camera.port.poke(0x100 + 4 * line, static_cast<uint64_t>(50 + line));
        for (const int line : {0, 2, 1, 0}) {
            camera.integer("Line")->SetValue(line);
            QCOMPARE(camera.integer("Level")->GetValue(), int64_t(50 + line));
        }
        camera.integer("Line")->SetValue(1);
        camera.integer("Level")->SetValue(99);
        QCOMPARE(camera.port.peek(0x104), uint64_t(99));
        QCOMPARE(camera.port.peek(0x100), uint64_t(50));
        camera.port.poke(0x100, 60); // the device changed it while another line was selected
        camera.integer("Line")->SetValue(0);
        QCOMPARE(camera.integer("Level")->GetValue(), int64_t(60));
    }

    void selectedRegistersAreReadAgain()
    {
        const std::string rows[] = {
            intReg("Gain", "0x20"), integer("Gain", "0x20"),
            described("IntSwissKnife Gain; pVariable.X=R; Formula=X") + intReg("R", "0x20"),
            "<IntConverter Name=\"Gain\"><FormulaTo>FROM</FormulaTo><FormulaFrom>TO</FormulaFrom><pValue>R</pValue>"
            "</IntConverter>"
                + intReg("R", "0x20")};
        for (const std::string &gain : rows) {
            Camera camera(integer("Selector", "0x10", "<pSelected>Gain</pSelected>") + gain);
            camera.port.onWrite[0x10] = [](MemoryPort &port) { port.poke(0x20, port.peek(0x10) * 100); };
            for (const int selected : {1, 2}) {
                camera.integer("Selector")->SetValue(selected);
                COMPARE_ROW(gain, camera.integer("Gain")->GetValue(), 100 * selected);
            }
            camera.port.resetCounters();
            COMPARE_ROW(gain, camera.integer("Selector")->GetValue(), 2);
            COMPARE_ROW(gain, camera.integer("Gain")->GetValue(), 200);
            COMPARE_ROW(gain, camera.port.reads, 0u);
        }
    }

    void invalidatorsMakeReadAgain()
    {
        Camera camera(integer("A", "0x10", "", "<pInvalidator>Trigger</pInvalidator>") + integer("Trigger", "0x14")
                      + integer("Other", "0x18") + intReg("LoadReg", "0x1C", "", 4, "WO")
                      + described("Command Load; pValue=LoadReg; CommandValue=1")
                      + integer("B", "0x20", "", "<pInvalidator>Load</pInvalidator>"));
        camera.integer("A")->GetValue();
        camera.integer("B")->GetValue();
        camera.port.poke(0x10, 5);
        camera.port.poke(0x20, 6);
        camera.integer("Other")->SetValue(1);
        QCOMPARE(camera.integer("A")->GetValue(), int64_t(0));
        camera.integer("Trigger")->SetValue(1);
        QCOMPARE(camera.integer("A")->GetValue(), int64_t(5));
        QCOMPARE(camera.integer("B")->GetValue(), int64_t(0));
        camera.command("Load")->Execute();
        QCOMPARE(camera.integer("B")->GetValue(), int64_t(6));
    }

    void pollingTimeAges()
    {
        Camera camera(integer("A", "0x10", "", "<PollingTime>1000</PollingTime>"));
        camera.integer("A")->GetValue();
        camera.port.poke(0x10, 5);
        camera.map->Poll(600);
        QCOMPARE(camera.integer("A")->GetValue(), int64_t(0));
        camera.map->Poll(600);
        QCOMPARE(camera.integer("A")->GetValue(), int64_t(5));
        camera.port.poke(0x10, 6);
        camera.map->Poll(600);
        QCOMPARE(camera.integer("A")->GetValue(), int64_t(5));
    }

    void invalidateNodesForgetsEverySelection()
    {
        Camera camera(intReg("First", "0x100") + described(R"(
            Integer Line; Value=0
            IntReg Level; Address=0x100; pIndex.4=Line; Length=4; AccessMode=RW; pPort=Device)"));
        camera.integer("First")->GetValue();
        camera.integer("Line")->SetValue(1);
        camera.integer("Level")->GetValue();
        camera.port.poke(0x100, 8);
        camera.port.poke(0x104, 9);
        camera.map->InvalidateNodes();
        QCOMPARE(camera.integer("Level")->GetValue(), int64_t(9));
        camera.integer("Line")->SetValue(0);
        QCOMPARE(camera.integer("Level")->GetValue(), int64_t(8));
        QCOMPARE(camera.integer("First")->GetValue(), int64_t(8));
    }

    void nodesOnOneAddressShareTheirBytes()
    {
        Camera camera(integer("A", "0x10") + integer("B", "0x10") + intReg("Half", "0x12", "", 2)
                      + described("IntSwissKnife OnB; pVariable.X=B; Formula=X"));
        camera.port.poke(0x10, 0x50003);
        for (const char *name : {"A", "B", "OnB"})
            QCOMPARE(camera.integer(name)->GetValue(), int64_t(0x50003));
        QCOMPARE(camera.integer("Half")->GetValue(), int64_t(5));
        QCOMPARE(camera.port.readsOf(0x10), 1u);
        camera.integer("A")->SetValue(0x70004);
        QCOMPARE(camera.integer("B")->GetValue(), int64_t(0x70004));
        QCOMPARE(camera.integer("OnB")->GetValue(), int64_t(0x70004));
        QCOMPARE(camera.integer("Half")->GetValue(), int64_t(7));
    }

    void failedWritesChangeNothing()
    {
        Camera camera(cached("WriteThrough"));
        CIntegerPtr a = camera.integer("A");
        a->SetValue(3);
        fired.clear();
        Register(camera.node("A"), &record);
        for (const auto fault : {MemoryPort::Fault::Timeout, MemoryPort::Fault::Refused, MemoryPort::Fault::Foreign}) {
            camera.port.writeFault = fault;
            QVERIFY(!thrownBy([&] { a->SetValue(4); }).empty());
            QVERIFY(!thrownBy([&] { a->SetValue(4, false); }).empty());
        }
        QCOMPARE(a->GetValue(), int64_t(3));
        QCOMPARE(sortedFired(), QByteArray());
        camera.port.writeFault = MemoryPort::Fault::None;
        a->SetValue(4);
        QCOMPARE(sortedFired(), QByteArray("A"));
    }

    void callbacksTellWhatDepends()
    {
        Camera camera(described("Category Root; pFeature=A; pFeature=Twice; pFeature=Other")
                      + integer("A", "0x10", "<pSelected>Chosen</pSelected>") + integer("Other", "0x14")
                      + integer("Chosen", "0x18") + described("IntSwissKnife Twice; pVariable.X=A; Formula=X*2"));
        NodeList_t nodes;
        camera.map->GetNodes(nodes);
        for (INode *node : nodes)
            Register(node, &record);
        fired.clear();
        camera.integer("A")->SetValue(1);
        QCOMPARE(sortedFired(), QByteArray("A AReg Chosen ChosenReg Root Twice"));
        camera.integer("A")->GetValue(true, true);
        camera.port.poke(0x10, 7);
        camera.integer("A")->GetValue(true, true);
        thrownBy([&] { camera.integer("A")->SetValue(-1); });
        QCOMPARE(sortedFired(), QByteArray());
        camera.node("Twice")->InvalidateNode();
        QCOMPARE(sortedFired(), QByteArray("Root Twice"));
        camera.map->InvalidateNodes();
        QCOMPARE(fired.size(), size_t(nodes.size()));
    }

    void callbacksRunInsideOrOutsideTheLock()
    {
        static CLock *lock;
        static bool isFree;
        const auto test = [](INode *) {
            std::thread([] {
                isFree = lock->TryLock();
                if (isFree)
                    lock->Unlock();
            }).join();
        };
        const Camera camera(integer("A", "0x10"));
        lock = &camera.map->GetLock();
        void (*function)(INode *) = test;
        const CallbackHandleType inside = Register(camera.node("A"), function, cbPostInsideLock);
        camera.integer("A")->SetValue(1);
        QVERIFY(!isFree);
        QVERIFY(camera.node("A")->DeregisterCallback(inside));
        QVERIFY(!camera.node("A")->DeregisterCallback(inside));
        Register(camera.node("A"), function, cbPostOutsideLock);
        camera.integer("A")->SetValue(2);
        QVERIFY(isFree);
    }

    void callbacksMayDeregisterThemselves()
    {
        struct Once
        {
            INode *node;
            CallbackHandleType handle = 0;
            int calls = 0;
            void changed(INode *)
            {
                ++calls;
                node->DeregisterCallback(handle);
                CIntegerPtr(node)->SetValue(calls + 10); // a change within a change
            }
        };
        const Camera camera(integer("A", "0x10"));
        Once once{camera.node("A")};
        once.handle = Register(camera.node("A"), once, &Once::changed);
        camera.integer("A")->SetValue(1);
        camera.integer("A")->SetValue(2);
        QCOMPARE(once.calls, 1);
        QCOMPARE(camera.integer("A")->GetValue(), int64_t(2));
    }

    void threadsMayShareTheMap()
    {
        const Camera camera(integer("A", "0x10", "<pMax>Room</pMax>") + integer("B", "0x14")
                            + described("IntSwissKnife Room; pVariable.X=B; Formula=1000000 - X"));
        std::atomic<int> mistakes{0};
        const auto write = [&](const char *name) {
            for (int i = 0; i < 500; ++i) {
                camera.integer(name)->SetValue(i);
                mistakes +=
                    camera.integer("A")->GetMax() != 1000000 - camera.integer("B")->GetValue() && name[0] == 'B';
            }
        };
        std::thread a(write, "A");
        std::thread b(write, "B");
        for (int i = 0; i < 50; ++i)
            camera.map->InvalidateNodes();
        a.join();
        b.join();
        QCOMPARE(mistakes.load(), 0);
        QCOMPARE(camera.integer("A")->GetValue(), int64_t(499));
        QCOMPARE(camera.integer("A")->GetMax(), int64_t(1000000 - 499));
    }
};

QTEST_GUILESS_MAIN(tst_NodeCache)
#include "tst_NodeCache.moc"
