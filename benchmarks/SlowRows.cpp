// SPDX-License-Identifier: MIT
#include "SlowRows.h"

#include <algorithm>
#include <string>

#include <GenApi/NodeMapFactory.h>

namespace {

constexpr int Count = 32;
constexpr int FirstValue = 0x100;
constexpr int WordLength = 4;

std::string intReg(const std::string &name, int address, const std::string &more)
{
    return "<IntReg Name=\"" + name + "\">" + more + "<Address>" + std::to_string(address)
        + "</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable>"
          "<Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>";
}

std::string description()
{
    std::string features, nodes;
    for (int i = 0; i < Count; ++i) {
        const std::string name = "Value" + std::to_string(i);
        features += "<pFeature>" + name + "</pFeature>";
        nodes += intReg(name, FirstValue + i * WordLength, i % 2 ? "<pIsLocked>Lock</pIsLocked>" : "");
    }
    return "<RegisterDescription ModelName=\"Slow\" VendorName=\"Bench\" StandardNameSpace=\"None\" "
           "SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" "
           "MinorVersion=\"0\" SubMinorVersion=\"0\" ProductGuid=\"1\" VersionGuid=\"1\" "
           "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">"
           "<Category Name=\"Root\" NameSpace=\"Standard\">"
        + features + "</Category>" + nodes + intReg("Lock", 0, "") + "<Port Name=\"Device\"/></RegisterDescription>";
}

} // namespace

SlowRows::SlowRows()
{
    const std::string xml = description();
    m_nodeMap = GenApi::CNodeMapFactory(GenApi::ContentType_Xml, xml.data(), xml.size()).CreateNodeMap();
    m_nodeMap->Connect(&m_port);
}

SlowRows::~SlowRows()
{
    GenApi::CastToIDestroy(m_nodeMap)->Destroy();
}

unsigned SlowRows::mostValueReads() const
{
    unsigned most = 0;
    for (int i = 0; i < Count; ++i)
        most = std::max(most, m_port.readsOf(FirstValue + i * WordLength));
    return most;
}
