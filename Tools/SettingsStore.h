// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <GenApi/PersistenceDevice.h>

/// The settings of a device as a file would hold them: what its description marks as streamable. Of a description that
/// marks nothing so, everything that can be written but what belongs to the link to this host; a note among the
/// problems tells it.
/// A device that does not answer any more ends it, see isCutShort().
/// \param step called after each setting; false ends it, what was read until then is returned
Persistence::Settings settingsOf(GenApi::INodeMap &map, const std::function<bool(std::size_t settings)> &step = {});

/// The device has not answered at some time: these are not all its settings.
bool isCutShort(const Persistence::Settings &settings);
