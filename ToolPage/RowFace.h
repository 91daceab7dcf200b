// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <QStringList>

class EditorFocus;
class QLabel;
class QWidget;

/// What a row looks like: its label on the left, the place and size of its editor on the right, and the label's text.
class RowFace
{
public:
    /// Both must live as long as this object; editors that are laid out are watched by `focus`.
    RowFace(QWidget *row, EditorFocus *focus) : m_row(row), m_focus(focus) { }

    void createLabel();
    /// English and Chinese; they appear with setLanguage().
    void setNames(const QStringList &names) { m_names = names; }
    /// The editor, a child of the row, gets its size and a name for assistive technology. Null: a row without one.
    void setEditor(QWidget *editor);
    /// Places label and editor anew.
    void layOut();
    /// Gives the label its part of the row's width.
    void fitLabel();
    void setLanguage(int language);
    /// Room for the editor; the label may vanish.
    QSize minimumSize() const;

private:
    void nameEditor();
    int labelWidth() const;

    QWidget *m_row;
    EditorFocus *m_focus;
    QLabel *m_label = nullptr; ///< child of the row
    QWidget *m_editor = nullptr;
    QStringList m_names;
};
