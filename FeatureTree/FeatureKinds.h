// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>

#include <GenApi/GenApi.h>

class QWidget;

/// How the tree shows and edits its features: one table with an entry for each kind of editor. How their values are
/// read and written is not the tree's alone: see ValueKind.
namespace FeatureKinds {

/// How an integer feature is written for people, by its representation and, for a few features, its name.
enum class IntegerForm { Number, Hex, Ipv4, Mac };

/// Functions that take the node read it and pass on what it throws. Functions that take an editor do nothing, or have
/// no value, if it is of another kind.
struct EditorKind
{
    GenApi::EInterfaceType type;
    IntegerForm form; ///< Number for all but integers
    const char *name; ///< of the editor, for people
    /// Whether there is an editor only while the value can be read.
    bool needsReadable;
    /// Whether what is typed is dropped instead of written.
    bool isDiscarded;
    /// The value cell when the tree is built.
    QVariant (*initial)(GenApi::INode *node);
    /// The value cell: a number, or text for people.
    QVariant (*shown)(GenApi::INode *node);
    /// What `shown` makes of the value of `initial`; null: the same.
    QVariant (*format)(const QVariant &value);
    /// A new editor, a child of `parent`. Null: there is none.
    QWidget *(*make)(const QString &feature, QWidget *parent);
    /// Lets the editor show the node's value, range and step or entries.
    void (*fill)(QWidget *editor, GenApi::INode *node);
    /// What the editor holds, as the value to be written; invalid if it holds none.
    QVariant (*value)(const QWidget *editor);
    /// Why the text of the editor cannot be taken; empty if it can.
    QString (*refusal)(QWidget *editor);
};

/// The entry for the node's type, representation and name, whatever its access mode is; one without editor for types
/// that have none. Throws what the node throws.
const EditorKind &editorKind(GenApi::INode *node);

/// The node's name without namespace. Throws what the node throws.
QString nodeName(const GenApi::INode *node);

/// Whether a value can be written (or a command executed). Throws what the node throws.
bool isWritable(const GenApi::INode *node);

} // namespace FeatureKinds
