// SPDX-License-Identifier: MIT
#pragma once

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <GenApi/GenApi.h>

/// A register that can be cached, at the place where it is now.
struct NeededRegister
{
    GenApi::INode *node;
    int64_t address;
    int64_t length; ///< in bytes
};

/// Finds the registers of the device that its visible features depend on: for their values, limits and locks, with
/// the current values of selectors.
///
/// Works in rounds: where a register is, and whether a feature is there at all, may depend on other registers. A round
/// names registers of which everything that they depend on was named before and has been read meanwhile. What cannot
/// be cached is read by the nodes themselves when something depends on it. Nothing is read of features that are not
/// available.
class NeededRegisters
{
public:
    /// `map` must outlive this object.
    explicit NeededRegisters(GenApi::INodeMap &map);

    /// The registers of the next round, each once; none when all have been named. A TimeoutException of the device
    /// gets out, its other failures only cost the nodes that have them.
    std::vector<NeededRegister> nextRound();
    /// How many registers there can be at most, with those of features that are not available.
    int mostCount() const { return m_mostCount; }

private:
    enum class Subject {
        Access, ///< whether the node is there to be read
        Value, ///< its value, limits and lock
    };
    using Marks = std::unordered_map<GenApi::INode *, bool>; ///< known or not; while a node is looked at: known

    void countBelow(GenApi::INode *node, std::unordered_set<GenApi::INode *> &seen);
    /// Whether what the subject of the node depends on has been read; names what has not been.
    bool isKnown(GenApi::INode *node, Subject subject);
    bool isAccessKnown(GenApi::INode *node);
    bool isValueKnown(GenApi::INode *node);
    bool areKnown(const GenApi::NodeList_t &nodes, Subject subject);
    bool isRegisterKnown(GenApi::INode *node, bool knowsLock);

    std::vector<GenApi::INode *> m_features;
    int m_mostCount = 0;
    std::unordered_set<GenApi::INode *> m_named;
    std::unordered_set<GenApi::INode *> m_away; ///< of those whose access is known, those that cannot be read
    std::unordered_set<GenApi::INode *> m_known[2]; ///< for good, by Subject
    Marks m_marks[2]; ///< of this round, by Subject
    std::vector<NeededRegister> m_round;
};
