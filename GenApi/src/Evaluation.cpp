// SPDX-License-Identifier: MIT
#include "Evaluation.h"

#include "Node.h"
#include "NodeMap.h"

namespace NodeEngine {

EndlessEvaluation::EndlessEvaluation(const Node &node)
    : RuntimeException("The node depends on itself, or on a chain of nodes that is too long.", __FILE__, __LINE__, "",
                       node.name().c_str(), "RuntimeException")
{ }

Evaluation::Evaluation(const Node &node, Step step) : m_node(node), m_step(step)
{
    const NodeMap &map = node.map();
    if (map.evaluationDepth == 0)
        map.evaluationSteps = 0;
    ++map.evaluationSteps;
    const bool hasRoom = map.evaluationDepth < Deepest && map.evaluationSteps < MostSteps;
    m_entered = hasRoom && !(node.evaluating & step);
    if (m_entered) {
        node.evaluating |= step;
        ++map.evaluationDepth;
    }
}

Evaluation::~Evaluation()
{
    if (m_entered) {
        m_node.evaluating = static_cast<Flags>(m_node.evaluating & ~m_step);
        --m_node.map().evaluationDepth;
    }
}

void Evaluation::require() const
{
    if (!m_entered)
        throw EndlessEvaluation(m_node);
}

} // namespace NodeEngine
