// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <GenApi/GenApi.h>

class DeviceReading;

/// What the description pane says about a node, as HTML: name and description, properties, and by its type the
/// range and unit of a number or the entries of an enumeration. Texts of the node are shown as they stand.
/// Where the node throws, the text ends with what was known until then; of a silent device, too. A null `reading` reads
/// the device however long that takes.
QString featureDescription(GenApi::INode *node, DeviceReading *reading = nullptr);
