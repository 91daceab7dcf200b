// SPDX-License-Identifier: MIT
#include "DescriptionMaker.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr int64_t BlockSize = 0x100;
constexpr int BlocksInGroup = 5;

// In all texts below "$" stands for the number of the block.

struct Feature
{
    const char *tag;
    const char *name;
    const char *visibility;
    const char *links; ///< gates, locks
    const char *body; ///< what follows the links
};

struct Register
{
    const char *tag;
    const char *name;
    int offset; ///< in bytes, within the block
    int length; ///< in bytes
    const char *access;
    bool isCachable;
    bool isGate;
    const char *index; ///< links that add to the address
    const char *format; ///< bits, sign and byte order
    double value;
    int copies; ///< how often the register stands in the memory, one behind the other
};

constexpr const char *Number = "<Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess>";
constexpr const char *Real = "<Endianess>LittleEndian</Endianess>";
constexpr const char *Bit0 = "<Bit>0</Bit><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess>";
constexpr const char *Bit1 = "<Bit>1</Bit><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess>";
constexpr const char *Byte1 = "<LSB>8</LSB><MSB>15</MSB><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess>";
constexpr const char *PerLine = "<pIndex Offset=\"4\">LineSelector$</pIndex>";
constexpr const char *LockedWhileGrabbing = "<pIsLocked>TLParamsLocked</pIsLocked>";

constexpr Feature Features[] = {
    {"Enumeration", "LineSelector$", "Beginner", "",
     "<EnumEntry Name=\"Line0\"><Value>0</Value></EnumEntry><EnumEntry Name=\"Line1\"><Value>1</Value></EnumEntry>"
     "<EnumEntry Name=\"Line2\"><Value>2</Value></EnumEntry><EnumEntry Name=\"Line3\"><Value>3</Value></EnumEntry>"
     "<pValue>LineSelectorReg$</pValue><pSelected>LineDebouncer$</pSelected><pSelected>LineGain$</pSelected>"},
    {"Integer", "LineDebouncer$", "Expert", "",
     "<pValue>LineDebouncerReg$</pValue><Min>0</Min><Max>1000</Max><Inc>5</Inc><Unit>us</Unit>"},
    {"Float", "LineGain$", "Expert", "", "<pValue>LineGainReg$</pValue><Min>0.0</Min><Max>24.0</Max><Unit>dB</Unit>"},
    {"Integer", "Width$", "Beginner", LockedWhileGrabbing,
     "<pValue>WidthReg$</pValue><Min>16</Min><pMax>WidthMaxExpr$</pMax><Inc>16</Inc><Unit>px</Unit>"},
    {"Integer", "OffsetX$", "Beginner", "",
     "<pValue>OffsetXReg$</pValue><Min>0</Min><pMax>OffsetXMaxExpr$</pMax><Inc>8</Inc><Unit>px</Unit>"},
    {"Integer", "WidthMax$", "Expert", "", "<pValue>WidthMaxReg$</pValue>"},
    {"Enumeration", "PixelFormat$", "Beginner", LockedWhileGrabbing,
     "<EnumEntry Name=\"Mono8\"><Value>17301505</Value></EnumEntry>"
     "<EnumEntry Name=\"Mono10\"><Value>17825795</Value></EnumEntry>"
     "<EnumEntry Name=\"Mono12\"><Value>17825797</Value></EnumEntry>"
     "<EnumEntry Name=\"BayerRG8\"><Value>17301513</Value></EnumEntry>"
     "<EnumEntry Name=\"RGB8\"><pIsAvailable>IsColor$</pIsAvailable><Value>35127316</Value></EnumEntry>"
     "<pValue>PixelFormatReg$</pValue>"},
    {"Enumeration", "ExposureAuto$", "Beginner", "",
     "<EnumEntry Name=\"Off\"><Value>0</Value></EnumEntry><EnumEntry Name=\"Once\"><Value>1</Value></EnumEntry>"
     "<EnumEntry Name=\"Continuous\"><Value>2</Value></EnumEntry><pValue>ExposureAutoReg$</pValue>"},
    {"Float", "ExposureTime$", "Beginner", "<pIsLocked>ExposureLocked$</pIsLocked>",
     "<pValue>ExposureConverter$</pValue><Min>10.0</Min><Max>1000000.0</Max><Unit>us</Unit>"},
    {"Integer", "ExposureAutoTarget$", "Expert", "<pIsAvailable>ExposureIsAutomatic$</pIsAvailable>",
     "<pValue>ExposureTargetConverter$</pValue>"},
    {"Boolean", "FrameRateEnable$", "Expert", "", "<pValue>FrameRateEnableReg$</pValue>"},
    {"Float", "FrameRate$", "Expert", "<pIsAvailable>FrameRateIsFixed$</pIsAvailable>",
     "<pValue>FrameRateReg$</pValue><Min>0.1</Min><Max>500.0</Max><Unit>Hz</Unit>"},
    {"SwissKnife", "ResultingFrameRate$", "Expert", "",
     "<pVariable Name=\"T\">ExposureTime$</pVariable><Formula>1000000.0 / (T + 100)</Formula><Unit>Hz</Unit>"},
    {"Command", "AcquisitionStart$", "Beginner", LockedWhileGrabbing,
     "<pValue>AcquisitionStartReg$</pValue><CommandValue>1</CommandValue>"},
    {"Boolean", "ReverseX$", "Expert", LockedWhileGrabbing, "<pValue>ReverseXReg$</pValue>"},
    {"Enumeration", "TestPattern$", "Guru", "<pIsAvailable>FrameRateIsFixed$</pIsAvailable>",
     "<EnumEntry Name=\"Off\"><Value>0</Value></EnumEntry><EnumEntry Name=\"GreyRamp\"><Value>1</Value></EnumEntry>"
     "<EnumEntry Name=\"ColorBar\"><Value>2</Value></EnumEntry><pValue>TestPatternReg$</pValue>"},
    {"String", "DeviceUserID$", "Beginner", "", "<pValue>DeviceUserIDReg$</pValue>"},
    {"Float", "DeviceTemperature$", "Expert", "", "<pValue>DeviceTemperatureReg$</pValue><Unit>C</Unit>"},
    {"Integer", "PersistentIPAddress$", "Guru", "",
     "<pValue>PersistentIPAddressReg$</pValue><Representation>IPV4Address</Representation>"},
    {"Integer", "SensorSerial$", "Guru", "",
     "<pValue>SensorSerialReg$</pValue><Representation>HexNumber</Representation>"},
};

constexpr int BlockFeatures = int(std::size(Features));

constexpr Register Registers[] = {
    {"IntReg", "LineSelectorReg$", 0x00, 4, "RW", true, false, "", Number, 1, 1},
    {"IntReg", "LineDebouncerReg$", 0x10, 4, "RW", true, false, PerLine, Number, 15, 4},
    {"FloatReg", "LineGainReg$", 0x20, 4, "RW", true, false, PerLine, Real, 6, 4},
    {"IntReg", "WidthReg$", 0x30, 4, "RW", true, false, "", Number, 1024, 1},
    {"IntReg", "OffsetXReg$", 0x34, 4, "RW", true, false, "", Number, 64, 1},
    {"IntReg", "WidthMaxReg$", 0x38, 4, "RO", true, false, "", Number, 2048, 1},
    {"IntReg", "PixelFormatReg$", 0x3C, 4, "RW", true, false, "", Number, 17301505, 1},
    {"IntReg", "ExposureAutoReg$", 0x40, 4, "RW", true, true, "", Number, 0, 1},
    {"IntReg", "ExposureTimeReg$", 0x44, 4, "RW", true, false, "", Number, 5000000, 1},
    {"IntReg", "ExposureTargetReg$", 0x48, 4, "RW", true, false, "", Number, 128, 1},
    {"MaskedIntReg", "FrameRateEnableReg$", 0x4C, 4, "RW", true, true, "", Bit0, 1, 1},
    {"MaskedIntReg", "ReverseXReg$", 0x4C, 4, "RW", true, true, "", Bit1, 1, 1},
    {"MaskedIntReg", "TestPatternReg$", 0x4C, 4, "RW", true, true, "", Byte1, 1, 1},
    {"FloatReg", "FrameRateReg$", 0x50, 8, "RW", true, false, "", Real, 30, 1},
    {"IntReg", "AcquisitionStartReg$", 0x58, 4, "WO", false, false, "", Number, 0, 1},
    {"FloatReg", "DeviceTemperatureReg$", 0x5C, 4, "RO", false, false, "", Real, 41.5, 1},
    {"IntReg", "PersistentIPAddressReg$", 0x60, 4, "RW", true, false, "", Number, 3232235777, 1},
    {"IntReg", "SensorSerialReg$", 0x68, 8, "RO", true, false, "", Number, 987654321, 1},
    {"IntReg", "IsColor$", 0x70, 4, "RO", true, false, "", Number, 0, 1},
    {"StringReg", "DeviceUserIDReg$", 0x80, 32, "RW", true, false, "", "", 0, 1},
};

constexpr const char *Formulas = R"(
<IntSwissKnife Name="WidthMaxExpr$"><pVariable Name="MAX">WidthMaxReg$</pVariable><pVariable Name="OFS">OffsetXReg$</pVariable><Formula>MAX - OFS</Formula></IntSwissKnife>
<IntSwissKnife Name="OffsetXMaxExpr$"><pVariable Name="MAX">WidthMaxReg$</pVariable><pVariable Name="W">WidthReg$</pVariable><Formula>(MAX - W) / 8 * 8</Formula></IntSwissKnife>
<IntSwissKnife Name="ExposureLocked$"><pVariable Name="AUTO">ExposureAutoReg$</pVariable><pVariable Name="TL">TLParamsLocked</pVariable><Formula>(AUTO &lt;&gt; 0) || (TL = 1)</Formula></IntSwissKnife>
<IntSwissKnife Name="ExposureIsAutomatic$"><pVariable Name="AUTO">ExposureAutoReg$</pVariable><Formula>(AUTO = 2) ? 1 : (AUTO = 1) ? 1 : 0</Formula></IntSwissKnife>
<IntSwissKnife Name="FrameRateIsFixed$"><pVariable Name="ENABLE">FrameRateEnableReg$</pVariable><Formula>ENABLE = 1</Formula></IntSwissKnife>
<Converter Name="ExposureConverter$"><FormulaTo>FROM * 1000.0</FormulaTo><FormulaFrom>TO / 1000.0</FormulaFrom><pValue>ExposureTimeReg$</pValue><Slope>Increasing</Slope></Converter>
<IntConverter Name="ExposureTargetConverter$"><FormulaTo>FROM &gt;&gt; 1</FormulaTo><FormulaFrom>TO &lt;&lt; 1</FormulaFrom><pValue>ExposureTargetReg$</pValue><Slope>Increasing</Slope></IntConverter>
)";

constexpr const char *Beginning = R"(<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription ModelName="Made" VendorName="Bench" ToolTip="" StandardNameSpace="None" SchemaMajorVersion="1" SchemaMinorVersion="1" SchemaSubMinorVersion="0" MajorVersion="1" MinorVersion="0" SubMinorVersion="0" ProductGuid="6F0C7B52-3E1D-4B8A-9C55-0D4E5A7B2201" VersionGuid="6F0C7B52-3E1D-4B8A-9C55-0D4E5A7B2202" xmlns="http://www.genicam.org/GenApi/Version_1_1">
<Port Name="Device" NameSpace="Standard"/>
<Integer Name="TLParamsLocked" NameSpace="Standard"><Visibility>Invisible</Visibility><Value>0</Value><Min>0</Min><Max>1</Max></Integer>
)";

std::string element(const char *tag, const std::string &text)
{
    return std::string("<") + tag + ">" + text + "</" + tag + ">";
}

std::string opening(const char *tag, const std::string &name)
{
    return std::string("<") + tag + " Name=\"" + name + "\" NameSpace=\"Standard\">";
}

// Replaces every "$" by the number of the block.
std::string numbered(const std::string &text, int block)
{
    std::string out;
    for (char c : text)
        c == '$' ? out += "_" + std::to_string(block) : out += c;
    return out;
}

std::string featureXml(const Feature &feature)
{
    return opening(feature.tag, feature.name)
        + element("ToolTip", std::string("Sets or reads ") + feature.name + " of this block.")
        + element("Description",
                  std::string("The feature ") + feature.name
                      + " stands for one of its kind in real cameras; its text is as long as theirs usually are.")
        + element("DisplayName", feature.name) + element("Visibility", feature.visibility) + feature.links
        + feature.body + "</" + feature.tag + ">\n";
}

std::string registerXml(const Register &reg, int block)
{
    char address[32];
    std::snprintf(address, sizeof address, "0x%llX", static_cast<unsigned long long>(block * BlockSize + reg.offset));
    return opening(reg.tag, reg.name) + element("Address", address) + reg.index
        + element("Length", std::to_string(reg.length)) + element("AccessMode", reg.access) + element("pPort", "Device")
        + element("Cachable", reg.isCachable ? "WriteThrough" : "NoCache") + reg.format + "</" + reg.tag + ">\n";
}

std::vector<uint8_t> registerContent(const Register &reg)
{
    std::vector<uint8_t> content(static_cast<size_t>(reg.length));
    const auto integer = static_cast<uint64_t>(reg.value);
    const auto single = static_cast<float>(reg.value);
    const void *source = &reg.value;
    if (!*reg.format)
        source = "a camera that somebody has named";
    else if (reg.format == Real && reg.length == sizeof single)
        source = &single;
    else if (reg.format != Real)
        source = &integer;
    std::memcpy(content.data(), source, content.size());
    return content;
}

void addBlock(MadeDescription &made, int block)
{
    std::string xml = opening("Category", "Block$");
    for (const Feature &feature : Features) {
        xml += element("pFeature", feature.name);
        made.features.push_back(numbered(feature.name, block));
    }
    xml += "</Category>\n";
    for (const Feature &feature : Features)
        xml += featureXml(feature);
    for (const Register &reg : Registers) {
        xml += registerXml(reg, block);
        for (int copy = 0; copy < reg.copies; ++copy) {
            made.registers.push_back({block * BlockSize + reg.offset + copy * reg.length, reg.length,
                                      registerContent(reg), reg.isCachable, reg.isGate});
        }
    }
    made.xml += numbered(xml + Formulas, block);
}

void addCategories(MadeDescription &made, int blocks)
{
    const int groups = (blocks + BlocksInGroup - 1) / BlocksInGroup;
    std::string root = opening("Category", "Root");
    for (int group = 0; group < groups; ++group) {
        root += numbered(element("pFeature", "Group$"), group);
        std::string xml = opening("Category", "Group$");
        for (int block = group * BlocksInGroup; block < std::min(blocks, (group + 1) * BlocksInGroup); ++block)
            xml += numbered(element("pFeature", "Block$"), block);
        made.xml += numbered(xml, group) + "</Category>\n";
    }
    made.xml += root + "</Category>\n";
}

} // namespace

MadeDescription makeDescription(int featureCount)
{
    const int blocks = featureCount / BlockFeatures;
    MadeDescription made;
    made.xml = Beginning;
    made.memorySize = blocks * BlockSize;
    addCategories(made, blocks);
    for (int block = 0; block < blocks; ++block)
        addBlock(made, block);
    made.xml += "</RegisterDescription>\n";
    return made;
}
