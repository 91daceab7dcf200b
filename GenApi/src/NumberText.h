// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace NodeEngine {

// Numbers as they stand in descriptions. Independent of the locale.

/// Decimal or 0x..., blanks around it allowed; values above the range of int64 wrap as unsigned ones do. A number
/// with a fraction rounds. Nothing if the text holds no number.
std::optional<int64_t> integerOfDescription(std::string_view text);
/// The same for floating-point numbers; hexadecimal integers pass too.
std::optional<double> floatOfDescription(std::string_view text);

// Numbers as users of the map give and get them.

/// What stands at the begin of the text, as strtoll does: "0x1F", "12 px". Out-of-range values saturate.
std::optional<int64_t> integerOfText(std::string_view text);
std::optional<double> floatOfText(std::string_view text);
/// "10.0.0.1", nothing else.
std::optional<int64_t> ipv4OfText(std::string_view text);
/// "00:1a:2b:3c:4d:5e", nothing else.
std::optional<int64_t> macOfText(std::string_view text);

/// The nearest number in the range of int64, halves away from zero. The value must not be NaN.
int64_t saturatedInteger(double value);

std::string decimalText(int64_t value);
std::string hexText(int64_t value);
std::string ipv4Text(int64_t value);
std::string macText(int64_t value);

enum class FloatForm { Automatic, Fixed, Scientific };
/// As printf's %g, %f, %e with that precision in the C locale.
std::string floatText(double value, FloatForm form, int64_t precision);

} // namespace NodeEngine
