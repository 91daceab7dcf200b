// SPDX-License-Identifier: MIT
#pragma once

#include <QVariant>

#include <GenApi/GenApi.h>

#include "FeatureTree/FeatureKinds.h"

class QWidget;

/// The editor widgets of value cells, one per kind: making, filling and reading them.
namespace FeatureEditors {

/// A new editor, owned by `parent`; null for EditorKind::None. `name` is the feature's.
QWidget *make(FeatureKinds::EditorKind kind, const QString &name, QWidget *parent);

/// Shows the node's value, range and step or entries; the editor's signals stay silent. An editor with input keeps it,
/// as an open list keeps its entries. Throws what the node throws and then leaves the editor as far as it was filled.
void fill(QWidget *editor, FeatureKinds::EditorKind kind, GenApi::INode *node);

/// Whether the editor was typed in, stepped or chosen from since it was filled, or holds something else.
bool hasInput(QWidget *editor);
/// Choosing an entry is input, also of the one that was chosen before.
void noteChoice(QWidget *list);
/// From now on the editor counts as untouched. Number fields show again what they were filled with.
void forgetInput(QWidget *editor);
/// Why the text of a number cannot be taken; empty for other editors, and if it can.
QString refusal(QWidget *editor, FeatureKinds::EditorKind kind);

/// What the editor holds, as the value to be written; invalid if it holds none (address fields and buttons never
/// do), or if the widget does not fit the kind.
QVariant value(QWidget *editor, FeatureKinds::EditorKind kind);

} // namespace FeatureEditors
