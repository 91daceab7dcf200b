// SPDX-License-Identifier: MIT
#pragma once

#include "Changes.h"
#include "Evaluation.h"
#include "LoadLog.h"
#include "NodeGraph.h"

#include <GenApi/INodeMap.h>

namespace NodeEngine {

/// What the nodes of one map share. All but the lock itself is guarded by the lock.
struct NodeContext
{
    NodeContext(GenApi::INodeMap &ofMap, const std::string &name) : map(ofMap), deviceName(name), log(name) { }

    GenApi::INodeMap &map;
    const std::string deviceName;
    LoadLog log;
    GenApi::CLock lock;
    NodeGraph graph;
    EvaluationBudget evaluations;
    Changes changes{lock, graph};
};

} // namespace NodeEngine
