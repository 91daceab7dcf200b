// SPDX-License-Identifier: MIT
#include <QtTest>

#include "Camera.h"
#include "TableRows.h"

using namespace GenApi;

namespace {

// What the formulas below can name: an integer 12 in 2..20 step 2, a float 2.5 in 0.5..4.5, a flag that is on,
// and an enumeration that is "Fast" (7).
const std::string Variables = described(R"(
        Integer Count; Value=12; Min=2; Max=20; Inc=2
        Float Level; Value=2.5; Min=0.5; Max=4.5
        Boolean Flag; Value=1)")
    + "<Enumeration Name=\"Mode\"><EnumEntry Name=\"Slow\"><Value>3</Value></EnumEntry>"
      "<EnumEntry Name=\"Fast\"><Value>7</Value></EnumEntry><Value>7</Value></Enumeration>";

const std::string Declared =
    "; pVariable.C=Count; pVariable.L=Level; pVariable.F=Flag; pVariable.M=Mode; pVariable.E=Count";

std::string knife(const char *kind, const std::string &more, const std::string &formula)
{
    return described(kind + (" Test" + Declared + more + "; Formula=" + formula));
}

// Expressions each of which uses all that follow it: 2^count uses in all.
std::string entangledExpressions(int count)
{
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += "; Expression.X" + std::to_string(i) + "=C";
        for (int j = i + 1; j < count; ++j)
            all += "+X" + std::to_string(j);
    }
    return all;
}

} // namespace

class tst_FormulaNodes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesInFormulas()
    {
        const struct
        {
            std::string inner;
            const char *formula;
            int expected;
        } rows[] = {{"", "C.Value + C", 24},
                    {"", "C.Min * 1000 + C.Max * 10 + C.Inc", 2202},
                    {"", "F ? 5 : 6", 5},
                    {"", "M * 10", 70},
                    {"", "M = M.Entry.Fast ? M.Entry.Slow : 0", 3},
                    {"; pVariable.D.Max=Count", "D.Max", 20},
                    {"", "E * 2", 24},
                    {"; Constant.K=0x10", "K + C", 28},
                    {"; Expression.X=C + 1", "X * X", 169},
                    {"; Expression.X=Y * 2; Expression.Y=C - 2", "X + Y", 30},
                    {"; Expression.PI=C", "PI", 12}};
        for (const auto &[inner, formula, expected] : rows) {
            const Camera integers(Variables + knife("IntSwissKnife", inner, formula));
            COMPARE_ROW(formula, integers.integer("Test")->GetValue(), expected);
            const Camera reals(Variables + knife("SwissKnife", inner, formula));
            COMPARE_ROW(formula, reals.real("Test")->GetValue(), expected);
        }
    }

    void integerAndFloatDiffer()
    {
        const std::string formula = "L * 2 + 7 / 2 + L.Max";
        const Camera integers(Variables + knife("IntSwissKnife", "", formula));
        QCOMPARE(integers.integer("Test")->GetValue(), int64_t(14)); // 2.5 rounds to 3, and 4.5 to 5
        const Camera reals(Variables + knife("SwissKnife", "", formula));
        QCOMPARE(reals.real("Test")->GetValue(), 13.0);
    }

    void unusableFormulas()
    {
        const std::string tooDeep(100000, '(');
        for (const std::string &formula :
             {std::string(), std::string("C +"), std::string("C + D"), std::string("C.Color"),
              std::string("M.Entry.Slower"), std::string("C.Entry.Fast"), tooDeep}) {
            const Camera camera(Variables + knife("IntSwissKnife", "", formula)
                                + described("Integer User; pValue=Test"));
            COMPARE_ROW(formula, camera.access("Test"), NA);
            COMPARE_ROW(formula, camera.access("User"), NA);
            COMPARE_ROW(formula, thrownBy([&] { camera.integer("User")->GetValue(); }).substr(0, 8), "Access: ");
            COMPARE_ROW(formula, camera.integer("Count")->GetValue(), 12);
        }
    }

    void convertersUseOtherVariables()
    {
        Camera camera(Variables + intReg("Reg", "0x10")
                      + described("IntConverter Test" + Declared
                                  + "; Constant.K=100; FormulaTo=(FROM - K) / C; FormulaFrom=TO * C + K; pValue=Reg"));
        camera.port.poke(0x10, 3);
        QCOMPARE(camera.integer("Test")->GetValue(), int64_t(136));
        camera.integer("Test")->SetValue(160);
        QCOMPARE(camera.port.peek(0x10), uint64_t(5));
        camera.integer("Count")->SetValue(10);
        QCOMPARE(camera.integer("Test")->GetValue(), int64_t(150));
    }

    void entangledExpressionsEnd()
    {
        const Camera camera(Variables + knife("IntSwissKnife", entangledExpressions(28), "X0"));
        QCOMPARE(int(camera.access("Test")), int(NA));
        const Camera mild(Variables + knife("IntSwissKnife", entangledExpressions(8), "X0"));
        QCOMPARE(mild.integer("Test")->GetValue(), int64_t(128 * 12));
    }
};

QTEST_APPLESS_MAIN(tst_FormulaNodes)
#include "tst_FormulaNodes.moc"
