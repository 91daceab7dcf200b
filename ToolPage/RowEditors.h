// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/GenApi.h>

class QWidget;
class SwitchButton;
class ToolPageWidgetItem;

/// How the editor of one kind of feature is made and kept in step with its feature.
/// Functions that take the node read it and pass on what it throws.
struct RowEditor
{
    GenApi::EInterfaceType type;
    /// False: the editor shows no value, so the feature need not be readable.
    bool needsReadable;
    /// Whether the node has the interface that the editor needs.
    bool (*accepts)(GenApi::INode *node);
    /// A new editor, a child of `parent`, that shows the feature. Without `verify` a number may break its limits.
    QWidget *(*make)(GenApi::INode *node, QWidget *parent, bool verify);
    /// Lets an editor of this kind show the feature; the editor emits nothing, and keeps what it shows when
    /// the node throws. A number field with input takes over the limits alone; other widgets stay as they are.
    void (*refresh)(GenApi::INode *node, QWidget *editor);
    /// Lets an editor of this kind show the value before a refused write; it emits nothing.
    void (*putBack)(QWidget *editor);
    /// Connects the editor's signals to the row's slots.
    void (*connectTo)(QWidget *editor, ToolPageWidgetItem *row);
};

namespace RowEditors {

/// Dynamic property of editors: the value to fall back to when a write is refused. Spin boxes: the value written last,
/// or the first one; others: what the feature was last seen to have.
inline constexpr char PreValue[] = "preValue";

/// The editor for features of a type; null when features of that type have none.
const RowEditor *find(GenApi::EInterfaceType type);

/// A new container, a child of `parent`, that shows the switch 44 x 20 at its right end.
QWidget *switchContainer(SwitchButton *button, QWidget *parent);

} // namespace RowEditors
