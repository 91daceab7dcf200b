// SPDX-License-Identifier: MIT
#include "NodeKinds.h"

#include "EnumerationNodes.h"
#include "FloatNodes.h"
#include "FormulaNodes.h"
#include "IntegerNodes.h"
#include "PortNode.h"
#include "RegisterNodes.h"
#include "SimpleNodes.h"

namespace NodeEngine {

std::unique_ptr<Node> makeNode(NodeMap &map, const NodeRecord &record)
{
    switch (record.tag) {
    case Tag::Category:
        return std::make_unique<CategoryNode>(map, record);
    case Tag::Integer:
        return std::make_unique<IntegerNode>(map, record);
    case Tag::IntReg:
    case Tag::MaskedIntReg:
        return std::make_unique<IntRegNode>(map, record);
    case Tag::IntSwissKnife:
        return std::make_unique<IntSwissKnifeNode>(map, record);
    case Tag::IntConverter:
        return std::make_unique<IntConverterNode>(map, record);
    case Tag::Float:
        return std::make_unique<FloatNode>(map, record);
    case Tag::FloatReg:
        return std::make_unique<FloatRegNode>(map, record);
    case Tag::Converter:
        return std::make_unique<ConverterNode>(map, record);
    case Tag::SwissKnife:
        return std::make_unique<SwissKnifeNode>(map, record);
    case Tag::Enumeration:
        return std::make_unique<EnumerationNode>(map, record);
    case Tag::EnumEntry:
        return std::make_unique<EnumEntryNode>(map, record);
    case Tag::Boolean:
        return std::make_unique<BooleanNode>(map, record);
    case Tag::Command:
        return std::make_unique<CommandNode>(map, record);
    case Tag::String:
        return std::make_unique<StringNode>(map, record);
    case Tag::StringReg:
        return std::make_unique<StringRegNode>(map, record);
    case Tag::Register:
        return std::make_unique<RawRegisterNode>(map, record);
    case Tag::Port:
        return std::make_unique<PortNode>(map, record);
    default:
        return std::make_unique<PlainNode>(map, record);
    }
}

} // namespace NodeEngine
