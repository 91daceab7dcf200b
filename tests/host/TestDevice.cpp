// SPDX-License-Identifier: MIT
#include "TestDevice.h"

namespace {

constexpr char Description[] = R"(<RegisterDescription>
  <Category Name="Root">
    <pFeature>Width</pFeature><pFeature>Gain</pFeature><pFeature>ReverseX</pFeature><pFeature>PixelFormat</pFeature>
    <pFeature>DeviceUserID</pFeature><pFeature>TriggerSoftware</pFeature><pFeature>SensorWidth</pFeature>
  </Category>
  <Integer Name="Width"><pValue>WidthReg</pValue><Min>0</Min><Max>100</Max></Integer>
  <IntReg Name="WidthReg"><Address>0x10</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>
    <PollingTime>500</PollingTime></IntReg>
  <IntReg Name="SensorWidth"><Address>0x14</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort></IntReg>
  <Float Name="Gain"><Value>1.5</Value></Float><Boolean Name="ReverseX"><Value>false</Value></Boolean>
  <Enumeration Name="PixelFormat">
    <EnumEntry Name="Mono8"><Value>8</Value></EnumEntry><EnumEntry Name="Mono16"><Value>16</Value></EnumEntry>
    <EnumEntry Name="Numbered"><Value>32</Value><Symbolic>8</Symbolic></EnumEntry>
    <Value>8</Value>
  </Enumeration>
  <String Name="DeviceUserID"><Value>left</Value></String>
  <Command Name="TriggerSoftware"><pValue>TriggerSoftwareReg</pValue><CommandValue>7</CommandValue></Command>
  <IntReg Name="TriggerSoftwareReg"><Address>0x20</Address><Length>4</Length><AccessMode>WO</AccessMode>
    <pPort>Device</pPort></IntReg>
  <Port Name="Device"/>
</RegisterDescription>
)";

} // namespace

bool TestDevice::open(QString *error)
{
    *error = refusal;
    if (refusal.isEmpty())
        m_nodes.emplace(QByteArray(Description), port);
    return refusal.isEmpty();
}

void TestDevice::close()
{
    if (!m_nodes)
        return;
    m_acquiring = false;
    m_nodes.reset();
    Q_EMIT closed();
}

bool TestDevice::startAcquisition(QString *error)
{
    *error = refusal;
    if (refusal.isEmpty())
        setAcquiring(true);
    return refusal.isEmpty();
}

void TestDevice::setAcquiring(bool acquires)
{
    m_acquiring = acquires;
    Q_EMIT acquiringChanged(acquires);
}
