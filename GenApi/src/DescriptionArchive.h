// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace NodeEngine {

/// True if the bytes begin like a zip archive.
bool isArchive(std::string_view bytes);

/// The bytes of the first entry named *.xml outside of __MACOSX folders.
/// \param largestSize in bytes; a larger entry is refused, whatever size the archive claims for it.
/// \throws GenICam::RuntimeException if the archive is broken or encrypted, or has no such entry.
std::string descriptionInArchive(std::string_view archive, std::size_t largestSize);

} // namespace NodeEngine
