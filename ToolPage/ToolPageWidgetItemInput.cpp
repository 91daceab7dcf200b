// SPDX-License-Identifier: MIT
// What the user enters in a row goes to its feature.
#include <QComboBox>
#include <QThread>

#include "ParamterWidget/TranslationTables.h"
#include "ToolPage/EditorFocus.h"
#include "ToolPage/NodeGuard.h"
#include "ToolPage/NodeNumbers.h"
#include "ToolPage/NumberField.h"
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

/// What was loaded stands for a value that it shows, with all its digits.
template <class Field>
void loadPreValue(Field *field, typename Field::Shown preValue)
{
    field->giveBack();
    const bool isShown = std::is_integral_v<typename Field::Shown>
        ? field->value() == preValue
        : static_cast<float>(field->value()) == static_cast<float>(preValue);
    if (!isShown)
        field->load(preValue);
}

int preValueOf(const IntegerField *field)
{
    return field->property(RowEditors::PreValue).toInt();
}

double preValueOf(const RealField *field)
{
    return static_cast<double>(field->property(RowEditors::PreValue).toFloat());
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

bool ToolPageWidgetItem::attempt(const std::function<void()> &write, const std::function<void()> &rollBack)
{
    if (m_released)
        return false;
    const auto refused = [&](const GenICam::GenericException &error) {
        logRefusal(QString::fromUtf8(error.GetDescription()));
        if (rollBack)
            rollBack();
    };
    return guardNode(write, refused, [](const char *error) { logLine(QString::fromUtf8(error)); });
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
        field->giveBack();
        return;
    }
    const auto exchange = [&] {
        const Number taken = write(m_node, *entered);
        field->load(taken, shownBy(field, taken));
    };
    if (!attempt(exchange, [field] { loadPreValue(field, preValueOf(field)); })) {
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
    attempt([this] { GenApi::CCommandPtr(m_node)->Execute(true); });
}
