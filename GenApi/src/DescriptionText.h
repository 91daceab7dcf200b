// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace NodeEngine {

/// The XML text of a camera description as it comes from a device or a file: plain or zipped, in UTF-8, UTF-16 or
/// Latin-1, with or without byte-order mark, declaration, leading blanks, a leading text line or trailing NULs.
///
/// The result is valid UTF-8 that begins with the first markup and holds no NUL, whatever the bytes were, so parse
/// it as UTF-8 and do not follow its encoding declaration. Whether it is well-formed is the parser's to say.
/// A zip archive gives its first .xml entry outside of __MACOSX folders.
/// \throws GenICam::RuntimeException if there is no markup at all, or the archive is broken, holds no description,
///         or holds one of more than 256 MiB.
std::string descriptionText(const void *data, std::size_t size);

/// The same for a file. \p fileName is in the encoding of the file system.
/// \throws GenICam::RuntimeException additionally if the file cannot be read.
std::string descriptionTextOfFile(const std::string &fileName);

} // namespace NodeEngine
