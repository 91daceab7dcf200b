// SPDX-License-Identifier: MIT
#pragma once

#include <QVariant>

#include <GenApi/GenApi.h>

/// Reading and writing the value of a feature node as a QVariant, by the node's principal interface type.
/// Everything here throws what the node throws, and a GenICam exception for a node that is not of the kind that
/// its type names.
namespace FeatureValues {

/// The value from the cache if it is there: qint64, bool, double, UTF-8 text, the symbolic name of an enumeration's
/// current entry. Invalid for every other type and for an enumeration without current entry.
QVariant read(GenApi::INode *node);

/// The value as the tree shows it: as read(), but addresses and hexadecimal integers as text, "True" or "False" for
/// a boolean, "{Execute}" for a command. The line rates bypass the node cache.
QVariant shown(GenApi::INode *node);

/// Whether the node has a value that can be restored: integer, boolean, float and string.
bool isPlain(GenApi::INode *node);

/// Writes the value; false if there was nothing to write: another type, or a text that is no entry of the
/// enumeration. Verified, except for floats, which the device itself checks and which go out in single precision.
bool write(GenApi::INode *node, const QVariant &value);

/// Reads the value from the device, past the node cache, and verifies it.
void refresh(GenApi::INode *node);

} // namespace FeatureValues
