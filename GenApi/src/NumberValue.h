// SPDX-License-Identifier: MIT
#pragma once

#include "Evaluation.h"
#include "ValueNode.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <type_traits>

namespace NodeEngine {

/// What whole and floating-point numbers have in common: a cached value, limits that can be imposed, a range to keep.
/// `Interface` is IInteger or IFloat, `Number` its type.
template <class Interface, class Number>
class NumberValue : public ValueNode<Interface>
{
public:
    using ValueNode<Interface>::ValueNode;

    void SetValue(Number value, bool verify) override
    {
        this->m_context.changes.change([&] {
            if constexpr (std::is_integral_v<Number>)
                this->setInteger(value, verify);
            else
                this->setFloat(value, verify);
        });
    }
    Interface &operator=(Number value) override
    {
        SetValue(value, true);
        return *this;
    }
    Number GetValue(bool verify, bool ignoreCache) override
    {
        const GenApi::AutoLock lock(this->m_context.lock);
        const Number value = number(ignoreCache);
        if (verify)
            requireInRange(value, "GetValue()");
        return value;
    }
    Number operator()() override { return GetValue(false, false); }
    Number operator*() override { return GetValue(false, false); }
    Number GetMin() override { return publicLimit(Limit::Min); }
    Number GetMax() override { return publicLimit(Limit::Max); }
    GenApi::EIncMode GetIncMode() override
    {
        const GenApi::AutoLock lock(this->m_context.lock);
        return this->incrementMode();
    }
    GenApi::ERepresentation GetRepresentation() override
    {
        const GenApi::AutoLock lock(this->m_context.lock);
        const GenApi::ERepresentation known = this->representation();
        return known == GenApi::_UndefinedRepresentation ? GenApi::PureNumber : known;
    }
    void ImposeMin(Number value) override { impose(m_imposedMin, value); }
    void ImposeMax(Number value) override { impose(m_imposedMax, value); }

    GenApi::ERepresentation representation() const override { return m_representation; }
    std::string unit() const override { return this->text(Tag::Unit); }

protected:
    virtual Number readNumber(bool fresh) = 0;
    virtual void writeNumber(Number value, bool verify) = 0;
    virtual Number typeLimit(Limit limit) const = 0;
    /// The limit without what was imposed; by default the type's.
    virtual Number ownLimit(Limit limit) const { return typeLimit(limit); }
    virtual void requireInRange(Number value, const char *call) const = 0;

    Number number(bool fresh)
    {
        requireReadable(*this, "GetValue()");
        if (this->m_valueValid && !fresh)
            return m_value;
        const Evaluation step(this->m_evaluation, Evaluation::Value);
        step.require();
        const Number value = readNumber(fresh);
        m_value = value;
        this->m_valueValid = this->hasCachableValue();
        return value;
    }

    void setNumber(Number value, bool verify)
    {
        requireWritable(*this, verify, "SetValue()");
        if (verify)
            requireInRange(value, "SetValue()");
        const Evaluation step(this->m_evaluation, Evaluation::Write);
        step.require();
        writeNumber(value, verify);
        this->m_context.changes.changed(*this);
    }

    /// The limit that holds: the node's own, or the type's if limits depend on each other or a formula makes no
    /// finite number of it, within what was imposed.
    Number validLimit(Limit limit) const
    {
        const Evaluation::Step steps[] = {Evaluation::MinLimit, Evaluation::MaxLimit, Evaluation::IncLimit};
        const Evaluation step(this->m_evaluation, steps[static_cast<int>(limit)]);
        Number value = typeLimit(limit);
        if (step.isEntered()) {
            try {
                const Number own = ownLimit(limit);
                if (std::is_integral_v<Number> || std::isfinite(own))
                    value = own;
            } catch (const EndlessEvaluation &) {
                // Limits that depend on each other: the type's holds.
            }
        }
        if (limit == Limit::Min && m_imposedMin)
            value = std::max(value, *m_imposedMin);
        if (limit == Limit::Max && m_imposedMax)
            value = std::min(value, *m_imposedMax);
        return value;
    }

    /// As the interface gives it: throws while the feature is not available.
    Number publicLimit(Limit limit) const
    {
        const GenApi::AutoLock lock(this->m_context.lock);
        requireAvailable(*this);
        return validLimit(limit);
    }

    GenApi::ERepresentation m_representation = GenApi::_UndefinedRepresentation;

private:
    void impose(std::optional<Number> &bound, Number value)
    {
        this->m_context.changes.change([&] {
            bound = value;
            this->m_context.changes.changed(*this);
        });
    }

    Number m_value = 0; // while m_valueValid
    std::optional<Number> m_imposedMin;
    std::optional<Number> m_imposedMax;
};

} // namespace NodeEngine
