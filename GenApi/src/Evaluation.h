// SPDX-License-Identifier: MIT
#pragma once

#include <Base/GCException.h>

#include <cstdint>
#include <string_view>

namespace NodeEngine {

/// A node was asked for what is just being computed for it, or the links run too deep or too wide.
class EndlessEvaluation : public GenICam::RuntimeException
{
public:
    explicit EndlessEvaluation(std::string_view node);
};

/// How many steps are under way in a map. The map's lock is held.
struct EvaluationBudget
{
    int depth = 0; ///< steps within each other
    int steps = 0; ///< since the outermost one began
};

/// The steps of one node that are under way.
struct EvaluationState
{
    EvaluationState(EvaluationBudget &ofMap, std::string_view name) : budget(ofMap), node(name) { }

    EvaluationBudget &budget;
    std::string_view node; ///< its name
    uint8_t underWay = 0; ///< Evaluation::Step, or-ed
};

/// Guards one step of a computation that follows links: no step of a node is entered twice at a time, and no chain of
/// links exhausts the stack or, where nothing can be cached, the user's patience. The map's lock is held.
class Evaluation
{
public:
    enum Step : uint8_t {
        Access = 1,
        Value = 2,
        MinLimit = 4,
        MaxLimit = 8,
        IncLimit = 16,
        Caching = 32,
        Look = 64,
        Write = 128
    };

    Evaluation(EvaluationState &node, Step step);
    ~Evaluation();
    Evaluation(const Evaluation &) = delete;
    Evaluation &operator=(const Evaluation &) = delete;

    /// False if the step must not be done.
    bool isEntered() const { return m_entered; }
    /// \throws EndlessEvaluation if the step must not be done.
    void require() const;

private:
    // Deeper than any camera's description, and far from the end of a thread's stack.
    static constexpr int Deepest = 400;
    // Far more than the category of all features of a big camera needs.
    static constexpr int MostSteps = 300000;

    EvaluationState &m_node;
    const Step m_step;
    bool m_entered = false;
};

} // namespace NodeEngine
