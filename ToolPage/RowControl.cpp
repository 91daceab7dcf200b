// SPDX-License-Identifier: MIT
#include "ToolPage/RowControl.h"

#include <algorithm>
#include <cmath>

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLayout>
#include <QSignalBlocker>

#include "Features/NodeGuard.h"
#include "PanelBase/NumberField.h"
#include "ToolPage/RowEditors.h"
#include "ToolPage/RowFace.h"
#include "ToolPage/RowFeature.h"
#include "ToolPage/ToolPageWidgetItem.h"

namespace {

/// The number fields of an editor, if there is one: the editor itself, or parts of a container.
QVector<NumberInput *> inputsOf(QWidget *editor)
{
    QVector<NumberInput *> inputs;
    if (!editor)
        return inputs;
    const auto add = [&inputs](QWidget *field) {
        if (NumberInput *input = NumberInput::of(field))
            inputs.append(input);
    };
    add(editor);
    for (QAbstractSpinBox *part : editor->findChildren<QAbstractSpinBox *>())
        add(part);
    return inputs;
}

bool isInUse(const QWidget *editor)
{
    const auto *comboBox = qobject_cast<const QComboBox *>(editor);
    return editor->hasFocus() || (comboBox && comboBox->view()->isVisible());
}

} // namespace

void RowControl::setEditor(QWidget *editor)
{
    m_editor = editor;
    m_kind = nullptr;
    for (NumberInput *input : inputsOf(editor))
        input->onRefused = [feature = m_feature](const QString &reason) { feature->logRefusal(reason); };
    m_face->setEditor(editor);
}

void RowControl::setEnabled(bool isEnabled)
{
    if (!m_editor)
        return;
    m_isEnabled = isEnabled && !m_feature->isReleased();
    m_editor->setEnabled(m_isEnabled);
    if (!m_isEnabled)
        dropInput();
}

QWidget *RowControl::show(GenApi::EInterfaceType type, GenApi::INode *node, bool &available)
{
    if (m_feature->isReleased())
        return m_editor;
    const RowEditor &kind = *RowEditors::find(type);
    const auto show = [&](bool verify) {
        return m_feature->guardRead([&] { available = tryToShow(kind, node, verify); });
    };
    const bool isShown = show(true) || (!m_editor && !m_feature->isSilent() && show(false));
    if (!isShown && m_editor && !hasInput())
        m_editor->setEnabled(false);
    return m_editor;
}

/// False for a node that cannot be shown by an editor of this kind now. Passes on what the node throws.
bool RowControl::tryToShow(const RowEditor &kind, GenApi::INode *node, bool verify)
{
    if (!kind.accepts(node) || (kind.needsReadable && !GenApi::IsReadable(node)))
        return false;
    const bool isEditable = m_isEnabled && GenApi::IsWritable(node);
    const bool isNew = !m_editor;
    if (isNew)
        makeEditor(kind, node, verify);
    m_editor->setEnabled(isEditable);
    if (!isEditable)
        dropInput();
    if (!isNew)
        kind.refresh(node, m_editor);
    m_feature->clearReadFault();
    return true;
}

void RowControl::makeEditor(const RowEditor &kind, GenApi::INode *node, bool verify)
{
    setEditor(kind.make(node, m_row, verify));
    m_kind = &kind;
    kind.connectTo(m_editor, m_row);
    if (m_row->layout())
        m_face->layOut();
}

void RowControl::showAccess(bool isRead, bool &available)
{
    bool isEditable = false;
    const bool isKnown = m_feature->guardRead([&] {
        available = GenApi::IsReadable(m_feature->node());
        isEditable = m_isEnabled && GenApi::IsWritable(m_feature->node());
    });
    if (isKnown && isRead)
        m_feature->clearReadFault();
    m_editor->setEnabled(isEditable && !m_feature->hasReadFault());
}

void RowControl::showSilence()
{
    if (m_kind && !hasInput())
        m_editor->setEnabled(false);
}

bool RowControl::takesLiveValue() const
{
    const auto *field = dynamic_cast<const RealField *>(m_editor);
    if (m_feature->isReleased() || (!field && !qobject_cast<QComboBox *>(m_editor)))
        return false;
    return !isInUse(m_editor) && !(field && field->hasInput());
}

void RowControl::showLiveValue(const QString &text)
{
    if (auto *comboBox = qobject_cast<QComboBox *>(m_editor)) {
        const QSignalBlocker blocker(comboBox);
        comboBox->setCurrentText(text);
        return;
    }
    bool isNumber = false;
    const float number = text.toFloat(&isNumber);
    if (isNumber && std::isfinite(number))
        dynamic_cast<RealField *>(m_editor)->load(text.toDouble(), static_cast<double>(number));
}

void RowControl::rollBack()
{
    if (!m_kind)
        return;
    m_kind->putBack(m_editor);
    if (!m_kind->needsReadable || m_feature->isSilent())
        return;
    const auto access = [this] {
        GenApi::CValuePtr(m_feature->node())->ToString(false, true); // past the cache
        m_kind->refresh(m_feature->node(), m_editor);
    };
    DeviceReading *const reading = m_feature->reading();
    guardNode([&] { reading ? reading->read(m_feature->node(), access) : access(); });
}

bool RowControl::hasInput() const
{
    const QVector<NumberInput *> inputs = inputsOf(m_editor);
    return std::any_of(inputs.begin(), inputs.end(), [](const NumberInput *input) { return input->hasInput(); });
}

void RowControl::dropInput()
{
    for (NumberInput *input : inputsOf(m_editor))
        input->drop();
}
