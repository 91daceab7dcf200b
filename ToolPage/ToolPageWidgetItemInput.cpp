// SPDX-License-Identifier: MIT
// What the user enters in a row goes to its feature.
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QThread>

#include "ParamterWidget/TranslationTables.h"
#include "ToolPage/EditorFocus.h"
#include "ToolPage/NodeGuard.h"
#include "ToolPage/NodeNumbers.h"
#include "ToolPage/RowEditors.h"
#include "ToolPage/SwitchButton.h"
#include "ToolPage/ToolPageWidgetItem.h"

namespace {

constexpr unsigned long SettleMs = 10; ///< what a device gets to apply a switch or an entry before it is read back

/// The entry that a shown text stands for: itself unless it is a known Chinese text.
QString symbolicOf(const QString &text)
{
    const QString symbolic = zhTransEnMap.value(text);
    return symbolic.isEmpty() ? text : symbolic;
}

/// False for a spin box that the user leaves untouched, or that is disabled under the user's hands.
bool takeUserInput(QWidget *spinBox)
{
    const bool isEntered = RowEditors::hasEnteredValue(spinBox);
    RowEditors::forgetInput(spinBox);
    return spinBox->isEnabled() && (isEntered || spinBox->hasFocus());
}

} // namespace

void ToolPageWidgetItem::setCurrentValue()
{
    attempt([this] {
        const GenApi::CFloatPtr number(m_node);
        const auto *spinBox = qobject_cast<QDoubleSpinBox *>(m_editor);
        if (spinBox && m_node && m_node->GetPrincipalInterfaceType() == GenApi::intfIFloat
            && GenApi::IsReadable(m_node))
            number->SetValue(spinBox->value(), true);
    });
}

bool ToolPageWidgetItem::attempt(const std::function<void()> &write)
{
    if (m_released)
        return false;
    const auto refused = [&](const GenICam::GenericException &error) {
        logLine(QStringLiteral("Set %1 value failed, message = %2")
                    .arg(m_nodeName, QString::fromUtf8(error.GetDescription())));
        rollBack();
    };
    return guardNode(write, refused, [](const char *error) { logLine(QString::fromUtf8(error)); });
}

/// The editor shows what the device has, or what it had if the device cannot be read.
void ToolPageWidgetItem::rollBack()
{
    if (!m_kind)
        return;
    m_kind->putBack(m_editor);
    if (!m_kind->needsReadable)
        return;
    guardNode([this] {
        GenApi::CValuePtr(m_node)->ToString(false, true); // past the cache
        m_kind->refresh(m_node, m_editor);
    });
}

/// Writes a spin box's value with `write`, which returns the device's value after the write.
template <class SpinBox, class Value>
void ToolPageWidgetItem::commit(SpinBox *spinBox, Value (*write)(GenApi::INode *node, Value value))
{
    if (!spinBox || !takeUserInput(spinBox))
        return;
    const Value value = spinBox->value();
    QSignalBlocker blocker(spinBox); // losing the focus finishes editing once more
    if (!attempt([&] { spinBox->setValue(write(m_node, value)); }))
        return;
    m_focus->leave(spinBox);
    spinBox->setProperty(RowEditors::PreValue, value);
    blocker.unblock();
    Q_EMIT valueChanged(QVariant());
}

void ToolPageWidgetItem::onIntParamChanged()
{
    commit<QSpinBox, int>(qobject_cast<QSpinBox *>(sender()), [](GenApi::INode *node, int value) {
        const GenApi::CIntegerPtr integer(node);
        integer->SetValue(value, true);
        return NodeNumbers::low32(integer->GetValue(true, true));
    });
}

void ToolPageWidgetItem::onFloatParamChanged()
{
    commit<QDoubleSpinBox, double>(qobject_cast<QDoubleSpinBox *>(sender()), [](GenApi::INode *node, double value) {
        const GenApi::CFloatPtr number(node);
        number->SetValue(value, true);
        return NodeNumbers::finite(number->GetValue(true, true));
    });
}

void ToolPageWidgetItem::onBoolParamChanged()
{
    const auto *button = qobject_cast<SwitchButton *>(sender());
    const bool written = attempt([&] {
        const GenApi::CBooleanPtr boolean(m_node);
        if (!button || !boolean.IsValid())
            return;
        boolean->SetValue(button->isOn(), true);
        QThread::msleep(SettleMs);
        boolean->GetValue(true, true);
    });
    if (written)
        Q_EMIT valueChanged(QVariant());
}

void ToolPageWidgetItem::onEnumParamChanged(const QString &text)
{
    auto *comboBox = qobject_cast<QComboBox *>(sender());
    const bool written = attempt([&] {
        const GenApi::CEnumerationPtr enumeration(m_node);
        enumeration->FromString(symbolicOf(text).toUtf8().constData(), true);
        QThread::msleep(SettleMs);
        enumeration->GetIntValue(true, true);
    });
    if (!written)
        return;
    if (comboBox)
        m_focus->leave(comboBox);
    Q_EMIT valueChanged(QVariant());
}

void ToolPageWidgetItem::onCommandParamChanged()
{
    if (attempt([this] { GenApi::CCommandPtr(m_node)->Execute(true); }))
        Q_EMIT commandExecuted();
}
