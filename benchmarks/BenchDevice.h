// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <set>
#include <vector>

#include <GenApi/GenApi.h>

#include "DescriptionMaker.h"
#include "support/MemoryPort.h"

/// A made-up camera with its registers and its node map, of which nothing has been read yet.
class BenchDevice
{
public:
    explicit BenchDevice(int featureCount, std::chrono::microseconds latency = {});
    ~BenchDevice();
    BenchDevice(const BenchDevice &) = delete;
    BenchDevice &operator=(const BenchDevice &) = delete;

    GenApi::INodeMap *nodeMap() const { return m_nodeMap; }
    MemoryPort &port() { return m_port; }

    /// Reads the access mode of every feature, and the value as text of each that is readable.
    void readAllFeatures() const;

    /// Reads of cachable registers beyond the first of each, since the counters were reset, without the registers
    /// that availability nodes read.
    unsigned repeatedReads() const;
    /// The largest number of reads of one register that availability nodes read.
    unsigned mostGateReads() const;
    unsigned cachableRegisters() const;
    /// All reads of cachable registers.
    unsigned cachableReads() const;

private:
    std::set<int64_t> cachableAddresses() const;

    MadeDescription m_made;
    MemoryPort m_port;
    GenApi::INodeMap *m_nodeMap;
    std::vector<GenApi::IValue *> m_features;
};
