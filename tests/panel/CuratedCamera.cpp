// SPDX-License-Identifier: MIT
#include "CuratedCamera.h"

#include <algorithm>

namespace {

constexpr size_t RegisterSize = 8;
const std::string Limits = "<Min>0</Min><Max>1000000</Max>";

std::string entries(const std::vector<std::string> &names)
{
    std::string all;
    for (size_t i = 0; i < names.size(); ++i)
        all += "<EnumEntry Name=\"" + names[i] + "\"><Value>" + std::to_string(i) + "</Value></EnumEntry>";
    return all;
}

CuratedFeatures allFeatures()
{
    const std::string onOff = entries({"Off", "On"});
    const std::string executes = "<CommandValue>1</CommandValue>";
    return {
        {"Boolean", "AcquisitionFrameRateEnable", ""},
        {"Float", "ResultingFrameRate", "<ImposedAccessMode>RO</ImposedAccessMode>"},
        {"Float", "AcquisitionFrameRate", Limits},
        {"Enumeration", "ExposureAuto", entries({"Off", "Continuous"})},
        {"Float", "ExposureTime", "<pIsLocked>ExposureAutoReg</pIsLocked>" + Limits + "<Unit>us</Unit>"},
        {"Enumeration", "GainAuto", onOff},
        {"Float", "Gain", Limits},
        {"Boolean", "GammaEnable", ""},
        {"Float", "Gamma", Limits},
        {"Integer", "Brightness", Limits},
        {"Integer", "Contrast", Limits},
        {"Integer", "GevSCPSPacketSize", Limits},
        {"Integer", "GevSCPD", Limits},
        {"Enumeration", "TriggerSelector", entries({"FrameStart"})},
        {"Enumeration", "TriggerMode", onOff},
        {"Enumeration", "TriggerSource", entries({"Software", "Line0"})},
        {"Float", "TriggerDelay", Limits},
        {"Command", "TriggerSoftware", executes},
        {"Enumeration", "LineSelector", entries({"Line0", "Line1"})},
        {"Enumeration", "LineMode", entries({"Input", "Output"})},
        {"Enumeration", "LineSource", onOff},
        {"Float", "LineDebouncerTime", Limits},
        {"Enumeration", "PixelFormat", entries({"Mono8", "Mono12"})},
        {"Integer", "Width", "<Min>16</Min><pMax>WidthLimit</pMax><Inc>4</Inc>"},
        {"Integer", "Height", "<Min>16</Min><pMax>HeightLimit</pMax><Inc>2</Inc>"},
        {"Integer", "OffsetX", "<Min>0</Min><pMax>OffsetXLimit</pMax><Inc>4</Inc>"},
        {"Integer", "OffsetY", "<Min>0</Min><pMax>OffsetYLimit</pMax><Inc>2</Inc>"},
        {"Boolean", "ReverseX", ""},
        {"Boolean", "ReverseY", ""},
        {"Enumeration", "UserSetSelector", entries({"Default", "UserSet1"})},
        {"Command", "UserSetSave", executes},
        {"Enumeration", "UserSetDefault", entries({"Default", "UserSet1"})},
    };
}

CuratedFeatures merged(const CuratedFeatures &changes)
{
    CuratedFeatures all = allFeatures();
    for (const CuratedFeature &change : changes) {
        const auto hasItsName = [&](const CuratedFeature &one) { return one.name == change.name; };
        const auto found = std::find_if(all.begin(), all.end(), hasItsName);
        if (found == all.end())
            all.push_back(change);
        else
            *found = change;
    }
    return all;
}

std::string element(const std::string &kind, const std::string &name, const std::string &content)
{
    return "<" + kind + " Name=\"" + name + "\">" + content + "</" + kind + ">";
}

std::string registerOf(const CuratedFeature &feature, size_t address)
{
    const std::string common = "<Address>" + std::to_string(address)
        + "</Address><AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess>";
    return feature.kind == "Float"
        ? element("FloatReg", feature.name + "Reg", "<Length>8</Length>" + common)
        : element("IntReg", feature.name + "Reg", "<Length>4</Length><Sign>Signed</Sign>" + common);
}

/// What the region may still take of the sensor: its length less what the other node takes.
std::string limit(const char *name, const char *sensorLength, const char *taken)
{
    return element("IntSwissKnife", name,
                   std::string("<pVariable Name=\"TAKEN\">") + taken + "</pVariable><Formula>" + sensorLength
                       + " - TAKEN</Formula>");
}

std::string text(const CuratedFeatures &features)
{
    std::string children;
    std::string nodes;
    for (size_t i = 0; i < features.size(); ++i) {
        const CuratedFeature &feature = features[i];
        nodes += registerOf(feature, i * RegisterSize);
        if (feature.kind.empty())
            continue;
        children += "<pFeature>" + feature.name + "</pFeature>";
        const std::string value = "<pValue>" + feature.name + "Reg</pValue>";
        nodes += element(feature.kind, feature.name,
                         feature.elements + (feature.kind == "Category" ? std::string() : value));
    }
    return TestCamera::description(
        element("Category", "Root", children) + nodes + limit("WidthLimit", "2448", "OffsetXReg")
        + limit("HeightLimit", "2048", "OffsetYReg") + limit("OffsetXLimit", "2448", "WidthReg")
        + limit("OffsetYLimit", "2048", "HeightReg") + "<Port Name=\"Device\"/>");
}

} // namespace

CuratedFeatures profilerFeatures()
{
    const std::string userSets = entries({"Default", "UserSet1"});
    const std::string modes = entries({"First", "Second"});
    CuratedFeatures features = {
        {"Enumeration", "TriggerSelector", entries({"AcquisitionStart", "FrameStart", "LineStart"})},
        {"Enumeration", "TriggerMode", entries({"Off", "On"})},
        {"Enumeration", "TriggerSource", entries({"Line1", "Line2", "Software", "Timer", "ShaftEncoderModuleOut"})},
        {"Command", "TriggerSoftware", "<CommandValue>1</CommandValue>"},
        {"Command", "UserSetSave", "<CommandValue>1</CommandValue>"},
        {"Enumeration", "AcquisitionLineRateEnable", entries({"Off", "On"})},
        {"Enumeration", "UserSetSelector", userSets},
        {"Enumeration", "UserSetDefault", userSets},
        {"Boolean", "ReverseX", ""},
        {"Boolean", "LaserSwitch", ""},
        {"Float", "ZCoorScale", "<Min>0.5</Min><Max>2</Max>"},
        {"Integer", "Height", "<Min>16</Min><pMax>HeightLimit</pMax><Inc>2</Inc>"},
    };
    for (const char *name : {"EncoderOutputMode", "EncoderMode", "EndFrameMode", "SensingMode", "ExtractionMode",
                             "ContinuousMode", "LaserControlMode"})
        features.push_back({"Enumeration", name, modes});
    for (const char *name : {"EncoderDivider", "AcquisitionLineCount", "LowerBound", "UpperBound", "Lasersetting",
                             "InvalidPointNum", "Threshold", "LaserWidthLower", "LaserWidthUpper", "AvgFilterWinLen",
                             "MidFilterWinLen", "TimeAxisAvgFltWinLen", "TimeAxisMedFltWinLen"})
        features.push_back({"Integer", name, Limits});
    for (const char *name : {"AcquisitionLineRate", "ExposureTime", "XCoorOffset", "ZCoorOffset"})
        features.push_back({"Float", name, Limits});
    return features;
}

CuratedFeatures structuredLightFeatures()
{
    CuratedFeatures all = {
        {"Enumeration", "AcquisitionMode", "<EnumEntry Name=\"Continuous\"><Value>0</Value></EnumEntry>"}};
    for (const char *number : {"SensorMethod",   "Bining",          "Light1Selector",
                               "Light1Mode",     "Light1Value",     "Light2Selector",
                               "Light2Mode",     "Light2Value",     "Light3Selector",
                               "Light3Mode",     "Light3Value",     "SensorGain",
                               "SensorExposure", "Modulation",      "LowBrightness",
                               "HighBrightness", "FilterThreshold", "HighFilteringThreshold",
                               "Radius",         "Neighborhoods",   "FillThreshold",
                               "HighTruncation", "LowTruncation"})
        all.push_back({"Integer", number, "<Min>0</Min><Max>1000</Max>"});
    for (const char *boolean : {"Left2DImage", "Right2DImage", "Left2DSrcImage", "Right2DSrcImage", "Left2.5DFront",
                                "Right2.5DFront", "Left2.5DBack", "Right2.5DBack", "Denoising"})
        all.push_back({"Boolean", boolean, ""});
    return all;
}

CuratedCamera::CuratedCamera(const CuratedFeatures &changes)
    : TestCamera(text(merged(changes))), m_features(merged(changes))
{
    port.poke(address("Width"), 1280);
    port.poke(address("Height"), 1024);
    port.pokeDouble(address("ExposureTime"), 5000);
}

int64_t CuratedCamera::address(const std::string &feature) const
{
    const auto hasName = [&](const CuratedFeature &one) { return one.name == feature; };
    const auto found = std::find_if(m_features.begin(), m_features.end(), hasName);
    return int64_t(size_t(found - m_features.begin()) * RegisterSize);
}

std::vector<std::string> CuratedCamera::written() const
{
    std::vector<std::string> names;
    for (const MemoryPort::Access &access : port.accesses) {
        if (access.isWrite)
            names.push_back(m_features.at(size_t(access.address) / RegisterSize).name);
    }
    return names;
}

void CuratedCamera::watchWrites(const std::function<void(const std::string &feature, uint64_t value)> &follow)
{
    for (const CuratedFeature &feature : m_features) {
        const int64_t place = address(feature.name);
        port.onWrite[place] = [=](MemoryPort &memory) { follow(feature.name, memory.peek(place)); };
    }
}
