// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <GenApi/GenApi.h>

/// What the tree knows about kinds of features: how each is shown and edited, by interface type, representation
/// and, for a few features, name. Names are compared exactly.
namespace FeatureKinds {

/// How an integer feature is written for people.
enum class IntegerForm { Number, Hex, Ipv4, Mac };

IntegerForm integerForm(const QString &name, GenApi::ERepresentation representation);

/// Whether a float is shown from a read that bypasses the node cache.
bool isShownFresh(const QString &name);

/// Whether the text of a string feature is in the local 8-bit code page instead of UTF-8 while the tree is built.
bool isLocalText(const QString &name);

/// Digits behind the decimal point in the editor of a float.
int floatDecimals(const QString &name);

/// The editor of a value cell.
enum class EditorKind {
    None,
    MacMask,
    Ipv4Mask,
    HexMask,
    IntegerBox,
    BooleanList,
    CommandButton,
    FloatBox,
    Text,
    EntryList
};

/// The kind of editor for the node's type, representation and name, whatever its access mode is.
/// Throws what the node throws.
EditorKind editorKind(GenApi::INode *node);

/// The node's name without namespace. Throws what the node throws.
QString nodeName(const GenApi::INode *node);

/// Whether a value can be written (or a command executed). Throws what the node throws.
bool isWritable(const GenApi::INode *node);

} // namespace FeatureKinds
