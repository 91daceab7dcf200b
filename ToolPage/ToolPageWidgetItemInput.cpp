// SPDX-License-Identifier: MIT
// What the user enters in a row goes to its feature.
#include <QComboBox>
#include <QThread>

#include "Features/NodeGuard.h"
#include "PanelBase/NumberField.h"
#include "PanelBase/TranslationTables.h"
#include "ToolPage/EditorFocus.h"
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

/// What a field shows of a device's value.
int shownBy(const IntegerField *, int64_t value)
{
    return NodeNumbers::low32(value);
}

double shownBy(const RealField *, double value)
{
    return NodeNumbers::finite(value);
}

} // namespace

void ToolPageWidgetItem::setCurrentValue()
{
    attempt([this] {
        const GenApi::CFloatPtr number(m_node);
        const auto *field = dynamic_cast<RealField *>(m_editor);
        if (field && m_node && m_node->GetPrincipalInterfaceType() == GenApi::intfIFloat && GenApi::IsReadable(m_node))
            number->SetValue(field->entered().value_or(field->number()), true);
    });
}

bool ToolPageWidgetItem::attempt(const std::function<void()> &write)
{
    if (m_released)
        return false;
    const auto refused = [&](const GenICam::GenericException &error) {
        logRefusal(QString::fromUtf8(error.GetDescription()));
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

void ToolPageWidgetItem::logRefusal(const QString &reason) const
{
    const QString name = m_nodeName.isEmpty() ? m_names.value(0).trimmed() : m_nodeName;
    logLine(QStringLiteral("Set %1 value failed, message = %2").arg(name, reason));
}

/// Writes what was entered in a field with `write`, which returns the device's value after the write.
template <class Field, class Number>
void ToolPageWidgetItem::commit(Field *field, Number (*write)(GenApi::INode *node, Number number))
{
    if (!field || !field->isEnabled() || !(field->isWanted() || field->hasFocus()))
        return;
    if (!field->hasInput() && !field->holdsLoaded()) {
        logLine(QStringLiteral("Nothing is written to %1: its value is beyond this field; the tab \"All Attribute\" "
                               "edits it exactly")
                    .arg(m_nodeName));
        return;
    }
    const auto entered = field->entered();
    if (!entered) {
        logRefusal(field->refusal());
        rollBack();
        return;
    }
    const auto exchange = [&] {
        const Number taken = write(m_node, *entered);
        field->load(taken, shownBy(field, taken));
    };
    if (!attempt(exchange)) {
        if (field->hasInput())
            field->load(*entered);
        return;
    }
    m_focus->leave(field);
    field->setProperty(RowEditors::PreValue, static_cast<typename Field::Shown>(*entered));
    Q_EMIT valueChanged(QVariant());
}

void ToolPageWidgetItem::onIntParamChanged()
{
    commit<IntegerField, qint64>(dynamic_cast<IntegerField *>(sender()), [](GenApi::INode *node, qint64 number) {
        const GenApi::CIntegerPtr integer(node);
        integer->SetValue(number, true);
        return static_cast<qint64>(integer->GetValue(true, true));
    });
}

void ToolPageWidgetItem::onFloatParamChanged()
{
    commit<RealField, double>(dynamic_cast<RealField *>(sender()), [](GenApi::INode *node, double number) {
        const GenApi::CFloatPtr real(node);
        real->SetValue(number, true);
        return real->GetValue(true, true);
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
