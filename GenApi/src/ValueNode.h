// SPDX-License-Identifier: MIT
#pragma once

#include "PublicNode.h"
#include "Refusals.h"

#include <GenApi/GenApi.h>

namespace NodeEngine {

inline std::string stringOf(const GenICam::gcstring &text)
{
    return std::string(text.c_str(), text.size());
}

inline GenICam::gcstring gcstringOf(const std::string &text)
{
    return GenICam::gcstring(text.data(), text.size());
}

/// A node with one of the value interfaces: the part that all of them share.
template <class Interface>
class ValueNode : public PublicNode, public virtual Interface
{
public:
    using PublicNode::PublicNode;

    GenApi::IValue *asValue() override { return this; }

    // IValue
    GenApi::INode *GetNode() override { return this; }
    GenICam::gcstring ToString(bool verify, bool ignoreCache) override
    {
        const GenApi::AutoLock lock(m_context.lock);
        if (!GenApi::IsReadable(accessMode()))
            refuse(*this, "Node is not readable", "ToString()");
        return gcstringOf(textValue(verify, ignoreCache));
    }
    void FromString(const GenICam::gcstring &text, bool verify) override
    {
        m_context.changes.change([&] {
            if (verify)
                requireWritable(*this, true, "FromString()");
            setTextValue(stringOf(text), verify);
        });
    }
    bool IsValueCacheValid() const override
    {
        const GenApi::AutoLock lock(m_context.lock);
        return m_valueValid;
    }
};

} // namespace NodeEngine
