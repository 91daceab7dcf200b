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

std::unique_ptr<Node> makeNode(NodeContext &context, const NodeRecord &record)
{
    switch (record.tag) {
    case Tag::Category:
        return std::make_unique<CategoryNode>(context, record);
    case Tag::Integer:
        return std::make_unique<IntegerNode>(context, record);
    case Tag::IntReg:
    case Tag::MaskedIntReg:
        return std::make_unique<IntRegNode>(context, record);
    case Tag::IntSwissKnife:
        return std::make_unique<IntSwissKnifeNode>(context, record);
    case Tag::IntConverter:
        return std::make_unique<IntConverterNode>(context, record);
    case Tag::Float:
        return std::make_unique<FloatNode>(context, record);
    case Tag::FloatReg:
        return std::make_unique<FloatRegNode>(context, record);
    case Tag::Converter:
        return std::make_unique<ConverterNode>(context, record);
    case Tag::SwissKnife:
        return std::make_unique<SwissKnifeNode>(context, record);
    case Tag::Enumeration:
        return std::make_unique<EnumerationNode>(context, record);
    case Tag::EnumEntry:
        return std::make_unique<EnumEntryNode>(context, record);
    case Tag::Boolean:
        return std::make_unique<BooleanNode>(context, record);
    case Tag::Command:
        return std::make_unique<CommandNode>(context, record);
    case Tag::String:
        return std::make_unique<StringNode>(context, record);
    case Tag::StringReg:
        return std::make_unique<StringRegNode>(context, record);
    case Tag::Register:
        return std::make_unique<RawRegisterNode>(context, record);
    case Tag::Port:
        return std::make_unique<PortNode>(context, record);
    default:
        return std::make_unique<PlainNode>(context, record);
    }
}

} // namespace NodeEngine
