// SPDX-License-Identifier: MIT
// Settings files: read, written again, and loaded into a device with selectors.
#include "fuzz/Fuzz.h"

#include "support/MemoryPort.h"

#include <GenApi/GenApi.h>
#include <GenApi/PersistenceDevice.h>

#include <memory>
#include <sstream>

namespace {

const std::string Description = R"(<RegisterDescription ModelName="M" VendorName="V">
<Category Name="Root"><pFeature>A</pFeature><pFeature>B</pFeature><pFeature>C</pFeature><pFeature>F</pFeature>
<pFeature>S</pFeature></Category>
<Integer Name="A"><Streamable>Yes</Streamable><Value>0</Value><Min>0</Min><Max>1</Max><pSelected>B</pSelected>
<pSelected>C</pSelected></Integer>
<Enumeration Name="B"><Streamable>Yes</Streamable><EnumEntry Name="X"><Value>0</Value></EnumEntry>
<EnumEntry Name="Y"><Value>1</Value></EnumEntry><Value>0</Value><pSelected>A</pSelected><pSelected>C</pSelected>
</Enumeration>
<IntReg Name="C"><Streamable>Yes</Streamable><Address>0</Address><pIndex Offset="8">A</pIndex><pIndex Offset="4">B</pIndex>
<Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></IntReg>
<Float Name="F"><Streamable>Yes</Streamable><Value>0</Value></Float>
<StringReg Name="S"><Streamable>Yes</Streamable><Address>64</Address><Length>16</Length><AccessMode>RW</AccessMode>
<pPort>Device</pPort></StringReg>
<Port Name="Device"/></RegisterDescription>)";

std::string written(const Persistence::Settings &settings)
{
    std::ostringstream stream;
    Persistence::writeSettings(stream, settings);
    return stream.str();
}

Persistence::Settings read(const std::string &text)
{
    std::istringstream stream(text);
    return Persistence::readSettings(stream);
}

bool isSame(const Persistence::Entry &left, const Persistence::Entry &right)
{
    return left.place() == right.place() && left.value == right.value;
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    Persistence::Settings settings;
    try {
        settings = read(Fuzz::Bytes(data, size).rest());
    } catch (const GenICam::RuntimeException &) { // is how streams are refused
        return 0;
    }
    GenApi::CNodeMapFactory factory(GenApi::ContentType_Xml, Description.data(), Description.size());
    GenApi::INodeMap *map = factory.CreateNodeMap();
    MemoryPort port(128);
    map->Connect(&port);
    Persistence::loadEntries(*map, settings.entries);
    const Persistence::Settings stored = Persistence::storeSettings(*map);
    const auto again = read(written(stored)).entries;
    Fuzz::expect(std::equal(stored.entries.begin(), stored.entries.end(), again.begin(), again.end(), isSame),
                 "what is stored reads back");
    for (const Persistence::Outcome &outcome : Persistence::loadEntries(*map, again).outcomes)
        Fuzz::expect(outcome.isDone(), "what is stored loads");
    GenApi::CastToIDestroy(map)->Destroy();
    return 0;
}
