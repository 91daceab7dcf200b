// SPDX-License-Identifier: MIT
#include "StringValue.h"

#include "NodeLoader.h"

namespace NodeEngine {

namespace {

// Of texts that live in the node itself.
constexpr int64_t GreatestConstant = 1073741820;

} // namespace

void StringValue::SetValue(const GenICam::gcstring &value, bool verify)
{
    m_context.changes.change([&] { setTextValue(stringOf(value), verify); });
}

GenApi::IString &StringValue::operator=(const GenICam::gcstring &value)
{
    SetValue(value, true);
    return *this;
}

GenICam::gcstring StringValue::GetValue(bool verify, bool ignoreCache)
{
    const GenApi::AutoLock lock(m_context.lock);
    if (!GenApi::IsReadable(accessMode()))
        refuse(*this, "Node is not readable", "GetValue()");
    return gcstringOf(textValue(verify, ignoreCache));
}

int64_t StringValue::GetMaxLength(bool)
{
    const GenApi::AutoLock lock(m_context.lock);
    return greatestLength();
}

std::string StringValue::textValue(bool, bool fresh)
{
    if (!GenApi::IsReadable(accessMode()))
        refuse(*this, "Node is not readable", "GetValue()");
    const Evaluation step(m_evaluation, Evaluation::Value);
    step.require();
    return readString(fresh);
}

void StringValue::setTextValue(const std::string &text, bool verify)
{
    if (!GenApi::IsWritable(verify ? accessMode() : baseAccessMode()))
        refuse(*this, "Node is not writable", "SetValue()");
    const int64_t most = capacity();
    if (static_cast<int64_t>(text.size()) > most)
        throw OUT_OF_RANGE_EXCEPTION("String exceeds maximum length. Max length is %lld", static_cast<long long>(most));
    const Evaluation step(m_evaluation, Evaluation::Write);
    step.require();
    writeString(text, verify);
    m_context.changes.changed(*this);
}

int64_t StringValue::greatestLength()
{
    // Nothing longer than the present text can be there if nothing can be written.
    const GenApi::EAccessMode mode = accessMode();
    const Evaluation step(m_evaluation, Evaluation::MaxLimit);
    step.require();
    if (GenApi::IsWritable(mode) || isBroken())
        return capacity();
    const Evaluation read(m_evaluation, Evaluation::Value);
    read.require();
    return static_cast<int64_t>(readString(false).size());
}

bool StringNode::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    switch (tag) {
    case Tag::Value:
        m_constant = child.text().get();
        return true;
    case Tag::pValue:
        m_target = loader.link(*this, tag, child);
        return true;
    default:
        return PublicNode::take(tag, child, loader);
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
