// SPDX-License-Identifier: MIT
#include "ToolPage/RowEditors.h"

#include <cfloat>
#include <memory>

#include <QComboBox>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include "Features/ValueKind.h"
#include "PanelBase/NumberField.h"
#include "PanelBase/StyleSheets.h"
#include "ToolPage/NodeNumbers.h"
#include "ToolPage/SwitchButton.h"
#include "ToolPage/ToolPageWidgetItem.h"

namespace {

constexpr int DefaultIntegerStep = 1;
constexpr double DefaultStep = 0.01;
constexpr int Decimals = 4;

template <class Pointer>
bool casts(GenApi::INode *node)
{
    return Pointer(node).IsValid();
}

// Integers

void showInteger(IntegerField *field, GenApi::IInteger &integer, int64_t value)
{
    const int minimum = NodeNumbers::low32(integer.GetMin());
    const int maximum = NodeNumbers::spinBoxMaximum(integer.GetMax(), minimum);
    const int step = NodeNumbers::low32(integer.GetInc());
    const bool isFixed = integer.GetIncMode() == GenApi::fixedIncrement;
    field->setSteps(step > 0 ? step : DefaultIntegerStep, isFixed ? step : 0);
    field->refresh(minimum, maximum, value, NodeNumbers::low32(value));
}

QWidget *makeInteger(GenApi::INode *node, QWidget *parent, bool verify)
{
    const GenApi::CIntegerPtr integer(node);
    auto field = std::make_unique<IntegerField>(parent);
    showInteger(field.get(), *integer, integer->GetValue(verify, true));
    field->setAccessibleDescription(QString::fromUtf8(integer->GetUnit().c_str()));
    field->setProperty(RowEditors::PreValue, field->value());
    return field.release();
}

void refreshInteger(GenApi::INode *node, QWidget *editor)
{
    const GenApi::CIntegerPtr integer(node);
    if (auto *field = dynamic_cast<IntegerField *>(editor))
        showInteger(field, *integer, integer->GetValue(false, false));
}

/// What was loaded stands for a value that it shows, with all its digits.
void putBackInteger(QWidget *editor)
{
    auto *field = static_cast<IntegerField *>(editor);
    const int preValue = field->property(RowEditors::PreValue).toInt();
    field->giveBack();
    if (field->value() != preValue)
        field->load(preValue);
}

void connectInteger(QWidget *editor, ToolPageWidgetItem *row)
{
    QObject::connect(static_cast<QSpinBox *>(editor), &QSpinBox::editingFinished, row,
                     &ToolPageWidgetItem::onIntParamChanged);
}

// Floats

/// 0 for one that is not fixed.
double fixedIncrement(GenApi::IFloat &number)
{
    return number.HasInc() && number.GetIncMode() == GenApi::fixedIncrement ? number.GetInc() : 0.0;
}

QWidget *makeFloat(GenApi::INode *node, QWidget *parent, bool verify)
{
    using NodeNumbers::singlePrecision;
    const GenApi::CFloatPtr number(node);
    auto field = std::make_unique<RealField>(parent);
    field->setDecimals(Decimals);
    const double value = number->GetValue(verify, true);
    field->refresh(singlePrecision(number->GetMin(), -FLT_MAX), singlePrecision(number->GetMax(), FLT_MAX), value,
                   singlePrecision(value));
    const double increment = fixedIncrement(*number);
    field->setSteps(singlePrecision(increment > 0.0 ? increment : DefaultStep), increment);
    field->setProperty(RowEditors::PreValue, static_cast<float>(field->value()));
    field->setAccessibleDescription(QString::fromUtf8(number->GetUnit().c_str()));
    return field.release();
}

void refreshFloat(GenApi::INode *node, QWidget *editor)
{
    using NodeNumbers::finite;
    auto *field = dynamic_cast<RealField *>(editor);
    if (!field)
        return;
    const GenApi::CFloatPtr number(node);
    const double minimum = finite(number->GetMin(), -DBL_MAX);
    const double maximum = finite(number->GetMax(), DBL_MAX);
    const double value = number->GetValue(false, false);
    field->setSteps(DefaultStep, fixedIncrement(*number));
    field->refresh(minimum, maximum, value, finite(value));
}

void putBackFloat(QWidget *editor)
{
    auto *field = static_cast<RealField *>(editor);
    const float preValue = field->property(RowEditors::PreValue).toFloat();
    field->giveBack();
    if (static_cast<float>(field->value()) != preValue)
        field->load(static_cast<double>(preValue));
}

void connectFloat(QWidget *editor, ToolPageWidgetItem *row)
{
    QObject::connect(static_cast<QDoubleSpinBox *>(editor), &QDoubleSpinBox::editingFinished, row,
                     &ToolPageWidgetItem::onFloatParamChanged);
}

// Booleans

void showBoolean(QWidget *editor, bool on)
{
    auto *button = editor->findChild<SwitchButton *>();
    if (!button)
        return;
    button->setSwitch(on);
    editor->setProperty(RowEditors::PreValue, on);
}

QWidget *makeBoolean(GenApi::INode *node, QWidget *parent, bool)
{
    const bool on = GenApi::CBooleanPtr(node)->GetValue(false, false);
    QWidget *container = RowEditors::switchContainer(new SwitchButton(parent), parent);
    showBoolean(container, on);
    return container;
}

void refreshBoolean(GenApi::INode *node, QWidget *editor)
{
    showBoolean(editor, GenApi::CBooleanPtr(node)->GetValue(false, false));
}

void putBackBoolean(QWidget *editor)
{
    showBoolean(editor, editor->property(RowEditors::PreValue).toBool());
}

void connectBoolean(QWidget *editor, ToolPageWidgetItem *row)
{
    QObject::connect(editor->findChild<SwitchButton *>(), &QPushButton::clicked, row,
                     &ToolPageWidgetItem::onBoolParamChanged);
}

// Enumerations

/// Changes only what differs, since the list may be open. A feature names its entries in one order, whichever of them
/// are available: what remains of the former ones is in its place, and the others go between.
void showEntries(QComboBox *comboBox, const QStringList &entries)
{
    for (int index = comboBox->count() - 1; index >= 0; --index) {
        if (!entries.contains(comboBox->itemText(index)))
            comboBox->removeItem(index);
    }
    for (int index = 0; index < entries.size(); ++index) {
        if (comboBox->itemText(index) != entries.at(index))
            comboBox->insertItem(index, entries.at(index));
    }
}

void showEnumeration(QComboBox *comboBox, GenApi::IEnumeration &enumeration)
{
    const QStringList entries = entryNames(enumeration);
    const QString current = QString::fromUtf8(enumeration.ToString().c_str());
    const QSignalBlocker blocker(comboBox);
    showEntries(comboBox, entries);
    comboBox->setCurrentIndex(comboBox->findText(current));
    comboBox->setProperty(RowEditors::PreValue, current);
}

QWidget *makeEnumeration(GenApi::INode *node, QWidget *parent, bool)
{
    auto comboBox = std::make_unique<QComboBox>(parent);
    showEnumeration(comboBox.get(), *GenApi::CEnumerationPtr(node));
    comboBox->setStyleSheet(StyleSheets::EnumerationList);
    comboBox->setItemDelegate(new QStyledItemDelegate(comboBox.get())); // the default one ignores item styles
    return comboBox.release();
}

void refreshEnumeration(GenApi::INode *node, QWidget *editor)
{
    if (auto *comboBox = qobject_cast<QComboBox *>(editor))
        showEnumeration(comboBox, *GenApi::CEnumerationPtr(node));
}

void putBackEnumeration(QWidget *editor)
{
    const QSignalBlocker blocker(editor);
    auto *comboBox = static_cast<QComboBox *>(editor);
    comboBox->setCurrentIndex(comboBox->findText(editor->property(RowEditors::PreValue).toString()));
}

void connectEnumeration(QWidget *editor, ToolPageWidgetItem *row)
{
    QObject::connect(static_cast<QComboBox *>(editor), &QComboBox::currentTextChanged, row,
                     &ToolPageWidgetItem::onEnumParamChanged);
}

// Commands

QWidget *makeCommand(GenApi::INode *, QWidget *parent, bool)
{
    auto *button = new QPushButton(ToolPageWidgetItem::tr("Execute"), parent);
    button->setStyleSheet(StyleSheets::PlainButton);
    return button;
}

void refreshCommand(GenApi::INode *, QWidget *) { }

void putBackCommand(QWidget *) { }

void connectCommand(QWidget *editor, ToolPageWidgetItem *row)
{
    QObject::connect(static_cast<QPushButton *>(editor), &QPushButton::clicked, row,
                     &ToolPageWidgetItem::onCommandParamChanged);
}

constexpr RowEditor Editors[] = {
    {GenApi::intfIInteger, true, casts<GenApi::CIntegerPtr>, makeInteger, refreshInteger, putBackInteger,
     connectInteger},
    {GenApi::intfIFloat, true, casts<GenApi::CFloatPtr>, makeFloat, refreshFloat, putBackFloat, connectFloat},
    {GenApi::intfIBoolean, true, casts<GenApi::CBooleanPtr>, makeBoolean, refreshBoolean, putBackBoolean,
     connectBoolean},
    {GenApi::intfIEnumeration, true, casts<GenApi::CEnumerationPtr>, makeEnumeration, refreshEnumeration,
     putBackEnumeration, connectEnumeration},
    {GenApi::intfICommand, false, casts<GenApi::CCommandPtr>, makeCommand, refreshCommand, putBackCommand,
     connectCommand},
};

} // namespace

const RowEditor *RowEditors::find(GenApi::EInterfaceType type)
{
    for (const RowEditor &editor : Editors) {
        if (editor.type == type)
            return &editor;
    }
    return nullptr;
}

QWidget *RowEditors::switchContainer(SwitchButton *button, QWidget *parent)
{
    auto *container = new QWidget(parent);
    container->setObjectName(QStringLiteral("widget"));
    container->setStyleSheet(StyleSheets::SwitchContainer);
    button->setFixedSize(44, 20);
    auto *layout = new QHBoxLayout(container);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch();
    layout->addWidget(button);
    return container;
}
