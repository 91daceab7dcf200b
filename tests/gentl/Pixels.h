// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include <QByteArray>
#include <QImage>

namespace TestProducer {

/// PFNC codes that are named here and elsewhere.
constexpr std::uint64_t Mono8 = 0x01080001;
constexpr std::uint64_t Coord3DC16 = 0x011000B8;
constexpr std::uint64_t Coord3DC32f = 0x022000BF;

/// A picture (Grayscale8 or RGB888) in a format of the area-scan camera, row after row without padding.
QByteArray pixels(const QImage &picture, std::uint64_t format);

} // namespace TestProducer
