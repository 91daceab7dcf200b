// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/GenApi.h>

#include "support/MemoryPort.h"

/// A camera of 32 integers in one category whose registers must not be cached; every second one can be locked by a
/// register that must not be cached either.
class SlowRows
{
public:
    SlowRows();
    ~SlowRows();
    SlowRows(const SlowRows &) = delete;
    SlowRows &operator=(const SlowRows &) = delete;

    GenApi::INodeMap *nodeMap() const { return m_nodeMap; }
    MemoryPort &port() { return m_port; }
    /// The largest number of reads of one value since the counters were reset.
    unsigned mostValueReads() const;

private:
    MemoryPort m_port;
    GenApi::INodeMap *m_nodeMap;
};

/// Passes everything on to a port that it does not own.
class ForwardingPort : public GenApi::IPort
{
public:
    explicit ForwardingPort(GenApi::IPort &target) : m_target(target) { }

    GenApi::EAccessMode GetAccessMode() const override { return m_target.GetAccessMode(); }
    void Read(void *buffer, int64_t address, int64_t length) override { m_target.Read(buffer, address, length); }
    void Write(const void *buffer, int64_t address, int64_t length) override
    {
        m_target.Write(buffer, address, length);
    }

private:
    GenApi::IPort &m_target;
};
