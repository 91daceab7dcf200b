// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include <GenApi/GenApi.h>

#include "support/MemoryPort.h"

/// A node map over a memory device, with features of every kind that the tree shows.
class TestCamera
{
public:
    /// Where the registers of the built-in description lie.
    enum Address {
        // clang-format off
        Width = 0x000, Switch = 0x004, Selector = 0x008, Power = 0x00c, Gain = 0x010, Start = 0x018,
        TriggerSoftware = 0x01c, Mask = 0x020, Mac = 0x028, Flags = 0x030, Big = 0x038, LineRate = 0x040,
        Temperature = 0x048, Address4 = 0x050, WriteOnlyGain = 0x080, Fragile = 0x088, Uncached = 0x08c,
        Locked = 0x090, Label = 0x100
        // clang-format on
    };

    /// `description` is the text of a camera description; the built-in one by default.
    explicit TestCamera(const std::string &description = builtIn());
    ~TestCamera();
    TestCamera(const TestCamera &) = delete;
    TestCamera &operator=(const TestCamera &) = delete;

    /// Lets the device hold values that are not its first ones.
    void pokeValues();
    /// Null for an unknown name.
    GenApi::INode *node(const char *name) const { return map->GetNode(name); }
    GenApi::node_vector nodes() const;

    /// A description whose document element holds these elements.
    static std::string description(const std::string &elements);
    static std::string builtIn();

    MemoryPort port;
    GenApi::INodeMap *map = nullptr;
};
