// SPDX-License-Identifier: MIT
// Values, limits and texts of every kind of node.
#include "Camera.h"
#include "TableRows.h"

#include <QScopeGuard>
#include <QTest>

#include <clocale>
#include <limits>

using namespace GenApi;

namespace {

constexpr int64_t Least = std::numeric_limits<int64_t>::min();
constexpr int64_t Most = std::numeric_limits<int64_t>::max();

// A camera with one node of each kind of conversion, shared by the tests.
std::string zoo()
{
    return integer("Plain", "0x10") + integer("Own", "0x14", "<Min>10</Min><Max>50</Max><Inc>5</Inc>")
        + intReg("RawMilli", "0x18", "", 2) + intReg("Small", "0x1C", "", 1) + intReg("FlagReg", "0x20")
        + intReg("ModeReg", "0x24") + intReg("Wide", "0x28", "", 8)
        + intReg("Measured", "0x30", "<Sign>Signed</Sign><pLength>Two</pLength>")
        + "<Enumeration Name=\"Mode\"><EnumEntry Name=\"Slow\"><Value>1</Value></EnumEntry>"
          "<EnumEntry Name=\"Fast\"><Value>40</Value><Symbolic>Quick</Symbolic></EnumEntry>"
          "<EnumEntry Name=\"Gone\"><pIsAvailable>Zero</pIsAvailable><Value>50</Value></EnumEntry>"
          "<EnumEntry Name=\"Never\"><pIsImplemented>Zero</pIsImplemented><Value>60</Value></EnumEntry>"
          "<pValue>ModeReg</pValue></Enumeration>"
        + described(R"(
            Integer Zero; Value=0
            Integer Two; Value=2
            Integer Ten; Value=10; Min=1; Max=100
            Integer Big; Value=9007199254740993
            Integer Grid; Value=10; Min=1; Max=20; Inc=5
            Integer Chosen; Value=0
            Integer Copies; pValue=Plain; pValueCopy=Own
            Integer Table; pIndex=Chosen; ValueIndexed.0=100; pValueIndexed.1=Plain; ValueDefault=-1
            Integer Behind; pIndex=Chosen; pValueIndexed.0=Own; pValueDefault=Plain
            Integer OverFine; pValue=Fine
            Integer OverFlat; pValue=Flat
            Integer IntOpen; Value=1; Min=0; pMax=Endless; pInc=NoStep
            Boolean Flag; pValue=FlagReg; OnValue=7; OffValue=5
            Float OverInt; pValue=Grid
            Float RealBehind; pIndex=Chosen; pValueIndexed.0=Milli; ValueDefault=0
            Float Open; Value=1; Min=0; pMax=Endless; pInc=NoStep
            Converter Milli; FormulaTo=FROM * 1000; FormulaFrom=TO / 1000; pValue=RawMilli
            Converter Falling; FormulaTo=100 / FROM; FormulaFrom=100 / TO; pValue=Ten; Slope=Decreasing
            Converter Wild; FormulaTo=FROM; FormulaFrom=TO; pValue=Ten; Slope=Varying
            Converter Linear; FormulaTo=(FROM - 3) / 2; FormulaFrom=TO * 2 + 3; pValue=Grid; IsLinear=Yes
            Converter Fine; FormulaTo=(FROM + 1304.2) * 65; FormulaFrom=TO / 65 - 1304.2; pValue=Plain; Slope=Varying
            Converter Flat; FormulaTo=FROM * 10; FormulaFrom=TO < 4 ? 0.5 : TO / 10; pValue=Ten; IsLinear=Yes
            IntConverter Shifted; FormulaTo=FROM >> 33; FormulaFrom=TO << 33; pValue=Small
            IntConverter Upper; FormulaTo=FROM << 32; FormulaFrom=TO >> 32; pValue=Wide
            IntSwissKnife Exact; pVariable.X=Big; Formula=X + 1
            IntSwissKnife Divided; pVariable.X=Zero; Formula=7 / X
            IntSwissKnife Bounded; Formula=4; Min=1; pMax=Ten
            IntSwissKnife NoStep; pVariable.X=Zero; Formula=X = 1 ? 4 : 0
            SwissKnife RealBounded; Formula=4; Min=-1.5; pMax=Ten
            SwissKnife Tiny; Formula=4; Min=1E-400; Max=1E2
            SwissKnife Endless; pVariable.X=Zero; Formula=X = 0 ? EXP(1000) : X)")
        + described("SwissKnife Mixed; pVariable.B=Flag; pVariable.E=Mode; pVariable.G.Max=Grid; pVariable.M=Mode; "
                    "Constant.K=0.5; Expression.TWICE=E * 2; Formula=B + TWICE + G.Max * K + M.Entry.Fast");
}

} // namespace

class tst_NodeValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void integerLimits()
    {
        // clang-format off
        const struct
        {
            const char *node;
            int64_t min, max, inc;
        } rows[] = {
            {"Plain", 0, 4294967295, 1}, {"Own", 10, 50, 5}, {"Copies", 10, 50, 1}, {"Big", Least, Most, 1},
            {"Exact", Least, Most, 1}, {"Shifted", 0, int64_t(255) << 33, 1}, {"Table", Least, Most, 1},
            {"Behind", 10, 50, 5}, {"Upper", 0, 0x7fffffff, 1}, {"Bounded", 1, 10, 1}, {"OverFine", Least, Most, 1},
            {"OverFlat", 1, 10, 1}, {"IntOpen", 0, Most, 1}, {"Measured", -32768, 32767, 1}
        };
        // clang-format on
        const Camera camera(zoo());
        for (const auto &row : rows) {
            CIntegerPtr integer = camera.integer(row.node);
            COMPARE_ROW(row.node, integer->GetMin(), row.min);
            COMPARE_ROW(row.node, integer->GetMax(), row.max);
            COMPARE_ROW(row.node, integer->GetInc(), row.inc);
        }
    }

    void floatLimits()
    {
        const double widest = std::numeric_limits<double>::max();
        // clang-format off
        const struct
        {
            const char *node;
            double min, max, inc; // 0 for no increment
        } rows[] = {
            {"OverInt", 1, 20, 5}, {"Milli", 0, 65.535, 0}, {"Falling", 1, 100, 0}, {"Wild", -widest, widest, 0},
            {"Linear", 5, 43, 10}, {"Mixed", -widest, widest, 0}, {"RealBehind", 0, 65.535, 0},
            {"RealBounded", -1.5, 10, 0}, {"Tiny", 0, 100, 0}, {"Flat", 0.5, 10, 0.1}, {"Open", 0, widest, 1}
        };
        // clang-format on
        const Camera camera(zoo());
        for (const auto &row : rows) {
            CFloatPtr real = camera.real(row.node);
            COMPARE_ROW(row.node, real->GetMin(), row.min);
            COMPARE_ROW(row.node, real->GetMax(), row.max);
            COMPARE_ROW(row.node, real->HasInc(), row.inc != 0);
            if (row.inc != 0)
                COMPARE_ROW(row.node, real->GetInc(), row.inc);
            else
                COMPARE_ROW(row.node, thrownBy([&] { real->GetInc(); }), "Runtime: node does not have an increment.");
        }
    }

    void refusesWhatIsOutOfRange()
    {
        const struct
        {
            const char *node, *text, *thrown;
        } rows[] = {
            {"Own", "9", "OutOfRange: Value = 9 must be equal or greater than Min = 10."},
            {"Own", "55", "OutOfRange: Value = 55 must be equal or smaller than Max = 50."},
            {"Own", "12",
             "OutOfRange: The difference between Value = 12 and Min = 10 must be dividable without rest by Inc = 5."},
            {"Plain", "-1", "OutOfRange: Value = -1 must be equal or greater than Min = 0."},
            {"Milli", "65.6", "OutOfRange: Value 65.600000 must be smaller than or equal 65.535000."},
            {"Milli", "-0.001", "OutOfRange: Value -0.001000 must be greater than or equal 0.000000."},
            {"Milli", "nan", "OutOfRange: Value nan must be greater than or equal 0.000000."},
            {"Plain", "abc", "InvalidArgument: Node 'Plain' : cannot convert string 'abc' to int."},
            {"Milli", "", "InvalidArgument: Node 'Milli' : cannot convert string '' to double."},
            {"Flag", "True", "InvalidArgument: Node 'Flag' : cannot convert string 'True' to boolean"},
            {"Mode", "Fast", "InvalidArgument: Feature 'Mode' : cannot convert value 'Fast', the value is invalid."},
            {"Mode", "Gone", "Access: Failed to write enumeration value. Enum entry is not writable"},
            {"Exact", "5", "Access: Node is not writable."}};
        Camera camera(zoo());
        for (const auto &row : rows) {
            COMPARE_ROW(row.text, thrownBy([&] { camera.value(row.node)->FromString(row.text); }), row.thrown);
            COMPARE_ROW(row.text, camera.port.writes, 0u);
        }
    }

    void writesReachWhatLiesBehind()
    {
        Camera camera(zoo());
        for (const auto &[written, stored] : {std::pair(12.0, 11), {14.6, 16}, {13.4, 11}, {1.0, 1}, {16.0, 16}}) {
            camera.real("OverInt")->SetValue(written); // snaps to the grid
            QCOMPARE(camera.integer("Grid")->GetValue(), int64_t(stored));
        }
        QVERIFY(!thrownBy([&] { camera.real("OverInt")->SetValue(0.4); }).empty());
        camera.integer("Copies")->SetValue(25);
        QCOMPARE(camera.port.peek(0x10), uint64_t(25));
        QCOMPARE(camera.port.peek(0x14), uint64_t(25));
        QVERIFY(!thrownBy([&] { camera.integer("Copies")->SetValue(60); }).empty());
    }

    void convertersWorkInBothDirections()
    {
        Camera camera(zoo());
        camera.port.poke(0x18, 1500, 2);
        QCOMPARE(camera.real("Milli")->GetValue(), 1.5);
        camera.real("Milli")->SetValue(2.2504); // rounds to a whole register
        QCOMPARE(camera.port.peek(0x18, 2), uint64_t(2250));
        QCOMPARE(camera.real("Milli")->GetValue(), 2.25);
        camera.integer("Shifted")->SetValue(int64_t(5) << 33);
        QCOMPARE(camera.port.peek(0x1C, 1), uint64_t(5));
        QCOMPARE(camera.integer("Shifted")->GetValue(), int64_t(5) << 33);
    }

    void formulasKeepTheirNumberSystem()
    {
        Camera camera(zoo());
        QCOMPARE(camera.integer("Exact")->GetValue(), int64_t(9007199254740994)); // odd + 1 is lost in double
        camera.port.poke(0x20, 7);
        camera.port.poke(0x24, 40);
        QCOMPARE(camera.real("Mixed")->GetValue(), 1 + 40 * 2 + 20 * 0.5 + 40);
        camera.enumeration("Mode")->SetIntValue(1);
        QCOMPARE(camera.real("Mixed")->GetValue(), 1 + 1 * 2 + 20 * 0.5 + 40);
        QCOMPARE(thrownBy([&] { camera.integer("Divided")->GetValue(); }).substr(0, 9), std::string("Runtime: "));
        camera.integer("Zero")->SetValue(2);
        QCOMPARE(camera.integer("Divided")->GetValue(), int64_t(3));
    }

    void indexChoosesThePlace()
    {
        Camera camera(zoo());
        camera.port.poke(0x10, 77);
        CIntegerPtr table = camera.integer("Table");
        QCOMPARE(table->GetValue(), int64_t(100));
        camera.integer("Chosen")->SetValue(1);
        QCOMPARE(table->GetValue(), int64_t(77));
        table->SetValue(78);
        QCOMPARE(camera.port.peek(0x10), uint64_t(78));
        camera.integer("Chosen")->SetValue(9);
        QCOMPARE(table->GetValue(), int64_t(-1));
        camera.integer("Chosen")->SetValue(0);
        QCOMPARE(table->GetValue(), int64_t(100));
    }

    void enumerationsKnowTheirEntries()
    {
        Camera camera(zoo());
        CEnumerationPtr mode = camera.enumeration("Mode");
        StringList_t symbolics;
        mode->GetSymbolics(symbolics);
        QCOMPARE(symbolics.size(), size_t(2));
        QCOMPARE(QByteArray(symbolics[1]), QByteArray("Quick"));
        QVERIFY(mode->GetEntryByName("Gone"));
        QVERIFY(!mode->GetEntryByName("Fast"));
        camera.port.poke(0x24, 11);
        QCOMPARE(mode->GetIntValue(), int64_t(11));
        QVERIFY(!mode->GetCurrentEntry());
        QVERIFY(thrownBy([&] { mode->ToString(); }).rfind("InvalidArgument: ", 0) == 0);
        QVERIFY(thrownBy([&] { mode->GetIntValue(true); }).rfind("OutOfRange: ", 0) == 0);
        camera.port.poke(0x24, 50);
        QCOMPARE(QByteArray(mode->ToString(false, true)), QByteArray("Gone"));
        QVERIFY(thrownBy([&] { mode->GetIntValue(true); }).rfind("Access: ", 0) == 0);
        camera.integer("Zero")->SetValue(1);
        mode->SetIntValue(60);
        QCOMPARE(camera.port.peek(0x24), uint64_t(60));
    }

    void commandsRunUntilTheDeviceClearsThem()
    {
        Camera camera(intReg("RunReg", "0x10") + intReg("FireReg", "0x14", "", 4, "WO")
                      + described("Command Run; pValue=RunReg; CommandValue=4\n"
                                  "Command Fire; pValue=FireReg; CommandValue=1"));
        CCommandPtr run = camera.command("Run");
        QVERIFY(run->IsDone());
        run->Execute();
        QCOMPARE(camera.port.peek(0x10), uint64_t(4));
        QVERIFY(!run->IsDone());
        camera.port.poke(0x10, 0);
        QVERIFY(run->IsDone());
        camera.port.resetCounters();
        camera.command("Fire")->Execute();
        QVERIFY(camera.command("Fire")->IsDone());
        QCOMPARE(camera.port.trace(), std::string("W0x14:4"));
    }

    void textsInAndOut()
    {
        // clang-format off
        const struct
        {
            const char *representation, *in;
            const char *out; // empty: refused
        } rows[] = {
            {"PureNumber", "-12", "-12"}, {"PureNumber", " 0x1F", "31"}, {"PureNumber", "1.5", "1"},
            {"PureNumber", "99999999999999999999", "9223372036854775807"}, {"PureNumber", "", ""},
            {"HexNumber", "255", "0xff"}, {"HexNumber", "-1", "0xffffffffffffffff"},
            {"IPV4Address", "10.0.0.1", "10.0.0.1"}, {"IPV4Address", "10.0.0.256", ""},
            {"IPV4Address", "10.0.0", ""}, {"IPV4Address", "10.0.0.1.2", ""},
            {"MACAddress", "00:1A:2b:3C:4D:5F", "00:1a:2b:3c:4d:5f"}, {"MACAddress", "00-1a-2b-3c-4d-5f", ""},
            {"Boolean", "true", "true"}, {"Boolean", "0", "false"}
        };
        // clang-format on
        for (const auto &row : rows) {
            const Camera camera(described(std::string("Integer A; Value=3; Representation=") + row.representation));
            const bool isTaken = thrownBy([&] { camera.value("A")->FromString(row.in); }).empty();
            COMPARE_ROW(row.in, isTaken ? camera.value("A")->ToString() : "", row.out);
        }
    }

    void textsDoNotDependOnTheLocale()
    {
        const QByteArray before = setlocale(LC_NUMERIC, nullptr);
        const auto restore = qScopeGuard([&] { setlocale(LC_NUMERIC, before.constData()); });
        if (!setlocale(LC_NUMERIC, "de_DE.UTF-8") && !setlocale(LC_NUMERIC, "fr_FR.UTF-8"))
            QSKIP("no locale with a decimal comma is installed");
        const Camera camera(described("Float F; Value=0.25; DisplayNotation=Fixed; DisplayPrecision=3\n"
                                      "Float G; Value=1e-3"));
        QCOMPARE(QByteArray(camera.value("F")->ToString()), QByteArray("0.250"));
        camera.value("F")->FromString("1.5");
        QCOMPARE(camera.real("F")->GetValue(), 1.5);
        QCOMPARE(QByteArray(camera.value("G")->ToString()), QByteArray("0.001"));
    }
};

QTEST_GUILESS_MAIN(tst_NodeValues)
#include "tst_NodeValues.moc"
