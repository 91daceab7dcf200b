// SPDX-License-Identifier: MIT
// Zipped camera descriptions. The two bytes that make an archive are given, so that none is taken for XML.
#include <GenApi/GenApi.h>

#include "GenApi/src/DescriptionArchive.h"
#include "fuzz/Fuzz.h"
#include "fuzz/NodeUse.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    constexpr std::size_t LargestSize = 1 << 20;
    const std::string archive = "PK" + Fuzz::Bytes(data, size).rest();
    try {
        const std::string text = NodeEngine::descriptionInArchive(archive, LargestSize);
        Fuzz::expect(text.size() <= LargestSize, "the text is within its limit");
    } catch (const GenICam::GenericException &) { // is how archives are refused
    }
    Fuzz::useDescription(archive);
    return 0;
}
