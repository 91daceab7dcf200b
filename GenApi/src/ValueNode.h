// SPDX-License-Identifier: MIT
#pragma once

#include "Node.h"
#include "NodeMap.h"

#include <GenApi/GenApi.h>

namespace NodeEngine {

inline std::string stringOf(const gcstring &text)
{
    return std::string(text.c_str(), text.size());
}

inline gcstring gcstringOf(const std::string &text)
{
    return gcstring(text.data(), text.size());
}

/// A node with one of the value interfaces: the part that all of them share.
template <class Interface>
class ValueNode : public Node, public virtual Interface
{
public:
    using Node::Node;

    IValue *asValue() override { return this; }

    // IValue
    INode *GetNode() override { return this; }
    gcstring ToString(bool verify, bool ignoreCache) override
    {
        AutoLock lock(m_map.GetLock());
        if (!IsReadable(accessMode()))
            refuse("Node is not readable", "ToString()");
        return gcstringOf(textValue(verify, ignoreCache));
    }
    void FromString(const gcstring &text, bool verify) override
    {
        m_map.change([&] {
            if (verify)
                requireWritable(true, "FromString()");
            setTextValue(stringOf(text), verify);
        });
    }
    bool IsValueCacheValid() const override
    {
        AutoLock lock(m_map.GetLock());
        return m_valueValid;
    }
};

} // namespace NodeEngine
