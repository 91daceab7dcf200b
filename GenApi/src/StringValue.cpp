// SPDX-License-Identifier: MIT
#include "StringValue.h"

#include "NodeBuilder.h"

namespace NodeEngine {

namespace {

// Of texts that live in the node itself.
constexpr int64_t GreatestConstant = 1073741820;

} // namespace

void StringValue::SetValue(const gcstring &value, bool verify)
{
    m_map.change([&] { setTextValue(stringOf(value), verify); });
}

IString &StringValue::operator=(const gcstring &value)
{
    SetValue(value, true);
    return *this;
}

gcstring StringValue::GetValue(bool verify, bool ignoreCache)
{
    AutoLock lock(m_map.GetLock());
    if (!IsReadable(accessMode()))
        refuse("Node is not readable", "GetValue()");
    return gcstringOf(textValue(verify, ignoreCache));
}

int64_t StringValue::GetMaxLength(bool)
{
    AutoLock lock(m_map.GetLock());
    return greatestLength();
}

std::string StringValue::textValue(bool, bool fresh)
{
    if (!IsReadable(accessMode()))
        refuse("Node is not readable", "GetValue()");
    const Evaluation step(*this, Evaluation::Value);
    step.require();
    return readString(fresh);
}

void StringValue::setTextValue(const std::string &text, bool verify)
{
    if (!IsWritable(verify ? accessMode() : baseAccessMode()))
        refuse("Node is not writable", "SetValue()");
    const int64_t most = capacity();
    if (static_cast<int64_t>(text.size()) > most)
        throw OUT_OF_RANGE_EXCEPTION("String exceeds maximum length. Max length is %lld", static_cast<long long>(most));
    const Evaluation step(*this, Evaluation::Write);
    step.require();
    writeString(text, verify);
    m_map.changed(*this);
}

int64_t StringValue::greatestLength()
{
    // Nothing longer than the present text can be there if nothing can be written.
    const EAccessMode mode = accessMode();
    const Evaluation step(*this, Evaluation::MaxLimit);
    step.require();
    if (IsWritable(mode) || isBroken())
        return capacity();
    const Evaluation read(*this, Evaluation::Value);
    read.require();
    return static_cast<int64_t>(readString(false).size());
}

bool StringNode::take(Tag tag, pugi::xml_node child, NodeBuilder &builder)
{
    switch (tag) {
    case Tag::Value:
        m_constant = child.text().get();
        return true;
    case Tag::pValue:
        m_target = builder.link(*this, tag, child);
        return true;
    default:
        return Node::take(tag, child, builder);
    }
}

std::string StringNode::readString(bool fresh)
{
    return m_target ? m_target->textValue(false, fresh) : m_constant;
}

void StringNode::writeString(const std::string &value, bool verify)
{
    if (m_target)
        m_target->setTextValue(value, verify);
    else
        m_constant = value;
}

int64_t StringNode::capacity()
{
    return m_target ? m_target->greatestLength() : GreatestConstant;
}

} // namespace NodeEngine
