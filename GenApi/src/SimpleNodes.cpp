// SPDX-License-Identifier: MIT
#include "SimpleNodes.h"

#include "NodeLoader.h"
#include "NumberText.h"

#include <algorithm>

namespace NodeEngine {

// --- Boolean

bool BooleanNode::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    switch (tag) {
    case Tag::Value:
        m_word = textOf(child);
        return true;
    case Tag::pValue:
        m_target = loader.link(*this, tag, child);
        return true;
    case Tag::OnValue:
        m_on = integerOfDescription(textOf(child)).value_or(1);
        return true;
    case Tag::OffValue:
        m_off = integerOfDescription(textOf(child)).value_or(0);
        return true;
    default:
        return PublicNode::take(tag, child, loader);
    }
}

void BooleanNode::loaded(NodeLoader &)
{
    const bool isOn = m_word == "true" || m_word == "Yes" || integerOfDescription(m_word).value_or(0) != 0;
    m_value = isOn ? m_on : m_off;
    m_word = {};
}

void BooleanNode::SetValue(bool value, bool verify)
{
    m_context.changes.change([&] { set(value, verify); });
}

GenApi::IBoolean &BooleanNode::operator=(bool value)
{
    SetValue(value, true);
    return *this;
}

bool BooleanNode::GetValue(bool, bool ignoreCache) const
{
    const GenApi::AutoLock lock(m_context.lock);
    return booleanValue(ignoreCache);
}

bool BooleanNode::booleanValue(bool fresh) const
{
    requireReadable(*this, "GetValue()");
    if (m_target && (!m_valueValid || fresh)) {
        const Evaluation step(m_evaluation, Evaluation::Value);
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
    requireWritable(*this, verify, "SetValue()");
    const Evaluation step(m_evaluation, Evaluation::Write);
    step.require();
    const int64_t number = value ? m_on : m_off;
    if (m_target)
        m_target->setInteger(number, verify);
    else
        m_value = number;
    m_context.changes.changed(*this);
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

GenApi::EAccessMode CommandNode::ownAccessMode() const
{
    if (m_target)
        return m_target->accessMode();
    return m_hasConstant ? GenApi::RW : GenApi::NA;
}

bool CommandNode::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    switch (tag) {
    case Tag::Value:
        m_constant = integerOfDescription(textOf(child)).value_or(0);
        m_hasConstant = true;
        return true;
    case Tag::pValue:
        m_target = loader.link(*this, tag, child);
        return true;
    case Tag::CommandValue:
        m_commandValue = integerOfDescription(textOf(child)).value_or(0);
        return true;
    case Tag::pCommandValue:
        m_commandNode = loader.link(*this, tag, child);
        return true;
    default:
        return PublicNode::take(tag, child, loader);
    }
}

void CommandNode::Execute(bool)
{
    m_context.changes.change([this] { execute(); });
}

void CommandNode::execute()
{
    requireWritable(*this, true, "Execute()");
    const Evaluation step(m_evaluation, Evaluation::Write);
    step.require();
    const int64_t value = m_commandNode ? m_commandNode->integerValue(false) : m_commandValue;
    if (m_target)
        m_target->setInteger(value, false);
    m_written = value;
    m_isUnderWay = m_target != nullptr;
    m_context.changes.changed(*this);
}

bool CommandNode::IsDone(bool)
{
    bool isDone = true;
    m_context.changes.change([&] {
        const GenApi::EAccessMode mode = accessMode();
        if (!GenApi::IsImplemented(mode))
            throw GenICam::AccessException("Node is not implemented.", __FILE__, __LINE__,
                                           (name() + ".IsDone()").c_str(), name().c_str(), "AccessException");
        if (!m_isUnderWay)
            return;
        isDone = !GenApi::IsReadable(mode) || m_target->integerValue(true) != m_written;
        m_isUnderWay = !isDone;
        if (isDone)
            m_context.changes.changed(*this);
    });
    return isDone;
}

int64_t CommandNode::integerValue(bool fresh)
{
    requireReadable(*this, "GetValue()");
    const Evaluation step(m_evaluation, Evaluation::Value);
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

bool CategoryNode::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    if (tag != Tag::pFeature)
        return PublicNode::take(tag, child, loader);
    loader.link(*this, tag, child);
    return true;
}

GenApi::EVisibility CategoryNode::GetVisibility() const
{
    const GenApi::AutoLock lock(m_context.lock);
    GenApi::EVisibility lowest = GenApi::Invisible;
    const Evaluation step(m_evaluation, Evaluation::Look);
    if (!step.isEntered())
        return lowest;
    for (const Link &link : links()) {
        if (link.role == Tag::pFeature && lowest != GenApi::Beginner)
            lowest = std::min(lowest, link.target->asNode().GetVisibility());
    }
    return lowest;
}

GenApi::EAccessMode CategoryNode::computedAccessMode() const
{
    const Evaluation step(m_evaluation, Evaluation::Access);
    if (!step.isEntered())
        return GenApi::NI;
    const bool hasFeature = std::any_of(links().begin(), links().end(), [](const Link &link) {
        return link.role == Tag::pFeature && GenApi::IsImplemented(link.target->accessMode());
    });
    return hasFeature ? GenApi::RO : GenApi::NI;
}

void CategoryNode::GetFeatures(GenApi::FeatureList_t &features) const
{
    features.clear();
    for (const Link &link : links()) {
        if (link.role == Tag::pFeature && link.target->asValue())
            features.push_back(link.target->asValue());
    }
}

} // namespace NodeEngine
