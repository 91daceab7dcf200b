// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace Persistence {

/// What of a text fits in a message: its begin, without control characters.
inline std::string shownText(std::string_view text)
{
    constexpr std::size_t Longest = 80;
    std::string shown(text.substr(0, Longest));
    for (char &c : shown) {
        if ((c >= 0 && c < ' ') || c == '\x7f')
            c = c == '\t' ? ' ' : '?';
    }
    return text.size() > Longest ? shown + "..." : shown;
}

} // namespace Persistence
