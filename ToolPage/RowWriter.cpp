// SPDX-License-Identifier: MIT
#include "ToolPage/RowWriter.h"

#include <QComboBox>
#include <QThread>

#include "Features/ValueKind.h"
#include "PanelBase/NodeWrites.h"
#include "PanelBase/NumberField.h"
#include "PanelBase/TranslationTables.h"
#include "ToolPage/EditorFocus.h"
#include "ToolPage/NodeNumbers.h"
#include "ToolPage/RowControl.h"
#include "ToolPage/RowEditors.h"
#include "ToolPage/RowFeature.h"
#include "ToolPage/SwitchButton.h"

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

bool RowWriter::attempt(const std::function<void()> &write)
{
    return m_feature->guardWrite(write, [this] { m_control->rollBack(); });
}

/// Writes what was entered in a field with `write`, which returns the device's value after the write.
template <class Field, class Number>
bool RowWriter::commit(Field *field, Number (*write)(DeviceReading *reading, GenApi::INode *node, Number number))
{
    if (!field || !field->isEnabled() || !(field->isWanted() || field->hasFocus()))
        return false;
    if (!field->hasInput() && !field->holdsLoaded()) {
        RowFeature::log(QStringLiteral("Nothing is written to %1: its value is beyond this field; the tab "
                                       "\"All Attribute\" edits it exactly")
                            .arg(m_feature->name()));
        return false;
    }
    const auto entered = field->entered();
    if (!entered) {
        m_feature->logRefusal(field->refusal());
        m_control->rollBack();
        return false;
    }
    const auto exchange = [&] {
        const Number taken = write(m_feature->reading(), m_feature->node(), *entered);
        field->load(taken, shownBy(field, taken));
    };
    if (!attempt(exchange)) {
        if (field->hasInput())
            field->load(*entered);
        return false;
    }
    m_focus->leave(field);
    field->setProperty(RowEditors::PreValue, static_cast<typename Field::Shown>(*entered));
    return true;
}

bool RowWriter::writeInteger(QObject *editor)
{
    return commit<IntegerField, qint64>(dynamic_cast<IntegerField *>(editor),
                                        [](DeviceReading *reading, GenApi::INode *node, qint64 number) {
                                            NodeWrites::writeValue(reading, node, number);
                                            return valueKind(node).readFresh(node).toLongLong();
                                        });
}

bool RowWriter::writeReal(QObject *editor)
{
    return commit<RealField, double>(
        dynamic_cast<RealField *>(editor), [](DeviceReading *reading, GenApi::INode *node, double number) {
            NodeWrites::writeReal(reading, node, number); // in double precision, unlike an edit in the tree
            return valueKind(node).readFresh(node).toDouble();
        });
}

bool RowWriter::writeSwitch(const SwitchButton *button)
{
    return attempt([&] {
        GenApi::INode *const node = m_feature->node();
        if (!button || !GenApi::CBooleanPtr(node).IsValid())
            return;
        NodeWrites::writeValue(m_feature->reading(), node, button->isOn());
        QThread::msleep(SettleMs);
        valueKind(node).readFresh(node);
    });
}

bool RowWriter::writeEntry(QComboBox *comboBox, const QString &text)
{
    const bool isWritten = attempt([&] {
        GenApi::INode *const node = m_feature->node(); // what the write brings about may release it here
        NodeWrites::writeEntry(m_feature->reading(), node, symbolicOf(text));
        QThread::msleep(SettleMs);
        valueKind(node).readFresh(node);
    });
    if (isWritten && comboBox)
        m_focus->leave(comboBox);
    return isWritten;
}

bool RowWriter::execute()
{
    return attempt([this] { NodeWrites::execute(m_feature->reading(), m_feature->node()); });
}

void RowWriter::writeShownReal()
{
    attempt([this] {
        GenApi::INode *const node = m_feature->node();
        const auto *field = dynamic_cast<RealField *>(m_control->editor());
        if (field && node && node->GetPrincipalInterfaceType() == GenApi::intfIFloat && GenApi::IsReadable(node))
            NodeWrites::writeReal(m_feature->reading(), node, field->entered().value_or(field->number()));
    });
}
