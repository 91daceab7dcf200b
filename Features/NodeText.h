// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <GenApi/GenApi.h>

/// The text of a feature's value, as ValueKind says. Throws a GenICam exception when the feature is unknown or
/// unreadable.
QString readNodeText(GenApi::INodeMap &map, const QString &name);

/// Writes a feature from text, as ValueKind says. Throws a GenICam exception on failure.
void writeNodeText(GenApi::INodeMap &map, const QString &name, const QString &text);
