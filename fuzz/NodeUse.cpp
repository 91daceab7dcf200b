// SPDX-License-Identifier: MIT
#include "fuzz/NodeUse.h"

#include <memory>

#include <GenApi/GenApi.h>
#include <GenApi/NodeMapFactory.h>

#include "support/MemoryPort.h"

namespace {

constexpr std::size_t MostNodes = 200; ///< of one description that are used
constexpr unsigned MostAccesses = 20'000; ///< to the device, for all of them together

struct Destroyer
{
    void operator()(GenApi::INodeMap *map) const { GenApi::CastToIDestroy(map)->Destroy(); }
};
using Map = std::unique_ptr<GenApi::INodeMap, Destroyer>;

/// Memory that refuses once it was asked too often.
class TiredPort : public MemoryPort
{
public:
    void Read(void *buffer, int64_t address, int64_t length) override
    {
        tire();
        MemoryPort::Read(buffer, address, length);
    }
    void Write(const void *buffer, int64_t address, int64_t length) override
    {
        tire();
        MemoryPort::Write(buffer, address, length);
    }

private:
    void tire()
    {
        if (++m_count > MostAccesses)
            throw RUNTIME_EXCEPTION("too many accesses");
        resetCounters(); // of the record, which would grow
    }

    unsigned m_count = 0;
};

template <class Action>
void tried(Action action)
{
    try {
        action();
    } catch (const GenICam::GenericException &) { // is how nodes refuse
    }
}

void lookAt(GenApi::INode &node)
{
    GenApi::NodeList_t list;
    for (const GenApi::ELinkType type :
         {GenApi::ctParentNodes, GenApi::ctReadingChildren, GenApi::ctWritingChildren, GenApi::ctInvalidatingChildren,
          GenApi::ctDependingNodes, GenApi::ctTerminalNodes})
        tried([&] { node.GetChildren(list, type); });
    GenICam::gcstring_vector names;
    node.GetPropertyNames(names);
    GenICam::gcstring value, attribute;
    for (const GenICam::gcstring &name : names)
        node.GetProperty(name, value, attribute);
    tried([&] { node.GetVisibility(); });
    tried([&] { node.GetDescription(); });
    tried([&] { node.GetAccessMode(); });
    tried([&] { node.GetAlias(); });
}

template <class Number>
void readLimits(const Number &number)
{
    tried([&] { number->GetMin(); });
    tried([&] { number->GetMax(); });
    tried([&] { number->GetUnit(); });
    tried([&] { number->GetRepresentation(); });
}

void readNumber(GenApi::INode &node)
{
    if (const GenApi::CIntegerPtr integer(&node); integer.IsValid()) {
        readLimits(integer);
        tried([&] { integer->GetInc(); });
        tried([&] { integer->SetValue(integer->GetValue() ^ 1); });
    }
    if (const GenApi::CFloatPtr real(&node); real.IsValid()) {
        readLimits(real);
        tried([&] { real->GetInc(); });
        tried([&] { real->SetValue(real->GetValue() / 2); });
    }
}

void readEntries(GenApi::INode &node)
{
    const GenApi::CEnumerationPtr choice(&node);
    if (!choice.IsValid())
        return;
    GenApi::NodeList_t entries;
    tried([&] { choice->GetEntries(entries); });
    tried([&] { choice->GetCurrentEntry(); });
    for (GenApi::INode *entry : entries) {
        tried([&] { GenApi::CEnumEntryPtr(entry)->GetAccessMode(); });
        tried([&] { choice->SetIntValue(GenApi::CEnumEntryPtr(entry)->GetValue()); });
    }
}

void use(GenApi::INode &node)
{
    lookAt(node);
    readNumber(node);
    readEntries(node);
    if (const GenApi::CValuePtr value(&node); value.IsValid()) {
        GenICam::gcstring text;
        tried([&] { text = value->ToString(true, true); });
        tried([&] { value->FromString(text); });
    }
    if (const GenApi::CCommandPtr command(&node); command.IsValid()) {
        tried([&] { command->Execute(); });
        tried([&] { command->IsDone(); });
    }
    tried([&] { node.InvalidateNode(); });
}

Map loaded(const std::string &content)
{
    Map map;
    tried([&] {
        GenApi::CNodeMapFactory factory(GenApi::ContentType_Xml, content.data(), content.size());
        map.reset(factory.CreateNodeMap("camera"));
    });
    return map;
}

} // namespace

void Fuzz::useDescription(const std::string &content)
{
    const Map map = loaded(content);
    if (!map)
        return;
    TiredPort port;
    tried([&] { map->Connect(&port); });
    GenApi::NodeList_t nodes;
    map->GetNodes(nodes);
    std::size_t count = 0;
    for (GenApi::INode *node : nodes) {
        if (++count > MostNodes)
            break;
        use(*node);
    }
    tried([&] { map->Poll(1000); });
    tried([&] { map->InvalidateNodes(); });
}
