// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <memory>
#include <vector>

#include "Devices/gentl/Modules.h"

/// The memory of one frame, announced to a stream.
struct StreamBuffer
{
    GenTL::BUFFER_HANDLE handle = nullptr;
    const char *base = nullptr;
    std::size_t size = 0; ///< bytes
};

/// The buffers of a stream, announced for as long as this lives: memory of this program or, where the producer does not
/// take that, of the producer.
class StreamBuffers
{
public:
    explicit StreamBuffers(std::shared_ptr<StreamModule> owner) : m_stream(std::move(owner)) { }
    /// The acquisition must have been stopped.
    ~StreamBuffers();

    StreamBuffers(const StreamBuffers &) = delete;
    StreamBuffers &operator=(const StreamBuffers &) = delete;

    /// Makes them: of `frameSize` bytes each, and as many as both sides want. Throws a GentlError when the producer has
    /// no use for that.
    void announce(std::size_t frameSize);
    /// Lets the producer fill all of them.
    void queueAll() const;
    /// Lets the producer fill this one again. False when it refuses.
    bool queue(const StreamBuffer &buffer) const;
    /// Null for a handle that is none of theirs.
    const StreamBuffer *find(GenTL::BUFFER_HANDLE handle) const;

private:
    struct Free
    {
        void operator()(void *memory) const { std::free(memory); }
    };
    using Memory = std::unique_ptr<void, Free>;

    /// Out of all queues.
    void takeBack() const;
    std::size_t wantedCount(std::size_t frameSize) const;
    std::size_t alignment() const;
    /// False when the producer does not take memory of others.
    bool announceOwn(std::size_t frameSize);
    /// False when the producer has no more, but enough.
    bool announceProducers(std::size_t frameSize);
    const Producer &gentl() const { return *m_stream->producer(); }

    const std::shared_ptr<StreamModule> m_stream;
    std::vector<StreamBuffer> m_buffers;
    std::vector<Memory> m_memory;
};
