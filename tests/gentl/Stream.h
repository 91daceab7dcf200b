// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <mutex>

#include "tests/gentl/Buffer.h"
#include "tests/gentl/Events.h"
#include "tests/gentl/Port.h"

namespace TestProducer {

class LocalDevice;
struct World;
using Lock = std::unique_lock<std::mutex>;

/// The way of a camera's frames into buffers. All but deliver() is called with the world locked.
class Stream : public OwnPort
{
public:
    explicit Stream(World &world, std::shared_ptr<LocalDevice> device);

    static constexpr const char *Id = "Stream0";
    static constexpr std::size_t FewestBuffers = 3;
    static constexpr std::size_t Alignment = 64;

    Identity identity() const override;
    LocalDevice &device() const { return *m_device; }
    std::optional<Fact> info(GenTL::STREAM_INFO_CMD command) const;

    std::shared_ptr<Buffer> announce(void *memory, std::size_t size, void *user);
    void revoke(Buffer &buffer);
    void queue(const std::shared_ptr<Buffer> &buffer);
    void flush(GenTL::ACQ_QUEUE_TYPE operation, Lock &lock);
    /// No buffer is being filled, nor will be.
    void finish(Lock &lock);
    void start(std::uint64_t frames);
    void stop();
    void closed() override;

    Event::Queue newBuffers();

    /// A frame has come; on the camera's thread, the world not locked.
    void deliver(const Frame &frame);

protected:
    void refresh(ModuleRegisters &registers) override;

private:
    using Buffers = std::deque<std::shared_ptr<Buffer>>;

    std::vector<std::shared_ptr<Buffer>> announced() const;
    std::size_t count(Buffer::State state) const;
    void moveAll(Buffer::State from, Buffer::State to);
    void put(const std::shared_ptr<Buffer> &buffer, Buffer::State state);
    std::uint64_t payload() const;
    std::shared_ptr<Buffer> nextBuffer(const Frame &frame);

    World &m_world;
    const std::shared_ptr<LocalDevice> m_device;
    Buffers m_input;
    Buffers m_output;
    bool m_isGrabbing = false;
    std::uint64_t m_wanted = 0; ///< frames until it stops by itself
    std::uint64_t m_frameId = 0;
    std::uint64_t m_started = 0;
    std::uint64_t m_delivered = 0;
    std::uint64_t m_underruns = 0;
};

} // namespace TestProducer
