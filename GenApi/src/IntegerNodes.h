// SPDX-License-Identifier: MIT
#pragma once

#include "IntegerValue.h"
#include "LimitSource.h"

namespace NodeEngine {

/// Integer: a constant, or what pValue leads to, with limits of its own.
class IntegerNode : public IntegerValue
{
public:
    IntegerNode(NodeContext &context, const NodeRecord &record) : IntegerValue(context, record), m_source(*this) { }

    GenApi::EIncMode incrementMode() const override;
    GenApi::ERepresentation representation() const override;
    std::string unit() const override;

protected:
    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader) override;
    GenApi::EAccessMode ownAccessMode() const override { return m_source.accessMode(); }
    GenApi::EAccessMode ownBaseAccessMode() const override { return m_source.baseAccessMode(); }
    int64_t readNumber(bool fresh) override;
    void writeNumber(int64_t value, bool verify) override;
    int64_t ownLimit(Limit limit) const override;

private:
    int64_t givenLimit(Limit limit) const;

    ValueSource<int64_t> m_source;
    LimitSource<int64_t> m_limits;
};

} // namespace NodeEngine
