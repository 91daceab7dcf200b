// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

class Firmware;

namespace TestProducer {

/// The one chunk of the area-scan camera: what describes an image, as its registers have it after the image.
constexpr quint64 ChunkId = 0xF00D;
constexpr int ChunkBytes = 64; ///< that the chunk adds to the image

/// What follows the image that was taken last; empty unless the camera adds chunks.
QByteArray chunks(const Firmware &firmware);
/// The description with these registers behind a port for the chunk.
QByteArray withChunkPort(QByteArray description);

} // namespace TestProducer
