// SPDX-License-Identifier: MIT
#include <memory>

#include <GenApi/NodeMapFactory.h>

#include <pugixml.hpp>

#include "BenchDevice.h"
#include "Rows.h"
#include "Stopwatch.h"

namespace {

constexpr int Repeats = 25;
constexpr size_t Megabyte = 1000000;
constexpr int FeaturesPerBlock = 20;

std::string descriptionOfOneMegabyte()
{
    const int features = static_cast<int>(Megabyte / (makeDescription(1000).xml.size() / 1000));
    return makeDescription((features / FeaturesPerBlock + 1) * FeaturesPerBlock).xml;
}

double loadingTime(const std::string &xml)
{
    GenApi::INodeMap *nodeMap = nullptr;
    const double time = milliseconds([&] {
        GenApi::CNodeMapFactory factory(GenApi::ContentType_Xml, xml.data(), xml.size());
        nodeMap = factory.CreateNodeMap();
    });
    GenApi::CastToIDestroy(nodeMap)->Destroy();
    return time;
}

double parsingTime(const std::string &xml)
{
    pugi::xml_document document;
    return milliseconds([&] { document.load_buffer(xml.data(), xml.size()); });
}

void addLoading(BenchReport &report)
{
    const std::string xml = descriptionOfOneMegabyte();
    const double loading = fastestOf(Repeats, [&] { return loadingTime(xml); });
    const double parsing = fastestOf(Repeats, [&] { return parsingTime(xml); });
    report.add("loading a description, per megabyte", loading * 1e6 / double(xml.size()), "ms", 5);
    report.add("pugixml alone on the same text", parsing, "ms");
}

// The registers that are not cachable: one temperature a block.
void addReading(BenchReport &report, int features, bool hasTarget)
{
    BenchDevice device(features);
    const std::string what = "reading " + std::to_string(features) + " features";
    const double first = milliseconds([&] { device.readAllFeatures(); });
    report.add(what + " the first time", first, "ms");
    report.add(what + " the first time, port reads per cachable register",
               double(device.port().reads - unsigned(features / FeaturesPerBlock)) / device.cachableRegisters(), "");
    device.port().resetCounters();
    const double second = fastestOf(Repeats, [&] { return milliseconds([&] { device.readAllFeatures(); }); });
    const double needless = double(device.port().reads) / Repeats - features / FeaturesPerBlock;
    if (!hasTarget)
        return report.add(what + " again", second, "ms");
    report.add(what + " again", second, "ms", 1.5);
    report.add(what + " again, reads of what can be cached", needless, "reads", 0);
}

} // namespace

void addEngineRows(BenchReport &report)
{
    addLoading(report);
    addReading(report, 400, true);
    addReading(report, 5000, false);
}
