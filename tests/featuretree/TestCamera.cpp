// SPDX-License-Identifier: MIT
#include "TestCamera.h"

#include <GenApi/NodeMapFactory.h>

namespace {

const char *const Elements = R"(
<Category Name="Root" NameSpace="Standard">
  <pFeature>Image</pFeature><pFeature>Kinds</pFeature><pFeature>Network</pFeature>
  <pFeature>Access</pFeature><pFeature>Experts</pFeature><pFeature>Empty</pFeature>
</Category>
<Category Name="Image"><pFeature>Width</pFeature><pFeature>Gain</pFeature><pFeature>Deeper</pFeature></Category>
<Category Name="Deeper"><pFeature>Width</pFeature><pFeature>WidthMax</pFeature></Category>
<Category Name="Kinds">
  <pFeature>Power</pFeature><pFeature>Selector</pFeature><pFeature>GatedSelector</pFeature><pFeature>Label</pFeature><pFeature>SinData</pFeature>
  <pFeature>Start</pFeature><pFeature>TriggerSoftware</pFeature><pFeature>DeviceReset</pFeature><pFeature>Big</pFeature>
  <pFeature>AcquisitionLineRate</pFeature><pFeature>Anything</pFeature>
</Category>
<Category Name="Network">
  <pFeature>GevCurrentSubnetMask</pFeature><pFeature>GevMACAddress</pFeature><pFeature>Flags</pFeature>
  <pFeature>Address</pFeature><pFeature>OtherMac</pFeature>
</Category>
<Category Name="Access">
  <pFeature>Switch</pFeature><pFeature>Gated</pFeature><pFeature>GatedToo</pFeature><pFeature>GatedByBoolean</pFeature>
  <pFeature>Temperature</pFeature><pFeature>PowerState</pFeature><pFeature>SelectorState</pFeature>
  <pFeature>WriteOnly</pFeature><pFeature>WriteOnlyGain</pFeature><pFeature>Fragile</pFeature>
  <pFeature>Uncached</pFeature><pFeature>StartLocked</pFeature>
</Category>
<Category Name="Experts"><pFeature>Expert</pFeature><pFeature>Guru</pFeature><pFeature>Invisible</pFeature></Category>
<Category Name="Empty"/>

<Integer Name="Width"><pValue>WidthReg</pValue><Min>0</Min><pMax>WidthMax</pMax><Inc>4</Inc></Integer>
<Integer Name="WidthMax"><ImposedAccessMode>RO</ImposedAccessMode><Value>100</Value></Integer>
<Float Name="Gain"><pValue>GainReg</pValue><Min>0</Min><Max>100</Max><Unit>dB</Unit></Float>
<Float Name="SinData"><Value>0.123456789</Value></Float>
<Float Name="AcquisitionLineRate"><pValue>LineRateReg</pValue></Float>
<Float Name="Temperature"><ImposedAccessMode>RO</ImposedAccessMode><pValue>TemperatureReg</pValue></Float>
<Float Name="WriteOnlyGain"><pValue>WriteOnlyGainReg</pValue></Float>
<Boolean Name="Power"><pValue>PowerReg</pValue></Boolean>
<Boolean Name="PowerState"><ImposedAccessMode>RO</ImposedAccessMode><pValue>PowerReg</pValue></Boolean>
<Enumeration Name="Selector">
  <EnumEntry Name="Zulu"><Value>0</Value></EnumEntry>
  <EnumEntry Name="Alpha"><Value>1</Value></EnumEntry>
  <EnumEntry Name="Gone"><pIsAvailable>Zero</pIsAvailable><Value>2</Value></EnumEntry>
  <pValue>SelectorReg</pValue>
</Enumeration>
<Enumeration Name="GatedSelector"><pIsAvailable>SwitchReg</pIsAvailable>
  <EnumEntry Name="Zulu"><Value>0</Value></EnumEntry>
  <EnumEntry Name="Alpha"><Value>1</Value></EnumEntry>
  <pValue>SelectorReg</pValue>
</Enumeration>
<Enumeration Name="SelectorState"><ImposedAccessMode>RO</ImposedAccessMode>
  <EnumEntry Name="Zulu"><Value>0</Value></EnumEntry>
  <EnumEntry Name="Alpha"><Value>1</Value></EnumEntry>
  <pValue>SelectorReg</pValue>
</Enumeration>
<String Name="Label"><pValue>LabelReg</pValue></String>
<Command Name="Start"><pValue>StartReg</pValue><CommandValue>1</CommandValue></Command>
<Command Name="StartLocked"><pIsLocked>One</pIsLocked><pValue>LockedReg</pValue><CommandValue>1</CommandValue></Command>
<Command Name="TriggerSoftware"><pValue>TriggerReg</pValue><CommandValue>1</CommandValue></Command>
<Command Name="DeviceReset"><pValue>StartReg</pValue><CommandValue>7</CommandValue></Command>
<Integer Name="Big"><pValue>BigReg</pValue></Integer>
<Register Name="Anything"><Address>0x34</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></Register>
<Integer Name="GevCurrentSubnetMask"><pValue>MaskReg</pValue><Representation>HexNumber</Representation></Integer>
<Integer Name="GevMACAddress"><pValue>MacReg</pValue><Representation>HexNumber</Representation></Integer>
<Integer Name="Flags"><pValue>FlagsReg</pValue><Representation>HexNumber</Representation></Integer>
<Integer Name="Address"><pValue>AddressReg</pValue><Representation>IPV4Address</Representation></Integer>
<Integer Name="OtherMac"><pValue>MacReg</pValue><Representation>MACAddress</Representation></Integer>
<Integer Name="Switch"><pValue>SwitchReg</pValue></Integer>
<Integer Name="Gated"><pIsAvailable>SwitchReg</pIsAvailable><Value>1</Value></Integer>
<Integer Name="GatedToo"><pIsAvailable>SwitchReg</pIsAvailable><Value>2</Value></Integer>
<Integer Name="GatedByBoolean"><pIsAvailable>Power</pIsAvailable><Value>3</Value></Integer>
<Integer Name="WriteOnly"><pValue>WriteOnlyReg</pValue></Integer>
<Integer Name="Fragile"><pValue>FragileReg</pValue></Integer>
<Integer Name="Uncached"><pValue>UncachedReg</pValue></Integer>
<Integer Name="Expert"><Visibility>Expert</Visibility><Value>1</Value></Integer>
<Integer Name="Guru"><Visibility>Guru</Visibility><Value>2</Value></Integer>
<Integer Name="Invisible"><Visibility>Invisible</Visibility><Value>3</Value></Integer>
<Integer Name="Zero"><Value>0</Value></Integer>
<Integer Name="One"><Value>1</Value></Integer>
<Port Name="Device"/>
)";

std::string integerRegister(const char *name, int address, int length, const char *mode = "RW", const char *rest = "")
{
    return std::string("<IntReg Name=\"") + name + "\"><Address>" + std::to_string(address) + "</Address><Length>"
        + std::to_string(length) + "</Length><AccessMode>" + mode + "</AccessMode><pPort>Device</pPort>" + rest
        + "<Sign>" + (length == 8 ? "Signed" : "Unsigned") + "</Sign><Endianess>LittleEndian</Endianess></IntReg>\n";
}

std::string floatRegister(const char *name, int address, const char *mode = "RW")
{
    return std::string("<FloatReg Name=\"") + name + "\"><Address>" + std::to_string(address)
        + "</Address><Length>8</Length><AccessMode>" + mode
        + "</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess></FloatReg>\n";
}

std::string registers()
{
    return integerRegister("WidthReg", TestCamera::Width, 4) + integerRegister("SwitchReg", TestCamera::Switch, 4)
        + integerRegister("SelectorReg", TestCamera::Selector, 4) + integerRegister("PowerReg", TestCamera::Power, 4)
        + integerRegister("StartReg", TestCamera::Start, 4, "WO")
        + integerRegister("LockedReg", TestCamera::Locked, 4, "RW")
        + integerRegister("TriggerReg", TestCamera::TriggerSoftware, 4, "WO")
        + integerRegister("MaskReg", TestCamera::Mask, 4) + integerRegister("MacReg", TestCamera::Mac, 8)
        + integerRegister("FlagsReg", TestCamera::Flags, 8) + integerRegister("AddressReg", TestCamera::Address4, 4)
        + integerRegister("BigReg", TestCamera::Big, 8) + integerRegister("FragileReg", TestCamera::Fragile, 4)
        + integerRegister("UncachedReg", TestCamera::Uncached, 4, "RW", "<Cachable>NoCache</Cachable>")
        + integerRegister("WriteOnlyReg", TestCamera::WriteOnlyGain, 4, "WO")
        + floatRegister("GainReg", TestCamera::Gain) + floatRegister("LineRateReg", TestCamera::LineRate)
        + floatRegister("TemperatureReg", TestCamera::Temperature)
        + floatRegister("WriteOnlyGainReg", TestCamera::WriteOnlyGain, "WO")
        + "<StringReg Name=\"LabelReg\"><Address>256</Address><Length>64</Length><AccessMode>RW</AccessMode>"
          "<pPort>Device</pPort></StringReg>\n";
}

} // namespace

TestCamera::TestCamera(const std::string &description)
{
    GenApi::CNodeMapFactory factory(GenApi::ContentType_Xml, description.data(), description.size(),
                                    GenApi::CacheUsage_Ignore);
    map = factory.CreateNodeMap("test-camera");
    map->Connect(&port);
}

TestCamera::~TestCamera()
{
    GenApi::CastToIDestroy(map)->Destroy();
}

void TestCamera::pokeValues()
{
    port.poke(Width, 48);
    port.pokeDouble(Gain, 2.5);
    port.poke(Flags, 255, 8);
    port.poke(Mask, 0xffffff00);
    port.poke(Mac, 0x001a2b3c4d5e, 8);
    port.poke(Selector, 1);
    port.pokeText(Label, "gr\xc3\xbc\xc3\x9f", 64);
    port.pokeDouble(Temperature, 12.3456);
}

GenApi::node_vector TestCamera::nodes() const
{
    GenApi::node_vector nodes;
    map->GetNodes(nodes);
    return nodes;
}

std::string TestCamera::description(const std::string &elements)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
           "<RegisterDescription ModelName=\"Test\" VendorName=\"Test\" StandardNameSpace=\"None\""
           " SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\""
           " MinorVersion=\"0\" SubMinorVersion=\"0\" ProductGuid=\"6F0C7B52-3E1D-4B8A-9C55-0D4E5A7B2201\""
           " VersionGuid=\"6F0C7B52-3E1D-4B8A-9C55-0D4E5A7B2202\""
           " xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">\n"
        + elements + "</RegisterDescription>\n";
}

std::string TestCamera::builtIn()
{
    return description(Elements + registers());
}
