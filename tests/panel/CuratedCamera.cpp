// SPDX-License-Identifier: MIT
#include "CuratedCamera.h"

#include <algorithm>
#include <iterator>
#include <sstream>

namespace {

constexpr size_t RegisterSize = 8;
const std::string Limits = "<Min>0</Min><Max>1000000</Max>";

std::vector<std::string> words(const char *text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

/// The entries of an enumeration, from 0 on.
std::string entries(const char *names)
{
    std::string all;
    int value = 0;
    for (const std::string &name : words(names))
        all += "<EnumEntry Name=\"" + name + "\"><Value>" + std::to_string(value++) + "</Value></EnumEntry>";
    return all;
}

/// Adds features of one kind.
void add(CuratedFeatures &features, const char *kind, const char *names, const std::string &elements = {})
{
    for (const std::string &name : words(names))
        features.push_back({kind, name, elements});
}

const std::string Executes = "<CommandValue>1</CommandValue>";

CuratedFeatures allFeatures()
{
    CuratedFeatures all;
    add(all, "Boolean", "AcquisitionFrameRateEnable GammaEnable ReverseX ReverseY");
    add(all, "Float", "ResultingFrameRate", "<ImposedAccessMode>RO</ImposedAccessMode>");
    add(all, "Float", "AcquisitionFrameRate Gain Gamma TriggerDelay LineDebouncerTime", Limits);
    add(all, "Float", "ExposureTime", "<pIsLocked>ExposureAutoReg</pIsLocked>" + Limits + "<Unit>us</Unit>");
    add(all, "Integer", "Brightness Contrast GevSCPSPacketSize GevSCPD", Limits);
    add(all, "Integer", "Width", "<Min>16</Min><pMax>WidthLimit</pMax><Inc>4</Inc>");
    add(all, "Integer", "Height", "<Min>16</Min><pMax>HeightLimit</pMax><Inc>2</Inc>");
    add(all, "Integer", "OffsetX", "<Min>0</Min><pMax>OffsetXLimit</pMax><Inc>4</Inc>");
    add(all, "Integer", "OffsetY", "<Min>0</Min><pMax>OffsetYLimit</pMax><Inc>2</Inc>");
    add(all, "Enumeration", "ExposureAuto", entries("Off Continuous"));
    add(all, "Enumeration", "GainAuto TriggerMode LineSource", entries("Off On"));
    add(all, "Enumeration", "TriggerSelector", entries("FrameStart"));
    add(all, "Enumeration", "TriggerSource", entries("Software Line0"));
    add(all, "Enumeration", "LineSelector", entries("Line0 Line1"));
    add(all, "Enumeration", "LineMode", entries("Input Output"));
    add(all, "Enumeration", "PixelFormat", entries("Mono8 Mono12"));
    add(all, "Enumeration", "UserSetSelector UserSetDefault", entries("Default UserSet1"));
    add(all, "Command", "TriggerSoftware UserSetSave", Executes);
    return all;
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
    CuratedFeatures all;
    add(all, "Enumeration", "TriggerSelector", entries("AcquisitionStart FrameStart LineStart"));
    add(all, "Enumeration", "TriggerMode AcquisitionLineRateEnable", entries("Off On"));
    add(all, "Enumeration", "TriggerSource", entries("Line1 Line2 Software Timer ShaftEncoderModuleOut"));
    add(all, "Enumeration", "UserSetSelector UserSetDefault", entries("Default UserSet1"));
    add(all, "Enumeration",
        "EncoderOutputMode EncoderMode EndFrameMode SensingMode ExtractionMode ContinuousMode LaserControlMode",
        entries("First Second"));
    add(all, "Command", "TriggerSoftware UserSetSave", Executes);
    add(all, "Boolean", "ReverseX LaserSwitch");
    add(all, "Integer", "Height", "<Min>16</Min><pMax>HeightLimit</pMax><Inc>2</Inc>");
    add(all, "Integer",
        "EncoderDivider AcquisitionLineCount LowerBound UpperBound Lasersetting InvalidPointNum Threshold"
        " LaserWidthLower LaserWidthUpper AvgFilterWinLen MidFilterWinLen TimeAxisAvgFltWinLen TimeAxisMedFltWinLen",
        Limits);
    add(all, "Float", "ZCoorScale", "<Min>0.5</Min><Max>2</Max>");
    add(all, "Float", "AcquisitionLineRate ExposureTime XCoorOffset ZCoorOffset", Limits);
    return all;
}

CuratedFeatures structuredLightFeatures()
{
    CuratedFeatures all;
    add(all, "Enumeration", "AcquisitionMode", entries("Continuous"));
    add(all, "Integer",
        "SensorMethod Bining Light1Selector Light1Mode Light1Value Light2Selector Light2Mode Light2Value Light3Selector"
        " Light3Mode Light3Value SensorGain SensorExposure Modulation LowBrightness HighBrightness FilterThreshold"
        " HighFilteringThreshold Radius Neighborhoods FillThreshold HighTruncation LowTruncation",
        "<Min>0</Min><Max>1000</Max>");
    add(all, "Boolean",
        "Left2DImage Right2DImage Left2DSrcImage Right2DSrcImage Left2.5DFront Right2.5DFront Left2.5DBack"
        " Right2.5DBack Denoising");
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

void CuratedCamera::watchWrites(const std::function<void(const std::string &feature, uint64_t value)> &written)
{
    for (const CuratedFeature &feature : m_features) {
        const int64_t place = address(feature.name);
        port.onWrite[place] = [=](MemoryPort &memory) { written(feature.name, memory.peek(place)); };
    }
}
