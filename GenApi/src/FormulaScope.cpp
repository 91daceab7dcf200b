// SPDX-License-Identifier: MIT
#include "FormulaScope.h"

#include "NodeLoader.h"
#include "NumberText.h"
#include "Refusals.h"

#include <algorithm>

namespace NodeEngine {

namespace {

// Expressions may use each other, but not without end, nor so often that a formula takes seconds.
constexpr int DeepestExpression = 30;
constexpr int MostExpressions = 2000;

} // namespace

bool FormulaScope::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    switch (tag) {
    case Tag::pVariable:
        loader.link(m_owner, tag, child);
        return true;
    case Tag::Constant:
        m_constants.push_back({child.attribute("Name").value(), textOf(child)});
        return true;
    case Tag::Expression:
        m_expressions.push_back({child.attribute("Name").value(), textOf(child)});
        return true;
    default:
        return false;
    }
}

bool FormulaScope::isUsable(Tag formula)
{
    return bound(formula) != nullptr;
}

FormulaScope::Bound *FormulaScope::bound(Tag formula)
{
    for (const auto &[tag, known] : m_bound) {
        if (tag == formula)
            return known.get();
    }
    std::unique_ptr<Bound> fresh;
    m_expressionUses = 0;
    try {
        fresh = bind(m_owner.text(formula), 0);
    } catch (const FormulaError &error) {
        m_owner.setBroken();
        m_context.log.warn("the formula of node '" + m_owner.name() + "' is not usable: " + error.what());
    }
    m_bound.emplace_back(formula, std::move(fresh));
    return m_bound.back().second.get();
}

std::unique_ptr<FormulaScope::Bound> FormulaScope::bind(std::string_view text, int depth)
{
    std::vector<std::string> declared{"FROM", "TO"};
    for (const Link &link : m_owner.links()) {
        if (link.role == Tag::pVariable)
            declared.emplace_back(link.name);
    }
    for (const auto *list : {&m_constants, &m_expressions}) {
        for (const Named &named : *list)
            declared.emplace_back(named.name);
    }
    auto bound = std::make_unique<Bound>(Bound{Formula::parse(text, declared), {}});
    for (const std::string &name : bound->formula.variables())
        bound->slots.push_back(bindingOf(name, depth));
    return bound;
}

FormulaScope::Binding FormulaScope::bindingOf(std::string_view name, int depth)
{
    const auto isName = [name](const Named &named) { return named.name == name; };
    if (const Link *link = variable(name)) {
        const std::size_t dot = name.find('.');
        return bindingOf(*link, dot == std::string_view::npos ? std::string_view() : name.substr(dot));
    }
    Binding binding;
    const auto constant = std::find_if(m_constants.begin(), m_constants.end(), isName);
    if (constant != m_constants.end()) {
        binding.kind = Binding::Constant;
        binding.integer = integerOfDescription(constant->text).value_or(0);
        binding.real = floatOfDescription(constant->text).value_or(0);
        return binding;
    }
    const auto expression = std::find_if(m_expressions.begin(), m_expressions.end(), isName);
    if (expression != m_expressions.end()) {
        if (depth == DeepestExpression || ++m_expressionUses > MostExpressions)
            throw FormulaError("its expressions use each other without end");
        binding.kind = Binding::Expression;
        binding.expression = bind(expression->text, depth + 1);
        return binding;
    }
    for (std::size_t dot = name.rfind('.'); dot != std::string_view::npos && dot > 0; dot = name.rfind('.', dot - 1)) {
        if (const Link *link = variable(name.substr(0, dot)))
            return bindingOf(*link, name.substr(dot));
    }
    if (name != "FROM" && name != "TO")
        throw FormulaError("the name '" + std::string(name) + "' is not declared");
    return binding;
}

const Link *FormulaScope::variable(std::string_view name) const
{
    for (const Link &link : m_owner.links()) {
        if (link.role == Tag::pVariable && link.name == name)
            return &link;
    }
    return nullptr;
}

FormulaScope::Binding FormulaScope::bindingOf(const Link &link, std::string_view property)
{
    Binding binding;
    binding.kind = Binding::Value;
    binding.node = link.target;
    constexpr std::string_view EntryPrefix = ".Entry.";
    if (property == ".Min")
        binding.kind = Binding::Min;
    else if (property == ".Max")
        binding.kind = Binding::Max;
    else if (property == ".Inc")
        binding.kind = Binding::Inc;
    else if (property.substr(0, EntryPrefix.size()) == EntryPrefix) {
        binding.kind = Binding::Constant;
        Node *entry = entryOf(*link.target, property.substr(EntryPrefix.size()));
        if (!entry)
            throw FormulaError("there is no entry '" + std::string(property.substr(EntryPrefix.size())) + "'");
        binding.integer = integerOfDescription(entry->text(Tag::Value)).value_or(0);
        binding.real = static_cast<double>(binding.integer);
    } else if (!property.empty() && property != ".Value")
        throw FormulaError("there is no '" + std::string(property) + "' of a variable");
    return binding;
}

Node *FormulaScope::entryOf(const Node &enumeration, std::string_view symbolic)
{
    for (const Link &link : enumeration.links()) {
        const bool isEntry = link.role == Tag::EnumEntry;
        if (isEntry && std::string_view(link.target->description().element().attribute("Name").value()) == symbolic)
            return link.target;
    }
    return nullptr;
}

template <class Number>
Number FormulaScope::value(Tag formula, Number input, bool fresh)
{
    const Bound *known = bound(formula);
    if (!known)
        refuse(m_owner, "Node is not readable.", "GetValue()");
    try {
        return evaluate(*known, input, fresh);
    } catch (const FormulaError &error) {
        throw RUNTIME_EXCEPTION("Node '%s' : %s", m_owner.name().c_str(), error.what());
    }
}

template <class Number>
Number FormulaScope::evaluate(const Bound &formula, Number input, bool fresh)
{
    // Small enough for std::function to hold without allocating.
    struct Context
    {
        FormulaScope *scope;
        const Bound *formula;
        Number input;
        bool fresh;
    };
    const Context context{this, &formula, input, fresh};
    const Formula::Variable<Number> variable = [&context](std::size_t slot) {
        return context.scope->template slotValue<Number>(context.formula->slots[slot], context.input, context.fresh);
    };
    if constexpr (std::is_same_v<Number, double>)
        return formula.formula.floatValue(variable);
    else
        return formula.formula.integerValue(variable);
}

template <class Number>
Number FormulaScope::slotValue(const Binding &binding, Number input, bool fresh)
{
    constexpr bool IsReal = std::is_same_v<Number, double>;
    const auto limit = [&](Limit which) -> Number {
        if constexpr (IsReal)
            return binding.node->floatLimit(which);
        else
            return binding.node->integerLimit(which);
    };
    switch (binding.kind) {
    case Binding::Input:
        return input;
    case Binding::Constant:
        return IsReal ? static_cast<Number>(binding.real) : static_cast<Number>(binding.integer);
    case Binding::Expression:
        return evaluate(*binding.expression, input, fresh);
    case Binding::Min:
        return limit(Limit::Min);
    case Binding::Max:
        return limit(Limit::Max);
    case Binding::Inc:
        return limit(Limit::Inc);
    case Binding::Value:
        break;
    }
    if constexpr (IsReal)
        return binding.node->floatValue(fresh);
    else
        return binding.node->integerValue(fresh);
}

template int64_t FormulaScope::value(Tag, int64_t, bool);
template double FormulaScope::value(Tag, double, bool);

} // namespace NodeEngine
