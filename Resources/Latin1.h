// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include <QLatin1String>

/// A text of ASCII characters as a constant: unlike QLatin1String's constructor, which measures it, for every compiler.
constexpr QLatin1String operator""_L1(const char *text, std::size_t size)
{
    return QLatin1String(text, static_cast<int>(size));
}
