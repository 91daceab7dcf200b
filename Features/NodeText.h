// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <GenApi/GenApi.h>

/// The text of a feature's value, as ValueKind says. Throws a GenICam exception when the feature is unknown or
/// unreadable.
QString readNodeText(GenApi::INodeMap &map, const QString &name);

/// Writes a feature from text, as ValueKind says. Throws a GenICam exception on failure.
void writeNodeText(GenApi::INodeMap &map, const QString &name, const QString &text);

/// What a settings file holds for a text that writeNodeText() takes: the name of an entry in place of its number, "1"
/// and "0" of booleans. Other texts are themselves. Nothing is read from a device.
QString settingText(GenApi::INode *node, const QString &text);
