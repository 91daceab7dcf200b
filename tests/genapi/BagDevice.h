// SPDX-License-Identifier: MIT
#pragma once

#include "support/MemoryPort.h"

#include <GenApi/GenApi.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>

inline std::string contentOfBag(const std::string &name)
{
    std::ifstream file(std::string(BAGS) + "/" + name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

/// A description of data/bags over the memory that lies beside it.
class BagDevice
{
public:
    explicit BagDevice(const std::string &name)
    {
        std::istringstream lines(contentOfBag(name + ".mem"));
        std::string remark;
        std::getline(lines, remark);
        uint64_t address = 0;
        for (uint64_t bytes = 0; lines >> std::hex >> address >> bytes;)
            port.pokeBigEndian(static_cast<int64_t>(address), bytes);
        const std::string text = contentOfBag(name + ".xml");
        GenApi::CNodeMapFactory factory(GenApi::ContentType_Xml, text.data(), text.size());
        map.reset(factory.CreateNodeMap());
        map->Connect(&port);
    }

    /// All bytes that the descriptions use.
    std::string memory() const
    {
        std::string bytes;
        for (int64_t address = 0; address < Size; address += 8)
            bytes += std::to_string(port.peek(address, 8)) + " ";
        return bytes;
    }

private:
    struct Destroy
    {
        void operator()(GenApi::INodeMap *map) const { GenApi::CastToIDestroy(map)->Destroy(); }
    };
    static constexpr int64_t Size = 0x18000;

public:
    MemoryPort port{Size};
    std::unique_ptr<GenApi::INodeMap, Destroy> map;
};
