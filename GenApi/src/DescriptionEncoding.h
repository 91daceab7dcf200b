// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace NodeEngine {

/// UTF-8 for text in either byte order of UTF-16, without its byte-order mark. Half surrogate pairs and a half last
/// unit become U+FFFD.
std::string utf8FromUtf16(std::string_view bytes, bool bigEndian);

/// UTF-8 for text in Windows-1252, the superset of Latin-1 that files declaring Latin-1 are written in.
std::string utf8FromLatin1(std::string_view bytes);

/// The text with every byte that is no part of valid UTF-8 read as Latin-1.
std::string repairedUtf8(std::string_view bytes);

} // namespace NodeEngine
