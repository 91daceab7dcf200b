// SPDX-License-Identifier: MIT
// Formulas of swiss knives and converters: parsed, and evaluated in both number systems.
#include "fuzz/Fuzz.h"

#include <cmath>
#include <optional>

#include "GenApi/src/Formula.h"

namespace {

/// The value, nothing for a formula that cannot be evaluated. Variables differ from each other, and some are 0.
template <class Number, class Value>
std::optional<Number> evaluated(const NodeEngine::Formula &formula, Value value)
{
    try {
        return (formula.*value)([](std::size_t slot) { return Number(slot % 2 ? Number(slot) * 1000003 : 0); });
    } catch (const NodeEngine::FormulaError &) { // a division by zero
        return std::nullopt;
    }
}

bool isSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    try {
        const auto formula = NodeEngine::Formula::parse(Fuzz::Bytes(data, size).rest(), {"PI", "E"});
        const auto integer = [&] { return evaluated<int64_t>(formula, &NodeEngine::Formula::integerValue); };
        const auto real = [&] { return evaluated<double>(formula, &NodeEngine::Formula::floatValue); };
        Fuzz::expect(integer() == integer(), "an integer formula has one value");
        const auto first = real(), second = real();
        Fuzz::expect(first.has_value() == second.has_value() && (!first || isSame(*first, *second)),
                     "a formula has one value");
    } catch (const NodeEngine::FormulaError &) { // is how formulas are refused
    }
    return 0;
}
