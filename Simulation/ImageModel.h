// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

#include "Simulation/RegisterMemory.h"

/// What the registers of a simulated camera mean for its images.
namespace ImageModel {

/// The image on the reduced (binned, decimated) sensor.
QRect region(const RegisterMemory &memory);
/// Size of the reduced sensor; the largest image.
QSize reducedSensor(const RegisterMemory &memory);
/// Sensor pixels from one image pixel to the next.
QSize reduction(const RegisterMemory &memory);
/// Bytes of one image on the link.
qint64 payloadSize(const RegisterMemory &memory);
/// Bytes per second of images that the link carries with the current packets and the pauses between them.
double throughput(const RegisterMemory &memory);
/// Frames per second, as the feature ResultingFrameRate says. Frame triggers do without the wanted rate.
double frameRate(const RegisterMemory &memory);
/// Mean brightness of the picture; 1 is white, larger values are overexposed. The light in front of the camera
/// swings slowly with `timestamp` (nanoseconds).
double brightness(const RegisterMemory &memory, qint64 timestamp);

} // namespace ImageModel
