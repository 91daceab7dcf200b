// SPDX-License-Identifier: MIT
#include "Devices/AlignedPort.h"

#include <cstring>
#include <utility>
#include <vector>

namespace {

constexpr int64_t Word = 4; // bytes

/// The whole words that a range of bytes touches.
struct Window
{
    Window(int64_t address, int64_t length)
        : begin(address & ~(Word - 1)), skipped(address - begin), length((skipped + length + Word - 1) & ~(Word - 1))
    { }

    int64_t begin;
    int64_t skipped; ///< bytes before the range
    int64_t length;

    bool isExactly(int64_t bytes) const { return skipped == 0 && length == bytes; }
};

} // namespace

AlignedPort::AlignedPort(std::unique_ptr<GenApi::IPort> port) : m_target(std::move(port)) { }

GenApi::EAccessMode AlignedPort::GetAccessMode() const
{
    return m_target->GetAccessMode();
}

void AlignedPort::Read(void *buffer, int64_t address, int64_t length)
{
    const Window window(address, length);
    if (window.isExactly(length)) {
        m_target->Read(buffer, address, length);
        return;
    }
    std::vector<char> words(static_cast<std::size_t>(window.length));
    m_target->Read(words.data(), window.begin, window.length);
    std::memcpy(buffer, words.data() + window.skipped, static_cast<std::size_t>(length));
}

void AlignedPort::Write(const void *buffer, int64_t address, int64_t length)
{
    const Window window(address, length);
    if (window.isExactly(length)) {
        m_target->Write(buffer, address, length);
        return;
    }
    std::vector<char> words(static_cast<std::size_t>(window.length));
    const int64_t lastWord = window.length - Word;
    if (window.skipped > 0)
        m_target->Read(words.data(), window.begin, Word);
    if (window.skipped + length < window.length && (lastWord > 0 || window.skipped == 0))
        m_target->Read(words.data() + lastWord, window.begin + lastWord, Word);
    std::memcpy(words.data() + window.skipped, buffer, static_cast<std::size_t>(length));
    m_target->Write(words.data(), window.begin, window.length);
}
