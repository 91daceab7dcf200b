// SPDX-License-Identifier: MIT
#include "ToolPage/RowFace.h"

#include <QAbstractSpinBox>
#include <QHBoxLayout>

#include "ToolPage/EditorFocus.h"
#include "ToolPage/RowLabel.h"
#include "ToolPage/SwitchButton.h"

namespace {

constexpr int RowHeight = 40;
constexpr int EditorHeight = 34;
constexpr int EditorMinimumWidth = 150;
constexpr QMargins RowMargins(30, 3, 10, 3);

bool isSwitchContainer(const QWidget *editor)
{
    return editor->findChild<SwitchButton *>();
}

int minimumEditorWidth(const QWidget *editor)
{
    if (!editor)
        return 0;
    return editor->minimumWidth() > 0 ? editor->minimumWidth() : editor->minimumSizeHint().width();
}

} // namespace

void RowFace::createLabel()
{
    if (m_label)
        return;
    m_label = new RowLabel(m_row);
    m_label->setAttribute(Qt::WA_TranslucentBackground);
}

void RowFace::setEditor(QWidget *editor)
{
    m_editor = editor;
    if (!editor)
        return;
    if (!isSwitchContainer(editor)) {
        editor->setFixedHeight(EditorHeight);
        editor->setMinimumWidth(EditorMinimumWidth);
    }
    nameEditor();
}

/// Tells assistive technology what the editor edits.
void RowFace::nameEditor()
{
    if (!m_editor || !m_label)
        return;
    m_editor->setAccessibleName(m_label->text());
    for (QWidget *part : m_editor->findChildren<QWidget *>()) {
        if (qobject_cast<SwitchButton *>(part) || qobject_cast<QAbstractSpinBox *>(part))
            part->setAccessibleName(m_label->text());
    }
}

void RowFace::layOut()
{
    delete m_row->layout();
    auto *box = new QHBoxLayout(m_row);
    box->setContentsMargins(RowMargins);
    box->addWidget(m_label);
    if (!m_editor || isSwitchContainer(m_editor))
        box->addStretch(m_editor ? 1 : 0);
    if (m_editor) {
        box->addWidget(m_editor);
        m_focus->watch(m_editor);
    }
    m_row->setFixedHeight(RowHeight);
}

void RowFace::fitLabel()
{
    if (m_label)
        m_label->setFixedWidth(labelWidth());
}

void RowFace::setLanguage(int language)
{
    if (m_label)
        m_label->setText(m_names.value(language != 0 ? 1 : 0));
    nameEditor();
}

QSize RowFace::minimumSize() const
{
    return QSize(RowMargins.left() + minimumEditorWidth(m_editor) + RowMargins.right(), RowHeight);
}

/// Half the row, less where the row is so narrow that the editor would not fit beside it.
int RowFace::labelWidth() const
{
    const int width = m_row->width();
    const int room = width - minimumSize().width() - (m_row->layout() ? m_row->layout()->spacing() : 0);
    return qMax(0, qMin(width / 2 - 20, room));
}
