// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace Fuzz {

/// Makes a node map of a description and does with every feature what a panel does: access modes, texts, links, values,
/// limits, entries, writes and commands, over a device of plain memory. The work is bounded. What is no exception of
/// the GenICam interface leaves it.
void useDescription(const std::string &content);

} // namespace Fuzz
