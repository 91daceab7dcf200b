// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <GenApi/PersistenceFile.h>

/// A setting's place as people write it: "Gain", or "Gain[GainSelector=Red,LineSelector=Line1]" where its selectors
/// shall stand for it, the outermost first.
std::string placeText(const std::string &feature, const Persistence::Selection &selection);

/// The feature and the selection of a place; nothing if the text is none.
std::optional<Persistence::Entry> parsePlace(std::string_view text);
/// The same of "PLACE=VALUE".
std::optional<Persistence::Entry> parseAssignment(std::string_view text);
