// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <GenApi/GenApi.h>

/// What the description pane says about a node, as HTML: name and description, properties, and by its type the
/// range and unit of a number or the entries of an enumeration. Texts of the node are shown as they stand.
/// Where the node throws, the text ends with what was known until then.
QString featureDescription(GenApi::INode *node);
