// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/GenApi.h>

class QString;
class QWidget;
class RowFace;
class RowFeature;
class ToolPageWidgetItem;
struct RowEditor;

/// The editor of a row, made for the kind of the feature or taken over from the caller. It shows what the device has
/// and lets the user edit what the device and the caller permit. No refresh disturbs a number field with input; what
/// can no longer be edited drops its input. Nothing here writes to the device.
class RowControl
{
public:
    /// All three must live as long as this object.
    RowControl(ToolPageWidgetItem *row, RowFeature *feature, RowFace *face)
        : m_row(row), m_feature(feature), m_face(face)
    { }

    /// Null without one.
    QWidget *editor() const { return m_editor; }
    /// Takes the caller's widget, a child of the row, as editor; null: the row has none from now on.
    void setEditor(QWidget *editor);
    /// The caller's permission to edit; without an editor nothing changes.
    void setEnabled(bool isEnabled);

    /// Makes an editor for features of a type, or lets the one that there is show the node; the editor, if any, is
    /// returned. `available` becomes true when the node can be shown, false when it cannot, and stays as it was when
    /// the node throws.
    QWidget *show(GenApi::EInterfaceType type, GenApi::INode *node, bool &available);
    /// Lets the editor show whether the feature can be edited now; `available` becomes true when it is readable. The
    /// device may change both by itself. `isRead`: the value was read, so an earlier fault is over. What could not be
    /// read stays disabled until it can.
    void showAccess(bool isRead, bool &available);
    /// What the device had is shown gray, but for what is being typed.
    void showSilence();
    /// Whether the editor can show a live value, and the user is not in it.
    bool takesLiveValue() const;
    void showLiveValue(const QString &text);
    /// After a refused write: the editor shows what the device has, or what it had if the device cannot be read.
    void rollBack();
    /// Number fields with input show what was loaded.
    void dropInput();

private:
    bool tryToShow(const RowEditor &kind, GenApi::INode *node, bool verify);
    void makeEditor(const RowEditor &kind, GenApi::INode *node, bool verify);
    bool hasInput() const;

    ToolPageWidgetItem *m_row;
    RowFeature *m_feature;
    RowFace *m_face;
    QWidget *m_editor = nullptr; ///< child of the row
    const RowEditor *m_kind = nullptr; ///< of an editor that was made here
    bool m_isEnabled = true;
};
