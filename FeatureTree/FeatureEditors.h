// SPDX-License-Identifier: MIT
#pragma once

#include "FeatureTree/FeatureKinds.h"

/// What the editors of all kinds of features have in common: whether somebody has entered something.
namespace FeatureEditors {

/// A new editor without input, owned by `parent`; null for a kind without editor. `feature` is the feature's name.
QWidget *make(const FeatureKinds::EditorKind &kind, const QString &feature, QWidget *parent);

/// Shows the node's value, range and step or entries; the editor's signals stay silent. An editor with input keeps it,
/// as an open list keeps its entries. Throws what the node throws and then leaves the editor as far as it was filled.
void fill(const FeatureKinds::EditorKind &kind, QWidget *editor, GenApi::INode *node);

/// Whether the editor was typed in, stepped or chosen from since it was filled, or holds something else.
bool hasInput(QWidget *editor);
/// Choosing an entry is input, also of the one that was chosen before.
void noteChoice(QWidget *list);
/// From now on the editor counts as untouched. Number fields show again what they were filled with.
void forgetInput(QWidget *editor);

} // namespace FeatureEditors
