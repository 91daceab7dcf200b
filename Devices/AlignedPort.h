// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <GenApi/GenApi.h>

/// Makes accesses of any address and length from accesses of whole 32-bit words, as GigE Vision wants them
/// (READMEM and WRITEMEM take addresses and lengths in multiples of 4). A write that does not cover its first or last
/// word keeps the other bytes of that word by reading it first.
class AlignedPort : public GenApi::IPort
{
public:
    explicit AlignedPort(std::unique_ptr<GenApi::IPort> target);

    GenApi::EAccessMode GetAccessMode() const override;
    void Read(void *buffer, int64_t address, int64_t length) override;
    void Write(const void *buffer, int64_t address, int64_t length) override;

private:
    std::unique_ptr<GenApi::IPort> m_target;
};
