// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "tests/gentl/Answer.h"
#include "tests/gentl/Frames.h"
#include "tests/gentl/Module.h"

namespace TestProducer {

/// How a frame's way to the host spoils it.
enum class FrameFault {
    Good,
    Incomplete, ///< half of it
    Lost, ///< never comes
    Empty, ///< nothing of it
    Huge, ///< tells a size that no buffer has
    Alien, ///< tells a pixel format that nobody knows
    Grown ///< is larger than the payload that was told
};

/// Memory for one frame.
class Buffer : public Module
{
public:
    /// Who has it. Filling: a frame is being written; no queue has it, and nobody may take it.
    enum class State { Unqueued, Input, Filling, Output };

    /// `memory` null: of its own.
    Buffer(std::shared_ptr<Module> stream, void *memory, std::size_t size, void *user);

    State state = State::Unqueued;
    std::uint64_t frameId = 0;

    void *base() const { return m_base; }
    void *user() const { return m_user; }
    bool isOwn() const { return !m_own.empty(); }
    bool isToBeClosed() const override { return true; }

    /// A frame is to come; the state is Filling until its data are here.
    void begin(const Frame &frame, FrameFault fault);
    /// Writes the data; all that may be called without the world's lock.
    void copy(const Frame &frame);
    /// It has no frame any more.
    void forget() { m_hasData = false; }

    /// Nothing for commands that it does not know.
    std::optional<Fact> info(GenTL::BUFFER_INFO_CMD command, const std::string &transport) const;
    std::size_t partCount() const { return isMultiPart() ? m_parts.size() : 0; }
    std::optional<Fact> partInfo(std::uint32_t index, GenTL::BUFFER_PART_INFO_CMD command) const;
    /// The chunks that came with the frame.
    std::vector<GenTL::SINGLE_CHUNK_DATA> chunkList() const;

private:
    bool isMultiPart() const;
    GenTL::PAYLOADTYPE_INFO_IDS payloadType() const;
    std::optional<Fact> stateInfo(GenTL::BUFFER_INFO_CMD command) const;
    std::optional<Fact> frameInfo(GenTL::BUFFER_INFO_CMD command) const;
    std::optional<Fact> imageInfo(GenTL::BUFFER_INFO_CMD command) const;
    /// Returns where the next data begin.
    std::size_t copy(const QByteArray &data, qint64 first, qint64 size, std::size_t to);

    std::vector<unsigned char> m_own;
    unsigned char *const m_base;
    const std::size_t m_size;
    void *const m_user;
    bool m_hasData = false;
    std::vector<FramePart> m_parts; ///< without their data
    std::size_t m_frameSize = 0;
    std::size_t m_filled = 0;
    std::size_t m_chunkSize = 0;
    qint64 m_timestamp = 0;
};

} // namespace TestProducer
