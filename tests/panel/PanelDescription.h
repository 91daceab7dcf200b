// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "TestCamera.h"

/// A small camera description for the panel: three categories below the root, every kind of feature that the
/// description pane tells apart, and features of all levels. Registers: see TestCamera::Address.
inline std::string panelDescription()
{
    return TestCamera::description(R"(
<Category Name="Root" NameSpace="Standard">
  <pFeature>ImageFormat</pFeature><pFeature>Analog</pFeature><pFeature>Acquisition</pFeature>
</Category>
<Category Name="ImageFormat">
  <pFeature>Width</pFeature><pFeature>WidthMax</pFeature><pFeature>Flags</pFeature><pFeature>Sizes</pFeature>
</Category>
<Category Name="Sizes"><pFeature>Height</pFeature></Category>
<Category Name="Analog"><pFeature>GainRaw</pFeature><pFeature>Gamma</pFeature><pFeature>BlackLevel</pFeature></Category>
<Category Name="Acquisition">
  <pFeature>ExposureTime</pFeature><pFeature>FrameRate</pFeature><pFeature>Mode</pFeature><pFeature>Name</pFeature>
  <pFeature>TriggerSoftware</pFeature><pFeature>Secret</pFeature><pFeature>Hidden</pFeature>
</Category>

<Integer Name="Width" NameSpace="Standard">
  <Description>Width of the image &lt;in pixels&gt;, 宽度.</Description><Streamable>Yes</Streamable>
  <pValue>WidthReg</pValue><Min>16</Min><pMax>WidthMax</pMax><Inc>4</Inc><Representation>Linear</Representation><Unit>px</Unit>
</Integer>
<Integer Name="WidthMax"><ImposedAccessMode>RO</ImposedAccessMode><Value>1920</Value></Integer>
<Integer Name="Flags"><Value>255</Value><Representation>HexNumber</Representation></Integer>
<Integer Name="Height"><Value>480</Value><Min>8</Min><Max>1080</Max><Inc>8</Inc><Representation>PureNumber</Representation></Integer>
<Integer Name="GainRaw"><Value>12</Value><Min>0</Min><Max>100</Max></Integer>
<Float Name="Gamma"><Visibility>Expert</Visibility><Value>1.5</Value><Min>0.25</Min><Max>4</Max></Float>
<Integer Name="BlackLevel"><Visibility>Guru</Visibility><Value>3</Value></Integer>
<Float Name="ExposureTime"><pValue>ExposureReg</pValue><Min>10</Min><Max>1000000</Max><Unit>us</Unit></Float>
<Float Name="FrameRate"><Value>30</Value><Min>1</Min><Max>60</Max><Inc>0.5</Inc></Float>
<Enumeration Name="Mode">
  <EnumEntry Name="Off" NameSpace="Standard">
    <Description>Nothing happens.</Description><DisplayName>Switched off</DisplayName><Value>0</Value>
  </EnumEntry>
  <EnumEntry Name="Single"><Value>1</Value></EnumEntry>
  <EnumEntry Name="Steady"><Value>4</Value><NumericValue>2.5</NumericValue></EnumEntry>
  <pValue>ModeReg</pValue>
</Enumeration>
<String Name="Name"><Value>camera</Value></String>
<Command Name="TriggerSoftware"><pValue>TriggerReg</pValue><CommandValue>1</CommandValue></Command>
<Integer Name="Secret"><Visibility>Guru</Visibility><Value>42</Value></Integer>
<Integer Name="Hidden"><Visibility>Invisible</Visibility><Value>7</Value></Integer>

<IntReg Name="WidthReg"><Address>0x000</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></IntReg>
<IntReg Name="ModeReg"><Address>0x008</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></IntReg>
<IntReg Name="TriggerReg"><Address>0x01c</Address><Length>4</Length><AccessMode>WO</AccessMode><pPort>Device</pPort></IntReg>
<FloatReg Name="ExposureReg"><Address>0x010</Address><Length>8</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></FloatReg>
<Port Name="Device"/>
)");
}

/// The camera of panelDescription(), with Width 640 and an exposure time of 5000 us.
class PanelCamera : public TestCamera
{
public:
    PanelCamera() : TestCamera(panelDescription())
    {
        port.poke(Width, 640);
        port.pokeDouble(Gain, 5000.0);
    }
};
