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

std::string variable(const char *name, const char *node)
{
    return std::string("<pVariable Name=\"") + name + "\">" + node + "</pVariable>";
}

const std::string Declared = variable("C", "Count") + variable("L", "Level") + variable("F", "Flag")
    + variable("M", "Mode") + variable("E", "Count");

std::string knife(const char *tag, const std::string &inner, const std::string &formula)
{
    return std::string("<") + tag + " Name=\"Test\">" + inner + "<Formula>" + formula + "</Formula></" + tag + ">";
}

// Expressions each of which uses all that follow it: 2^count uses in all.
std::string entangledExpressions(int count)
{
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += "<Expression Name=\"X" + std::to_string(i) + "\">C";
        for (int j = i + 1; j < count; ++j)
            all += "+X" + std::to_string(j);
        all += "</Expression>";
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
                    {variable("D.Max", "Count"), "D.Max", 20},
                    {"", "E * 2", 24},
                    {"<Constant Name=\"K\">0x10</Constant>", "K + C", 28},
                    {"<Expression Name=\"X\">C + 1</Expression>", "X * X", 169},
                    {"<Expression Name=\"X\">Y * 2</Expression><Expression Name=\"Y\">C - 2</Expression>", "X + Y", 30},
                    {"<Expression Name=\"PI\">C</Expression>", "PI", 12}};
        for (const auto &[inner, formula, expected] : rows) {
            const Camera integers(Variables + knife("IntSwissKnife", Declared + inner, formula));
            COMPARE_ROW(formula, integers.integer("Test")->GetValue(), expected);
            const Camera reals(Variables + knife("SwissKnife", Declared + inner, formula));
            COMPARE_ROW(formula, reals.real("Test")->GetValue(), expected);
        }
    }

    void integerAndFloatDiffer()
    {
        const Camera integers(Variables + knife("IntSwissKnife", Declared, "L * 2 + 7 / 2"));
        QCOMPARE(integers.integer("Test")->GetValue(), int64_t(9)); // 2.5 rounds to 3
        const Camera reals(Variables + knife("SwissKnife", Declared, "L * 2 + 7 / 2 + L.Max"));
        QCOMPARE(reals.real("Test")->GetValue(), 13.0);
    }

    void unusableFormulas()
    {
        const std::string tooDeep(100000, '(');
        for (const std::string &formula :
             {std::string(), std::string("C +"), std::string("C + D"), std::string("C.Color"),
              std::string("M.Entry.Slower"), std::string("C.Entry.Fast"), tooDeep}) {
            const Camera camera(Variables + knife("IntSwissKnife", Declared, formula)
                                + "<Integer Name=\"User\"><pValue>Test</pValue></Integer>");
            COMPARE_ROW(formula, camera.access("Test"), NA);
            COMPARE_ROW(formula, camera.access("User"), NA);
            COMPARE_ROW(formula, thrownBy([&] { camera.integer("User")->GetValue(); }).substr(0, 8), "Access: ");
            COMPARE_ROW(formula, camera.integer("Count")->GetValue(), 12);
        }
    }

    void convertersUseOtherVariables()
    {
        Camera camera(Variables + intReg("Reg", "0x10") + "<IntConverter Name=\"Test\">" + Declared
                      + "<Constant Name=\"K\">100</Constant>"
                        "<FormulaTo>(FROM - K) / C</FormulaTo><FormulaFrom>TO * C + K</FormulaFrom>"
                        "<pValue>Reg</pValue></IntConverter>");
        camera.port.poke(0x10, 3);
        QCOMPARE(camera.integer("Test")->GetValue(), int64_t(136));
        camera.integer("Test")->SetValue(160);
        QCOMPARE(camera.port.peek(0x10), uint64_t(5));
        camera.integer("Count")->SetValue(10);
        QCOMPARE(camera.integer("Test")->GetValue(), int64_t(150));
    }

    void entangledExpressionsEnd()
    {
        const Camera camera(Variables + knife("IntSwissKnife", Declared + entangledExpressions(28), "X0"));
        QCOMPARE(int(camera.access("Test")), int(NA));
        const Camera mild(Variables + knife("IntSwissKnife", Declared + entangledExpressions(8), "X0"));
        QCOMPARE(mild.integer("Test")->GetValue(), int64_t(128 * 12));
    }
};

QTEST_APPLESS_MAIN(tst_FormulaNodes)
#include "tst_FormulaNodes.moc"
