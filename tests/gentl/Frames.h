// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include <QByteArray>

#include "Devices/gentl/GenTL.h"

class Firmware;

namespace TestProducer {

/// One image, map of heights ... of a frame.
struct FramePart
{
    GenTL::PARTDATATYPE_IDS type = GenTL::PART_DATATYPE_2D_IMAGE;
    std::uint64_t format = 0; ///< PFNC
    int width = 0;
    int height = 0;
    int x = 0;
    int y = 0;
    QByteArray data;
    qint64 first = 0; ///< where it begins in `data`
    qint64 size = 0;
};

struct Frame
{
    std::vector<FramePart> parts;
    QByteArray chunks; ///< behind the parts
    qint64 timestamp = 0; ///< ns

    qint64 size() const;
};

/// Takes the frames of one kind of camera. All calls are made on the camera's thread.
class FrameMaker
{
public:
    FrameMaker() = default;
    virtual ~FrameMaker() = default;
    FrameMaker(const FrameMaker &) = delete;
    FrameMaker &operator=(const FrameMaker &) = delete;

    virtual void setAcquiring(bool acquiring) = 0;
    virtual void trigger(int kind) = 0;
    /// Lets time pass; returns a frame that is ready by now. `rate`: see Camera::setRate().
    virtual std::optional<Frame> take(std::chrono::milliseconds passed, double rate) = 0;
    /// How long to wait for the next frame at most.
    virtual std::chrono::nanoseconds rest() const { return std::chrono::milliseconds(20); }
};

std::unique_ptr<FrameMaker> areaScanFrames(Firmware &firmware);
std::unique_ptr<FrameMaker> profilerFrames(Firmware &firmware);
std::unique_ptr<FrameMaker> structuredLightFrames(Firmware &firmware);

} // namespace TestProducer
