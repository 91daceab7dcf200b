// SPDX-License-Identifier: MIT
#pragma once

#include "Formula.h"
#include "Node.h"
#include "NodeContext.h"

#include <memory>
#include <string_view>
#include <vector>

namespace NodeEngine {

/// The variables, constants and expressions of a formula node, and its formulas bound to them.
///
/// Formulas are parsed when they are needed first. A node whose formula does not parse, or mentions a name that nobody
/// declares, is broken; that is logged once.
class FormulaScope
{
public:
    FormulaScope(Node &owner, NodeContext &context) : m_owner(owner), m_context(context) { }

    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader);

    /// True if the formula in that child element of the owner can be evaluated.
    bool isUsable(Tag formula);

    /// The formula's value in the number system of Number (int64_t or double).
    /// \param input the value of the variable FROM or TO of converters
    /// \throws GenICam::RuntimeException on a division by zero
    template <class Number>
    Number value(Tag formula, Number input, bool fresh);

private:
    struct Named
    {
        std::string_view name;
        std::string_view text;
    };
    struct Bound;
    // What a name in a formula stands for.
    struct Binding
    {
        enum Kind { Input, Constant, Expression, Value, Min, Max, Inc } kind = Input;
        Node *node = nullptr;
        std::shared_ptr<const Bound> expression;
        int64_t integer = 0;
        double real = 0;
    };
    struct Bound
    {
        Formula formula;
        std::vector<Binding> slots;
    };

    Bound *bound(Tag formula);
    std::unique_ptr<Bound> bind(std::string_view text, int depth);
    Binding bindingOf(std::string_view name, int depth);
    const Link *variable(std::string_view name) const;
    static Binding bindingOf(const Link &link, std::string_view property);
    static Node *entryOf(const Node &enumeration, std::string_view symbolic);

    template <class Number>
    Number evaluate(const Bound &formula, Number input, bool fresh);
    template <class Number>
    Number slotValue(const Binding &binding, Number input, bool fresh);

    Node &m_owner;
    NodeContext &m_context;
    std::vector<Named> m_constants;
    std::vector<Named> m_expressions;
    int m_expressionUses = 0; ///< in the formula that is being bound
    std::vector<std::pair<Tag, std::unique_ptr<Bound>>> m_bound;
};

} // namespace NodeEngine
