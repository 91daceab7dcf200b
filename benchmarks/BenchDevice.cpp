// SPDX-License-Identifier: MIT
#include "BenchDevice.h"

#include <algorithm>
#include <map>
#include <set>

#include <GenApi/NodeMapFactory.h>

using GenApi::INodeMap;

namespace {

INodeMap *loaded(const std::string &xml)
{
    return GenApi::CNodeMapFactory(GenApi::ContentType_Xml, xml.data(), xml.size()).CreateNodeMap();
}

std::map<int64_t, unsigned> readsByAddress(const MemoryPort &port)
{
    std::map<int64_t, unsigned> reads;
    for (const MemoryPort::Access &access : port.accesses) {
        if (!access.isWrite)
            ++reads[access.address];
    }
    return reads;
}

} // namespace

BenchDevice::BenchDevice(int featureCount, std::chrono::microseconds latency)
    : m_made(makeDescription(featureCount)), m_port(static_cast<size_t>(m_made.memorySize)),
      m_nodeMap(loaded(m_made.xml))
{
    for (const MadeDescription::Register &reg : m_made.registers)
        m_port.Write(reg.content.data(), reg.address, reg.length);
    m_nodeMap->Connect(&m_port);
    for (const std::string &name : m_made.features)
        m_features.push_back(GenApi::CValuePtr(m_nodeMap->GetNode(name.c_str())));
    m_port.latency = latency;
    m_port.resetCounters();
}

BenchDevice::~BenchDevice()
{
    GenApi::CastToIDestroy(m_nodeMap)->Destroy();
}

void BenchDevice::readAllFeatures() const
{
    for (GenApi::IValue *feature : m_features) {
        if (GenApi::IsReadable(feature))
            feature->ToString();
    }
}

unsigned BenchDevice::repeatedReads() const
{
    const auto reads = readsByAddress(m_port);
    unsigned repeated = 0;
    for (const MadeDescription::Register &reg : m_made.registers) {
        const auto found = reads.find(reg.address);
        if (reg.isCachable && !reg.isGate && found != reads.end())
            repeated += found->second - 1;
    }
    return repeated;
}

unsigned BenchDevice::mostGateReads() const
{
    const auto reads = readsByAddress(m_port);
    unsigned most = 0;
    for (const MadeDescription::Register &reg : m_made.registers) {
        const auto found = reads.find(reg.address);
        if (reg.isGate && found != reads.end())
            most = std::max(most, found->second);
    }
    return most;
}

unsigned BenchDevice::cachableRegisters() const
{
    return static_cast<unsigned>(cachableAddresses().size());
}

unsigned BenchDevice::cachableReads() const
{
    const std::set<int64_t> cachable = cachableAddresses();
    const auto isCounted = [&](const MemoryPort::Access &access) {
        return !access.isWrite && cachable.count(access.address) != 0;
    };
    return static_cast<unsigned>(std::count_if(m_port.accesses.begin(), m_port.accesses.end(), isCounted));
}

std::set<int64_t> BenchDevice::cachableAddresses() const
{
    std::set<int64_t> addresses;
    for (const MadeDescription::Register &reg : m_made.registers) {
        if (reg.isCachable)
            addresses.insert(reg.address);
    }
    return addresses;
}
