// SPDX-License-Identifier: MIT
#include "Evaluation.h"

#include <string>

namespace NodeEngine {

EndlessEvaluation::EndlessEvaluation(std::string_view node)
    : GenICam::RuntimeException("The node depends on itself, or on a chain of nodes that is too long.", __FILE__,
                                __LINE__, "", std::string(node).c_str(), "RuntimeException")
{ }

Evaluation::Evaluation(EvaluationState &node, Step step) : m_node(node), m_step(step)
{
    EvaluationBudget &budget = node.budget;
    if (budget.depth == 0)
        budget.steps = 0;
    ++budget.steps;
    const bool hasRoom = budget.depth < Deepest && budget.steps < MostSteps;
    m_entered = hasRoom && !(node.underWay & step);
    if (m_entered) {
        node.underWay |= step;
        ++budget.depth;
    }
}

Evaluation::~Evaluation()
{
    if (m_entered) {
        m_node.underWay = static_cast<uint8_t>(m_node.underWay & ~m_step);
        --m_node.budget.depth;
    }
}

void Evaluation::require() const
{
    if (!m_entered)
        throw EndlessEvaluation(m_node.node);
}

} // namespace NodeEngine
