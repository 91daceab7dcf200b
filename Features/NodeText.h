// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <GenApi/GenApi.h>

/// A feature's value as text: "True" or "False" for booleans, else the standard's text of the value.
/// Throws a GenICam exception when the feature is unknown or unreadable.
QString readNodeText(GenApi::INodeMap &map, const QString &name);

/// Writes a feature from text, verified. Booleans take "1", "0", "True" and "False"; enumerations the symbolic
/// name or the number of an entry; an empty text executes a command. Throws a GenICam exception on failure.
void writeNodeText(GenApi::INodeMap &map, const QString &name, const QString &text);
