// SPDX-License-Identifier: MIT
#include "ReadAheadRows.h"

#include "BenchReport.h"
#include "DescriptionMaker.h"
#include "Devices/LoadedNodeMap.h"
#include "Stopwatch.h"
#include "support/MemoryPort.h"

namespace {

using namespace std::chrono_literals;

constexpr int ManyFeatures = 1000;
constexpr int UsualFeatures = 200;
const std::atomic_bool NotCancelled{false};

/// A made-up camera behind a slow link, of which nothing has been read yet.
class SlowCamera
{
public:
    SlowCamera(int features, std::chrono::milliseconds latency)
        : m_made(makeDescription(features)), m_port(static_cast<size_t>(m_made.memorySize)),
          m_nodes(QByteArray::fromStdString(m_made.xml), m_port)
    {
        for (const MadeDescription::Register &reg : m_made.registers)
            m_port.Write(reg.content.data(), reg.address, reg.length);
        m_port.latency = latency;
        m_port.resetCounters();
    }

    void readAhead() { m_nodes.readAhead(NotCancelled, {}); }

    /// What a panel asks of its rows.
    void readAll()
    {
        for (const std::string &name : m_made.features) {
            const GenApi::CValuePtr feature(m_nodes.get()->GetNode(name.c_str()));
            if (!GenApi::IsReadable(feature))
                continue;
            feature->ToString();
            if (const GenApi::CIntegerPtr integer(feature.operator->()); integer.IsValid())
                integer->GetMax();
        }
    }

    /// Accesses since the last call.
    unsigned takeReads()
    {
        const unsigned reads = m_port.reads;
        m_port.resetCounters();
        return reads;
    }

private:
    const MadeDescription m_made;
    MemoryPort m_port;
    LoadedNodeMap m_nodes;
};

void addAccesses(BenchReport &report)
{
    const std::string what = ", accesses, " + std::to_string(ManyFeatures) + " features";
    SlowCamera singly(ManyFeatures, 0ms);
    singly.readAll();
    const double all = singly.takeReads();
    SlowCamera camera(ManyFeatures, 0ms);
    const double computing = milliseconds([&] { camera.readAhead(); });
    const double ahead = camera.takeReads();
    camera.readAll();
    report.add("reading one by one" + what, all, "reads");
    report.add("reading ahead" + what, ahead, "reads", 0.6 * all);
    report.add("reading after that" + what, camera.takeReads(), "reads", 2.0 * ManyFeatures / 20); // not cachable
    report.add("reading ahead without latency, " + std::to_string(ManyFeatures) + " features", computing, "ms", 50);
}

void addTimes(BenchReport &report, std::chrono::milliseconds latency)
{
    const std::string what =
        ", " + std::to_string(latency.count()) + " ms an access, " + std::to_string(UsualFeatures) + " features";
    SlowCamera singly(UsualFeatures, latency);
    report.add("reading one by one" + what, milliseconds([&] { singly.readAll(); }), "ms");
    SlowCamera camera(UsualFeatures, latency);
    report.add("reading ahead, on another thread" + what, milliseconds([&] { camera.readAhead(); }), "ms");
    report.add("reading after that" + what, milliseconds([&] { camera.readAll(); }), "ms");
}

} // namespace

void addReadAheadRows(BenchReport &report)
{
    addAccesses(report);
    for (const auto latency : {1ms, 5ms, 20ms})
        addTimes(report, latency);
}
