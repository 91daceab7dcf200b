// SPDX-License-Identifier: MIT
#include <GenApi/PersistenceDevice.h>

#include <GenApi/IDeviceInfo.h>

#include "Guarded.h"
#include "ValueText.h"

namespace Persistence {

namespace {

std::string versionText(const GenApi::Version_t &version)
{
    return std::to_string(version.Major) + "." + std::to_string(version.Minor) + "." + std::to_string(version.SubMinor);
}

std::string interfaceVersionOf(GenApi::INodeMap &map)
{
    GenApi::Version_t version{3, 4, 0};
    uint16_t build = 0;
    if (auto *info = dynamic_cast<GenApi::IDeviceInfo *>(&map))
        info->GetGenApiVersion(version, build);
    return versionText(version);
}

/// Takes the entries of a walk and puts them in the order of files.
class Collector
{
public:
    Collector(const StoreWalk &walk, Settings &settings)
        : m_walk(walk), m_settings(settings), m_entries(walk.features().size())
    { }

    void take(const Place &place)
    {
        Entry entry{place.name, place.selection, {}};
        const Outcome outcome = guarded([&] { entry.value = storedText(place.value, false); });
        m_silence.note(outcome);
        const std::string why = outcome.isDone() ? whyNotStorable(entry) : "it cannot be read: " + outcome.reason;
        if (why.empty()) {
            m_entries[place.feature].push_back(std::move(entry));
            ++m_count;
            return;
        }
        const std::string where = entry.selection.empty() ? "" : " (" + displayText(entry.selection) + ")";
        m_settings.problems.push_back({0, "'" + place.name + "' is left out: " + why + where, Severity::Error,
                                       outcome.result == Result::TimedOut});
    }
    bool isDeviceSilent() const { return m_silence.isLasting(); }
    std::size_t count() const { return m_count; }

    void finish()
    {
        for (std::size_t i = 0; i < m_entries.size(); ++i) {
            for (Entry &entry : m_entries[i])
                m_settings.entries.push_back(std::move(entry));
            for (GenApi::IValue *selector : m_walk.features()[i].selectors)
                addSelector(*selector);
        }
    }

private:
    void addSelector(GenApi::IValue &selector)
    {
        Entry entry{nameOf(selector), {}, {}};
        bool isOpen = false;
        const Outcome outcome = guarded([&] {
            isOpen = selector.GetAccessMode() == GenApi::RW;
            entry.value = isOpen ? stringOf(selector.ToString()) : std::string();
        });
        if (!outcome.isDone())
            m_settings.problems.push_back({0, "'" + entry.feature + "' cannot be read: " + outcome.reason,
                                           Severity::Error, outcome.result == Result::TimedOut});
        else if (isOpen)
            m_settings.entries.push_back(std::move(entry));
    }

    const StoreWalk &m_walk;
    Settings &m_settings;
    std::vector<std::vector<Entry>> m_entries; // of each feature
    std::size_t m_count = 0;
    Silence m_silence;
};

} // namespace

DeviceInfo deviceInfo(GenApi::INodeMap &map)
{
    auto *info = dynamic_cast<GenApi::IDeviceInfo *>(&map);
    if (!info)
        return {};
    GenApi::Version_t version{0, 0, 0};
    info->GetDeviceVersion(version);
    return {stringOf(info->GetVendorName()),  stringOf(info->GetModelName()),
            stringOf(info->GetToolTip()),     versionText(version),
            stringOf(info->GetProductGuid()), stringOf(info->GetVersionGuid())};
}

Settings storeSettings(GenApi::INodeMap &map, const StoreOptions &options)
{
    const StreamingScope streaming(map, StreamingScope::Direction::Store);
    Settings settings;
    settings.device = deviceInfo(map);
    settings.interfaceVersion = interfaceVersionOf(map);
    const StoreWalk walk(map, options.wanted, options.takesUnmarked);
    Collector collector(walk, settings);
    {
        SelectorGuard guard(map);
        std::vector<Problem> problems = walk.run(guard, [&](const Place &place) {
            collector.take(place);
            return !collector.isDeviceSilent() && (!options.step || options.step(collector.count()));
        });
        settings.problems.insert(settings.problems.end(), problems.begin(), problems.end());
    }
    collector.finish();
    return settings;
}

} // namespace Persistence
