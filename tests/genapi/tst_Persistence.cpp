// SPDX-License-Identifier: MIT
// The bag of the standard: what it takes from a device and what it does to one.
#include "BagDevice.h"
#include "Camera.h"
#include "TableRows.h"

#include <GenApi/Persistence.h>
#include <GenApi/PersistenceDevice.h>

#include <QElapsedTimer>
#include <QTest>

#include <algorithm>
#include <functional>

using namespace GenApi;

namespace {

const std::string Magic = "# {05D8C294-F295-4dfb-9D01-096BD04049F4}\n";

CFeatureBag bagOf(const std::string &text)
{
    CFeatureBag bag;
    std::istringstream stream(text);
    stream >> bag;
    return bag;
}

std::string joined(const gcstring_vector &texts)
{
    std::string all;
    for (const gcstring &text : texts)
        all += (all.empty() ? "" : "|") + std::string(text.c_str());
    return all;
}

/// The messages of a load.
std::string loaded(INodeMap &map, const std::string &entries, bool verify = true)
{
    gcstring_vector errors;
    const bool isLoaded = bagOf(Magic + entries).LoadFromBag(&map, verify, &errors);
    return isLoaded == errors.empty() ? joined(errors) : "the result does not fit: " + joined(errors);
}

/// The entries without the head; `errors` has what is left out.
std::string stored(INodeMap &map, gcstring_vector *errors = nullptr)
{
    CFeatureBag bag;
    bag.StoreToBag(&map, -1, nullptr, errors);
    std::istringstream stream(bag.ToString().c_str());
    std::string entries;
    for (std::string line; std::getline(stream, line);)
        entries += line[0] == '#' ? "" : line + "\n";
    return entries;
}

/// Makes streamable features of nodes in short, all below Root.
std::string streamable(const std::string &nodes)
{
    std::istringstream lines(nodes);
    std::string all;
    std::string root = "Category Root";
    for (std::string line; std::getline(lines >> std::ws, line);) {
        const std::string name = line.substr(line.find(' ') + 1, line.find(';') - line.find(' ') - 1);
        root += "; pFeature=" + name;
        all += line + "; Streamable=Yes\n";
    }
    return described(all + root);
}

/// A region with limits that depend on each other, and a gain at three places.
std::string region()
{
    return intReg("WidthReg", "0x10") + intReg("OffsetReg", "0x14") + intReg("PlaceReg", "0x18")
        + intReg("GainReg", "0x20", "<pIndex Offset=\"4\">Place</pIndex>") + described(R"(
            IntSwissKnife WidthLimit; pVariable.O=OffsetReg; Formula=100 - O
            IntSwissKnife OffsetLimit; pVariable.W=WidthReg; Formula=100 - W)")
        + streamable(R"(
            Integer Width; pValue=WidthReg; pMax=WidthLimit
            Integer Offset; pValue=OffsetReg; pMax=OffsetLimit
            Integer Place; pValue=PlaceReg; Min=0; Max=2; pSelected=Gain
            Integer Gain; pValue=GainReg; Max=9)");
}

} // namespace

class tst_Persistence : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void equalsTheFilesOfOthers()
    {
        struct Row
        {
            const char *name;
            unsigned accesses; ///< of storing; each value is read once, selectors move once for all that they select
        };
        for (const auto &[name, accesses] :
             {Row{"area_scan", 2354}, {"card", 35}, {"profiler", 69}, {"selectors", 17}}) {
            BagDevice device(name);
            const std::string before = device.memory();
            CFeatureBag bag;
            gcstring_vector errors;
            const int64_t count = bag.StoreToBag(device.map.get(), -1, nullptr, &errors);
            COMPARE_ROW(name, joined(errors), "");
            COMPARE_ROW(name, device.port.reads + device.port.writes, accesses);
            COMPARE_ROW(name, device.memory(), before);
            const std::string entries = stored(*device.map);

            std::string expected = contentOfBag(std::string(name) + ".bag");
            const CFeatureBag theirs = bagOf(expected);
            for (const char *const shortened : {"F\t0.3\n", "G\t0.3\n"}) {
                const std::size_t at = expected.find(shortened);
                if (std::string(name) == "selectors")
                    expected.replace(at, 6, std::string(shortened, 5) + "0000000000000004\n");
            }
            COMPARE_ROW(name, std::string(bag.ToString().c_str()), expected);
            COMPARE_ROW(name, count, std::count(expected.begin(), expected.end(), '\n') - 3);

            QVERIFY2(CFeatureBag(bag).LoadFromBag(device.map.get(), true, &errors), name);
            COMPARE_ROW(name, joined(errors), "");
            COMPARE_ROW(name, stored(*device.map), entries);
            QVERIFY2(CFeatureBag(theirs).LoadFromBag(device.map.get(), true, &errors), name);
            COMPARE_ROW(name, joined(errors), "");
        }
    }

    void loadsEachValueOnce()
    {
        BagDevice device("area_scan");
        CFeatureBag bag = bagOf(contentOfBag("area_scan.bag"));
        QVERIFY(bag.LoadFromBag(device.map.get()));
        for (int64_t index : {0, 100, 255}) {
            const auto isOfValue = [index](const MemoryPort::Access &access) {
                return access.address == 0x10000 + 4 * index;
            };
            QCOMPARE(std::count_if(device.port.accesses.begin(), device.port.accesses.end(), isOfValue),
                     2); // and verified
        }
    }

    /// Behind a link of 1 ms an access the layer adds less than a third.
    void theLinkIsWhatTakesTime()
    {
        BagDevice device("area_scan");
        const CFeatureBag bag = bagOf(contentOfBag("area_scan.bag"));
        const std::function<void()> tasks[] = {[&] { stored(*device.map); },
                                               [&] { CFeatureBag(bag).LoadFromBag(device.map.get()); }};
        for (const auto &task : tasks) {
            device.port.resetCounters();
            QElapsedTimer clock;
            clock.start();
            task();
            const double msPerAccess = double(clock.nsecsElapsed()) / 1e6 / (device.port.reads + device.port.writes);
            QVERIFY2(msPerAccess < 0.3, QByteArray::number(msPerAccess) + " ms");
        }
    }

    void selectorsBelowSelectorsKeepEachPosition()
    {
        BagDevice device("selectors");
        device.port.poke(4, 1); // B is Y where A is 0, X where A is 1
        const std::string before = device.memory();
        const std::string entries = stored(*device.map);
        QVERIFY(device.port.writes > 0);
        QCOMPARE(device.memory(), before);
        QVERIFY(entries.find("A\t0\nB\tY\n") != std::string::npos);
        QCOMPARE(loaded(*device.map, entries), std::string());
        QCOMPARE(device.memory(), before);
    }

    void tellsWhatDoesNotTake()
    {
        const Row<const char *> rows[] = {
            {"Width\t50\nOffset\t10\n", ""},
            {"Offset\t70\nWidth\t30\n", ""}, // the limit opens later
            {"Width\t150\n",
             "Error while writing node 'Width': Value = 150 must be equal or smaller than Max = 100. (line 2)"},
            {"Width\tmany\n",
             "Error while writing node 'Width': Node 'Width' : cannot convert string 'many' to int. "
             "(line 2)"},
            {"None\t1\nGain\t5\n", "Error while writing node: 'None' not found (line 2)"},
            {"Gain\t{Place=7}\t5\n",
             "Error while writing selector 'Place': Value = 7 must be equal or smaller than "
             "Max = 2. (Place=7; line 2)"},
            {"Gain\t{None=7}\t5\n", "Error while writing selector 'None': 'None' not found (None=7; line 2)"},
            {"Reset\t1\n", "Error while writing node 'Reset': it is no setting (line 2)"},
            {"Locked\t7\n", ""}, // which it has already
            {"Locked\t8\n", "Error while writing node 'Locked': Node is not writable. (line 2)"},
            {"\nWidth\n", "Line 3: the line is incomplete: 'Width' has no value"},
            {"Width\t40\nWidth\t050\n", "Line 3: 'Width' stands in line 2 with another value; the last one stays"}};
        for (const auto &[entries, expected] : rows) {
            Camera camera(region() + described("Command Reset; pValue=WidthReg; CommandValue=99")
                          + described("Integer Locked; ImposedAccessMode=RO; Value=7"));
            camera.port.poke(0x10, 50);
            gcstring_vector errors;
            const bool isLoaded = bagOf(Magic + entries).LoadFromBag(camera.map, true, &errors);
            COMPARE_ROW(entries, joined(errors), expected);
            COMPARE_ROW(entries, isLoaded, errors.empty() || joined(errors).find("stays") != std::string::npos);
            COMPARE_ROW(entries, camera.port.peek(0x18), 0u);
            QVERIFY2(camera.port.peek(0x10) != 99, entries);
        }
    }

    void selectorsComeBackWhateverHappens()
    {
        for (const auto fault : {MemoryPort::Fault::Refused, MemoryPort::Fault::Foreign, MemoryPort::Fault::Timeout}) {
            Camera camera(region());
            camera.port.poke(0x18, 1);
            camera.port.faultFrom = 0x28; // the gain at the last position
            camera.port.faultTo = 0x2c;
            camera.port.readFault = camera.port.writeFault = fault;
            gcstring_vector errors;
            QCOMPARE(stored(*camera.map, &errors),
                     std::string("Width\t0\nOffset\t0\nGain\t{Place=0}\t0\nGain\t{Place=1}\t0\nPlace\t1\n"));
            QVERIFY(joined(errors).find("'Gain' is left out: it cannot be read: memory port: ") == 0);
            QCOMPARE(camera.port.peek(0x18), uint64_t(1));
            const std::string messages = loaded(*camera.map, "Gain\t{Place=2}\t4\nGain\t{Place=0}\t3\n");
            QVERIFY(messages.find("Error while writing node 'Gain': memory port: ") == 0);
            QVERIFY(messages.find("(Place=2; line 2)") != std::string::npos
                    && messages.find("line 3") == std::string::npos);
            QCOMPARE(camera.port.peek(0x18), uint64_t(1));
            QCOMPARE(camera.port.peek(0x20), uint64_t(3));
        }
    }

    void refusedSelectorsCostTheirLinesOnly()
    {
        Camera camera(region());
        camera.port.poke(0x18, 1);
        camera.port.poke(0x20, 5);
        camera.port.faultFrom = 0x18;
        camera.port.faultTo = 0x1c;
        camera.port.writeFault = MemoryPort::Fault::Refused;
        QCOMPARE(loaded(*camera.map, "Gain\t{Place=0}\t6\nGain\t{Place=1}\t7\nWidth\t9\n"),
                 std::string("Error while writing selector 'Place': memory port: refused (Place=0; line 2)"));
        QCOMPARE(camera.port.peek(0x20, 8), uint64_t(5) | uint64_t(7) << 32);
        QCOMPARE(camera.port.peek(0x10), uint64_t(9));
    }

    void onePercentOfRefusedWritesIsListed()
    {
        BagDevice device("area_scan");
        device.port.faultFrom = 0x10000 + 4 * 50; // ten values of the first table
        device.port.faultTo = device.port.faultFrom + 40;
        device.port.writeFault = MemoryPort::Fault::Refused;
        const std::string before = stored(*device.map);
        gcstring_vector errors;
        QVERIFY(!bagOf(contentOfBag("area_scan.bag")).LoadFromBag(device.map.get(), true, &errors));
        QCOMPARE(errors.size(), size_t(10));
        QVERIFY(joined(errors).find("'LUTValue': memory port: refused (LUTSelector=Luminance, LUTIndex=50; line ")
                != GCSTRING_NPOS);
        QCOMPARE(stored(*device.map), before);
    }

    void verifiesAgainstTheDevice()
    {
        Camera camera(region());
        camera.port.onWrite[0x20] = [](MemoryPort &port) { port.poke(0x20, 1); };
        QCOMPARE(loaded(*camera.map, "Gain\t5\n"),
                 std::string("Error while verifying node 'Gain'. Expected '5', but found '1' (line 2)"));
        QCOMPARE(loaded(*camera.map, "Gain\t5\n", false), std::string());
        // What a later entry changes is written again, and nothing else is.
        camera.port.onWrite[0x20] = [](MemoryPort &port) { port.poke(0x10, 1); };
        camera.port.resetCounters();
        QCOMPARE(loaded(*camera.map, "Offset\t4\nWidth\t40\nGain\t7\n"), std::string());
        QCOMPARE(camera.port.peek(0x10), uint64_t(40));
        QCOMPARE(camera.port.writes, 4u);
    }

    void givesUpOnADeviceThatDoesNotAnswer()
    {
        Camera camera(region());
        camera.port.writeFault = MemoryPort::Fault::Timeout;
        std::string entries = "Gain\t1\nWidth\t1\nOffset\t2\n";
        const std::string messages = loaded(*camera.map, entries + entries);
        QCOMPARE(camera.port.writes, 3u);
        QVERIFY(messages.find("Error while writing node 'Offset': memory port: timed out (line 4)") != GCSTRING_NPOS);
        QVERIFY(messages.find("Error while writing node 'Gain': not tried (line 5)") != GCSTRING_NPOS);
    }

    void storesNoMoreOfOne()
    {
        for (const bool isRead : {true, false}) { // then selectors do not move
            BagDevice device("area_scan");
            device.map->InvalidateNodes();
            device.port.readFault = isRead ? MemoryPort::Fault::Timeout : MemoryPort::Fault::None;
            device.port.writeFault = MemoryPort::Fault::Timeout;
            const Persistence::Settings settings = Persistence::storeSettings(*device.map);
            QVERIFY2(device.port.reads + device.port.writes < 100, QByteArray::number(device.port.reads));
            QVERIFY(std::any_of(settings.problems.begin(), settings.problems.end(),
                                [](const Persistence::Problem &problem) { return problem.isSilence; }));
        }
    }

    void floatsReadBackAsTheyWere()
    {
        Camera camera(described(R"(
            FloatReg WideReg; Address=0x10; Length=8; AccessMode=RW; pPort=Device; Endianess=LittleEndian
            FloatReg NarrowReg; Address=0x20; Length=4; AccessMode=RW; pPort=Device; Endianess=LittleEndian)")
                      + streamable(R"(
            Float Wide; pValue=WideReg
            Float Fixed; pValue=WideReg; DisplayNotation=Fixed; DisplayPrecision=3
            Float Narrow; pValue=NarrowReg)"));
        struct Row
        {
            double value;
            const char *wide;
            const char *fixed;
            const char *narrow;
        };
        for (const auto &[value, wide, fixed, narrow] :
             {Row{0.1, "0.1", "0.100", "0.1"},
              {20, "20", "20.000", "20"},
              {1e22, "1e+22", "10000000000000000000000.000", "1e+22"},
              {1.0 / 3, "0.3333333333333333", "0.3333333333333333", "0.33333334"},
              {-0.0, "-0", "-0.000", "-0"},
              {16777217, "16777217", "16777217.000", "1.67772e+07"}}) {
            camera.real("Wide")->SetValue(value);
            camera.real("Narrow")->SetValue(value);
            const std::string before =
                std::to_string(camera.port.peek(0x10, 8)) + " " + std::to_string(camera.port.peek(0x20));
            const std::string entries = stored(*camera.map);
            COMPARE_ROW(wide, entries,
                        std::string("Wide\t") + wide + "\nFixed\t" + fixed + "\nNarrow\t"
                            + (value == 16777217 ? "16777216" : narrow) + "\n");
            camera.real("Wide")->SetValue(5);
            camera.real("Narrow")->SetValue(5);
            COMPARE_ROW(wide, loaded(*camera.map, entries), "");
            COMPARE_ROW(wide, std::to_string(camera.port.peek(0x10, 8)) + " " + std::to_string(camera.port.peek(0x20)),
                        before);
        }
    }

    void leavesOutTextsThatBreakTheFile()
    {
        Camera camera(streamable("StringReg Text; Address=0x10; Length=16; AccessMode=RW; pPort=Device"));
        const Row<const char *> rows[] = {
            {"", "Text\t\n"},
            {"a\tb \xE9", "Text\ta\tb \xE9\n"},
            {"{a", "Text\t{a\n"},
            {"{a=b}\tc", "'Text' is left out: its text looks like the position of a selector"},
            {"a\nb", "'Text' is left out: its text has a line feed"},
            {"a\r", "'Text' is left out: its text ends with a carriage return"}};
        for (const auto &[text, expected] : rows) {
            camera.port.pokeText(0x10, text, 16);
            camera.map->InvalidateNodes();
            gcstring_vector errors;
            const std::string entries = stored(*camera.map, &errors);
            COMPARE_ROW(expected, entries + joined(errors), expected);
            camera.port.pokeText(0x10, "", 16);
            COMPARE_ROW(expected, loaded(*camera.map, entries), "");
            COMPARE_ROW(expected, camera.port.peekText(0x10, 16), entries.empty() ? "" : text);
        }
    }

    void oddSelectorsComeToAnEnd()
    {
        Camera camera(intReg("AReg", "0x10") + intReg("BReg", "0x14") + intReg("WideReg", "0x18") + streamable(R"(
            Integer A; pValue=AReg; Max=1; pSelected=B; pSelected=Round; pSelected=A
            Integer B; pValue=BReg; Max=1; pSelected=A; pSelected=Round
            Integer Round; pValue=AReg
            Integer Wide; pValue=WideReg; pSelected=Many
            Integer Many; pValue=BReg)"));
        gcstring_vector errors;
        const std::string entries = stored(*camera.map, &errors);
        QCOMPARE(joined(errors), std::string("'Wide' has more than 65536 positions: the others are left out"));
        QVERIFY(entries.find("Round\t{A=1\tB=1}\t1\nA\t0\nB\t0\n") != std::string::npos);
        QCOMPARE(camera.port.peek(0x10, 8), uint64_t(0));
        QCOMPARE(camera.port.peek(0x18), uint64_t(0));
    }

    void takesPartOfTheFeatures()
    {
        Camera camera(region());
        gcstring_vector filter;
        filter.push_back("Gain");
        CFeatureBag bag;
        QCOMPARE(bag.StoreToBag(camera.map, -1, &filter), int64_t(4)); // and the selector behind
        QCOMPARE(bag.StoreToBag(camera.map, 2), int64_t(2));
        const CFeatureBag two = bag;
        QVERIFY(two == bagOf(two.ToString().c_str()));
        bag.StoreToBag(camera.map);
        QVERIFY(two != bag);
        bag.SetName("all");
        QCOMPARE(std::string(bag.GetName().c_str()), std::string("all"));
        QCOMPARE(thrownBy([&] { bag.LoadFromBag(nullptr); }), std::string("InvalidArgument: There is no node map"));
    }

    void preparesTheDevice()
    {
        Camera camera(region() + described(R"(
            Command DeviceFeaturePersistenceStart; pValue=StepReg; CommandValue=1
            Command DeviceFeaturePersistenceEnd; pValue=StepReg; CommandValue=2
            Command DeviceRegistersStreamingStart; pValue=StepReg; CommandValue=3
            Command DeviceRegistersStreamingEnd; pValue=StepReg; CommandValue=4)")
                      + intReg("StepReg", "0x40", "", 4, "WO"));
        std::string steps;
        camera.port.onWrite[0x40] = [&](MemoryPort &port) { steps += std::to_string(port.peek(0x40)); };
        camera.port.onWrite[0x10] = [&](MemoryPort &) { steps += "-"; };
        stored(*camera.map);
        QCOMPARE(std::exchange(steps, {}), std::string("12"));
        loaded(*camera.map, "Width\t8\n");
        QCOMPARE(steps, std::string("13-42"));
    }
};

QTEST_GUILESS_MAIN(tst_Persistence)
#include "tst_Persistence.moc"
