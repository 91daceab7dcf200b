// SPDX-License-Identifier: MIT
#include "SimpleNodes.h"

#include "NodeBuilder.h"
#include "NumberText.h"

#include <algorithm>

namespace NodeEngine {

// --- Boolean

bool BooleanNode::take(Tag tag, pugi::xml_node child, NodeBuilder &builder)
{
    switch (tag) {
    case Tag::Value:
        m_word = textOf(child);
        return true;
    case Tag::pValue:
        m_target = builder.link(*this, tag, child);
        return true;
    case Tag::OnValue:
        m_on = integerOfDescription(textOf(child)).value_or(1);
        return true;
    case Tag::OffValue:
        m_off = integerOfDescription(textOf(child)).value_or(0);
        return true;
    default:
        return Node::take(tag, child, builder);
    }
}

void BooleanNode::loaded(NodeBuilder &)
{
    const bool isOn = m_word == "true" || m_word == "Yes" || integerOfDescription(m_word).value_or(0) != 0;
    m_value = isOn ? m_on : m_off;
    m_word = {};
}

void BooleanNode::SetValue(bool value, bool verify)
{
    m_map.change([&] { set(value, verify); });
}

IBoolean &BooleanNode::operator=(bool value)
{
    SetValue(value, true);
    return *this;
}

bool BooleanNode::GetValue(bool, bool ignoreCache) const
{
    AutoLock lock(m_map.GetLock());
    return booleanValue(ignoreCache);
}

bool BooleanNode::booleanValue(bool fresh) const
{
    requireReadable("GetValue()");
    if (m_target && (!m_valueValid || fresh)) {
        const Evaluation step(*this, Evaluation::Value);
        step.require();
        m_value = m_target->integerValue(fresh);
        m_valueValid = hasCachableValue();
    }
    if (m_value != m_on && m_value != m_off)
        throw LOGICAL_ERROR_EXCEPTION("Value '%lld' is neither true (%lld) nor false (%lld)",
                                      static_cast<long long>(m_value), static_cast<long long>(m_on),
                                      static_cast<long long>(m_off));
    return m_value == m_on;
}

std::string BooleanNode::textValue(bool, bool fresh)
{
    return booleanValue(fresh) ? "1" : "0";
}

void BooleanNode::set(bool value, bool verify)
{
    requireWritable(verify, "SetValue()");
    const Evaluation step(*this, Evaluation::Write);
    step.require();
    const int64_t number = value ? m_on : m_off;
    if (m_target)
        m_target->setInteger(number, verify);
    else
        m_value = number;
    m_map.changed(*this);
}

void BooleanNode::setTextValue(const std::string &text, bool verify)
{
    const bool isTrue = text == "1" || text == "true";
    if (!isTrue && text != "0" && text != "false")
        throw INVALID_ARGUMENT_EXCEPTION("Node '%s' : cannot convert string '%s' to boolean", name().c_str(),
                                         text.c_str());
    set(isTrue, verify);
}

// --- Command

EAccessMode CommandNode::ownAccessMode() const
{
    if (m_target)
        return m_target->accessMode();
    return m_hasConstant ? RW : NA;
}

bool CommandNode::take(Tag tag, pugi::xml_node child, NodeBuilder &builder)
{
    switch (tag) {
    case Tag::Value:
        m_constant = integerOfDescription(textOf(child)).value_or(0);
        m_hasConstant = true;
        return true;
    case Tag::pValue:
        m_target = builder.link(*this, tag, child);
        return true;
    case Tag::CommandValue:
        m_commandValue = integerOfDescription(textOf(child)).value_or(0);
        return true;
    case Tag::pCommandValue:
        m_commandNode = builder.link(*this, tag, child);
        return true;
    default:
        return Node::take(tag, child, builder);
    }
}

void CommandNode::Execute(bool)
{
    m_map.change([this] { execute(); });
}

void CommandNode::execute()
{
    requireWritable(true, "Execute()");
    const Evaluation step(*this, Evaluation::Write);
    step.require();
    const int64_t value = m_commandNode ? m_commandNode->integerValue(false) : m_commandValue;
    if (m_target)
        m_target->setInteger(value, false);
    m_written = value;
    m_isUnderWay = m_target != nullptr;
    m_map.changed(*this);
}

bool CommandNode::IsDone(bool)
{
    bool isDone = true;
    m_map.change([&] {
        const EAccessMode mode = accessMode();
        if (!IsImplemented(mode))
            throw AccessException("Node is not implemented.", __FILE__, __LINE__, (name() + ".IsDone()").c_str(),
                                  name().c_str(), "AccessException");
        if (!m_isUnderWay)
            return;
        isDone = !IsReadable(mode) || m_target->integerValue(true) != m_written;
        m_isUnderWay = !isDone;
        if (isDone)
            m_map.changed(*this);
    });
    return isDone;
}

int64_t CommandNode::integerValue(bool fresh)
{
    requireReadable("GetValue()");
    const Evaluation step(*this, Evaluation::Value);
    step.require();
    return m_target ? m_target->integerValue(fresh) : m_constant;
}

std::string CommandNode::textValue(bool, bool)
{
    return m_isUnderWay ? "1" : "0";
}

void CommandNode::setTextValue(const std::string &, bool)
{
    execute();
}

// --- Category

bool CategoryNode::take(Tag tag, pugi::xml_node child, NodeBuilder &builder)
{
    if (tag != Tag::pFeature)
        return Node::take(tag, child, builder);
    builder.link(*this, tag, child);
    return true;
}

EVisibility CategoryNode::GetVisibility() const
{
    AutoLock lock(m_map.GetLock());
    EVisibility lowest = Invisible;
    const Evaluation step(*this, Evaluation::Look);
    if (!step.isEntered())
        return lowest;
    for (const Link &link : links()) {
        if (link.role == Tag::pFeature && lowest != Beginner)
            lowest = std::min(lowest, link.target->GetVisibility());
    }
    return lowest;
}

EAccessMode CategoryNode::computedAccessMode() const
{
    const Evaluation step(*this, Evaluation::Access);
    if (!step.isEntered())
        return NI;
    const bool hasFeature = std::any_of(links().begin(), links().end(), [](const Link &link) {
        return link.role == Tag::pFeature && IsImplemented(link.target->accessMode());
    });
    return hasFeature ? RO : NI;
}

void CategoryNode::GetFeatures(FeatureList_t &features) const
{
    features.clear();
    for (const Link &link : links()) {
        if (link.role == Tag::pFeature && link.target->asValue())
            features.push_back(link.target->asValue());
    }
}

} // namespace NodeEngine
