// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <GenApi/GenApi.h>

class DeviceReading;
class EditorFocus;
class QComboBox;
class QObject;
class QString;
class RowControl;
class RowFeature;
class SwitchButton;

/// Writes what is entered in the editor of a row to its feature and lets the editor show the device's answer. What the
/// device refuses, or what is no number inside the limits, is logged and rolled back.
/// Functions that return a bool: true when the write ran to its end.
class RowWriter
{
public:
    /// All three must live as long as this object.
    RowWriter(RowFeature *feature, RowControl *control, EditorFocus *focus)
        : m_feature(feature), m_control(control), m_focus(focus)
    { }

    /// What `editor`, an IntegerField, holds; others write nothing. Without input only Enter writes.
    bool writeInteger(QObject *editor);
    /// The same for a RealField.
    bool writeReal(QObject *editor);
    /// True, too, when there is no switch, or no boolean feature to write.
    bool writeSwitch(const SwitchButton *button);
    /// The entry that a text of the list stands for; `comboBox` may be null.
    bool writeEntry(QComboBox *comboBox, const QString &text);
    bool execute();
    /// What the editor of a readable float feature shows.
    void writeShownReal();

private:
    bool attempt(const std::function<void()> &write);
    template <class Field, class Number>
    bool commit(Field *field, Number (*write)(DeviceReading *reading, GenApi::INode *node, Number number));

    RowFeature *m_feature;
    RowControl *m_control;
    EditorFocus *m_focus;
};
