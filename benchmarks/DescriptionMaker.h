// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// A made-up camera: its description and what its registers hold.
struct MadeDescription
{
    struct Register
    {
        int64_t address; ///< bytes from the start of the memory
        int length; ///< in bytes
        std::vector<uint8_t> content;
        bool isCachable; ///< may be read once and kept
        bool isGate; ///< an availability node reads it
    };

    std::string xml;
    std::vector<std::string> features; ///< names, without categories
    std::vector<Register> registers;
    int64_t memorySize = 0; ///< bytes that hold all registers
};

/// Makes a camera of that many features, a multiple of 20, in the style of the SFNC: blocks of twenty features of all
/// kinds over registers, converters and swiss knives, with selectors, limits that depend on other features, gates and
/// locks, one category a block and groups of five blocks. The same count gives the same camera.
MadeDescription makeDescription(int featureCount);
