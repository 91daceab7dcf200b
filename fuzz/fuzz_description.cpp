// SPDX-License-Identifier: MIT
// Camera descriptions as XML, each loaded and used.
#include "fuzz/Fuzz.h"
#include "fuzz/NodeUse.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    Fuzz::useDescription(Fuzz::Bytes(data, size).rest());
    return 0;
}
