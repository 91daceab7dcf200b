// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include <QImage>

/// A picture of a raw frame, for display: gray with 8 bits, or RGB with 8 bits per channel; Bayer frames are
/// interpolated. It takes some milliseconds per megapixel: not for the GUI thread. `pixelFormat` is a code of the Pixel
/// Format Naming Convention; `padding` bytes lie between lines. Null when the format is unknown, or the data is shorter
/// than the size asks for.
QImage frameImage(uint32_t pixelFormat, int width, int height, const void *data, std::size_t size,
                  std::size_t padding = 0);
