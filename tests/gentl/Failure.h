// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "Devices/gentl/GenTL.h"

namespace TestProducer {

/// Why a call fails: what it returns, and what GCGetLastError() tells.
struct Failure
{
    GenTL::GC_ERROR code;
    std::string words;
};

inline void require(bool holds, GenTL::GC_ERROR code, const char *words)
{
    if (!holds)
        throw Failure{code, words};
}

} // namespace TestProducer
