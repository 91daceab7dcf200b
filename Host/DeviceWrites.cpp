// SPDX-License-Identifier: MIT
#include "Host/DeviceWrites.h"

#include <algorithm>
#include <optional>

#include <GenApi/GenApi.h>

#include "Devices/Device.h"
#include "Features/NodeGuard.h"
#include "Features/NodeText.h"
#include "Host/KnownDevices.h"
#include "Tools/BytesText.h"

namespace {

constexpr int MostLevels = 16; ///< of selectors of selectors; a description may have them in a circle

/// Adds where the selectors of the node stand, the outermost first. False if one of them would have to be read from the
/// device.
bool addKnownSelection(GenApi::INode *node, int level, Persistence::Selection &selection)
{
    const GenApi::CSelectorPtr links(node);
    GenApi::FeatureList_t selectors;
    if (links.IsValid())
        links->GetSelectingFeatures(selectors);
    for (GenApi::IValue *selector : selectors) {
        const std::string name = selector->GetNode()->GetName().c_str();
        const bool isListed =
            std::any_of(selection.begin(), selection.end(), [&](const auto &one) { return one.selector == name; });
        if (isListed || selector->GetNode() == node)
            continue;
        if (level >= MostLevels || !selector->IsValueCacheValid()
            || !addKnownSelection(selector->GetNode(), level + 1, selection))
            return false;
        selection.push_back({name, selector->ToString().c_str()});
    }
    return true;
}

Persistence::Selection knownSelection(GenApi::INode *node)
{
    Persistence::Selection selection;
    bool isKnown = false;
    guardNode([&] { isKnown = addKnownSelection(node, 0, selection); });
    return isKnown ? selection : Persistence::Selection();
}

} // namespace

void DeviceWrites::add(const QString &device, const QString &feature, const QString &value, const QString &refusal)
{
    Persistence::Entry setting{bytesOfText(feature), {}, bytesOfText(value)};
    const Device *known = m_devices.device(device);
    GenApi::INodeMap *map = known ? known->nodeMap() : nullptr;
    guardNode([&] {
        GenApi::INode *node = map ? map->GetNode(setting.feature.c_str()) : nullptr;
        if (!node)
            return;
        setting.value = bytesOfText(settingText(node, value));
        if (refusal.isEmpty()) // others are not repeated; and a device that has stopped answering holds up whoever asks
            setting.selection = knownSelection(node);
    });
    m_log.append(device, setting, refusal);
}
