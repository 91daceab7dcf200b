// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/GenApi.h>

/// Turns the bytes of every 32-bit word round: what a description asks of its port with SwapEndianess.
/// Takes accesses of whole words only; AlignedPort in front of it makes them.
class SwappedPort : public GenApi::IPort
{
public:
    /// `target` must outlive this object.
    explicit SwappedPort(GenApi::IPort &target) : m_target(target) { }

    GenApi::EAccessMode GetAccessMode() const override { return m_target.GetAccessMode(); }
    void Read(void *buffer, int64_t address, int64_t length) override;
    void Write(const void *buffer, int64_t address, int64_t length) override;

private:
    GenApi::IPort &m_target;
};
