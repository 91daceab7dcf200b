// SPDX-License-Identifier: MIT
#pragma once

#include "FloatValue.h"
#include "LimitSource.h"

namespace NodeEngine {

/// Float: a constant, or what pValue leads to, with limits of its own.
///
/// Over a whole number it takes that one's limits and increment, and a write goes to the nearest value in its grid.
class FloatNode : public FloatValue
{
public:
    FloatNode(NodeContext &context, const NodeRecord &record) : FloatValue(context, record), m_source(*this) { }

    bool hasIncrement() const override;
    GenApi::EIncMode incrementMode() const override;
    GenApi::ERepresentation representation() const override;
    std::string unit() const override;
    GenApi::EDisplayNotation displayNotation() const override;
    int64_t displayPrecision() const override;

protected:
    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader) override;
    GenApi::EAccessMode ownAccessMode() const override { return m_source.accessMode(); }
    GenApi::EAccessMode ownBaseAccessMode() const override { return m_source.baseAccessMode(); }
    double readNumber(bool fresh) override;
    void writeNumber(double value, bool verify) override;
    double ownLimit(Limit limit) const override;

private:
    template <class Value>
    Value inherited(Value own, Value none, Value (NodeValue::*get)() const) const;

    ValueSource<double> m_source;
    LimitSource<double> m_limits;
};

} // namespace NodeEngine
