// SPDX-License-Identifier: MIT
#include "FeatureTree/FeatureEditors.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalBlocker>

#include "PanelBase/NumberInput.h"

namespace FeatureEditors {
namespace {

/// Property of lines and lists: the text that they were filled with; none after a choice.
constexpr char FilledText[] = "filledText";

/// Of a line or a list.
QString shownText(const QWidget *editor)
{
    const auto *line = qobject_cast<const QLineEdit *>(editor);
    const auto *list = qobject_cast<const QComboBox *>(editor);
    return line ? line->text() : list ? list->currentText() : QString();
}

bool isOpenList(const QWidget *editor)
{
    const auto *list = qobject_cast<const QComboBox *>(editor);
    return list && list->view()->isVisible();
}

} // namespace

QWidget *make(const FeatureKinds::EditorKind &kind, const QString &feature, QWidget *parent)
{
    QWidget *editor = kind.make ? kind.make(feature, parent) : nullptr;
    if (editor)
        forgetInput(editor);
    return editor;
}

void fill(const FeatureKinds::EditorKind &kind, QWidget *editor, GenApi::INode *node)
{
    const QSignalBlocker blocker(editor);
    if (NumberInput::of(editor)) { // keeps its input by itself
        kind.fill(editor, node);
    } else if (!hasInput(editor) && !isOpenList(editor)) {
        kind.fill(editor, node);
        forgetInput(editor);
    }
}

bool hasInput(QWidget *editor)
{
    if (const NumberInput *input = NumberInput::of(editor))
        return input->hasInput();
    const auto *line = qobject_cast<const QLineEdit *>(editor);
    const QVariant filled = editor->property(FilledText);
    return (line && line->isModified()) || !filled.isValid() || filled.toString() != shownText(editor);
}

void noteChoice(QWidget *list)
{
    list->setProperty(FilledText, QVariant());
}

void forgetInput(QWidget *editor)
{
    if (NumberInput *input = NumberInput::of(editor))
        return input->giveBack();
    if (auto *line = qobject_cast<QLineEdit *>(editor))
        line->setModified(false);
    editor->setProperty(FilledText, shownText(editor));
}

} // namespace FeatureEditors
