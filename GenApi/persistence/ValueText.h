// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/GenApi.h>

#include <string>

namespace Persistence {

inline std::string stringOf(const GenICam::gcstring &text)
{
    return std::string(text.c_str(), text.size());
}
inline GenICam::gcstring gcstringOf(const std::string &text)
{
    return GenICam::gcstring(text.c_str(), text.size());
}

std::string nameOf(GenApi::IValue &value);

/// The text that a file holds: that of ToString(), for a floating-point number with as many digits more as it takes to
/// read the same value back.
/// \param fresh read from the device, whatever is cached
std::string storedText(GenApi::IValue &value, bool fresh);

/// Whether the feature has the value that the text stands for, however that is written. `found` is set to its stored
/// text.
bool hasValue(GenApi::IValue &value, const std::string &text, bool fresh, std::string &found);

} // namespace Persistence
