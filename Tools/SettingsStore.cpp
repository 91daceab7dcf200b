// SPDX-License-Identifier: MIT
#include "Tools/SettingsStore.h"

#include <algorithm>

namespace {

bool belongsToLink(const std::string &feature)
{
    return feature.compare(0, 3, "Gev") == 0 || feature == "TLParamsLocked";
}

} // namespace

Persistence::Settings settingsOf(GenApi::INodeMap &map, const std::function<bool(std::size_t)> &step)
{
    bool isEnded = false;
    Persistence::StoreOptions options;
    options.step = [&](std::size_t settings) {
        isEnded = step && !step(settings);
        return !isEnded;
    };
    Persistence::Settings settings = Persistence::storeSettings(map, options);
    if (isEnded || !settings.entries.empty() || !settings.problems.empty())
        return settings;
    options.takesUnmarked = true;
    options.wanted = [](const std::string &feature) { return !belongsToLink(feature); };
    settings = Persistence::storeSettings(map, options);
    if (!settings.entries.empty())
        settings.problems.push_back({0, "The description marks no feature as a setting: all that can be written count",
                                     Persistence::Severity::Note});
    return settings;
}

bool isCutShort(const Persistence::Settings &settings)
{
    return std::any_of(settings.problems.begin(), settings.problems.end(),
                       [](const Persistence::Problem &problem) { return problem.isSilence; });
}
