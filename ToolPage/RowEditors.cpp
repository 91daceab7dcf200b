// SPDX-License-Identifier: MIT
#include "ToolPage/RowEditors.h"

#include <algorithm>
#include <cfloat>
#include <memory>

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStyledItemDelegate>

#include "ToolPage/NodeNumbers.h"
#include "ToolPage/StyleSheets.h"
#include "ToolPage/SwitchButton.h"
#include "ToolPage/ToolPageWidgetItem.h"

namespace {

constexpr char Edited[] = "edited"; ///< dynamic property of spin boxes: the value was changed by hand
constexpr int DefaultIntegerStep = 1;
constexpr double DefaultStep = 0.01;
constexpr int Decimals = 4;

template <class Pointer>
bool casts(GenApi::INode *node)
{
    return Pointer(node).IsValid();
}

template <class SpinBox>
void trackEdits(SpinBox *spinBox)
{
    spinBox->setContextMenuPolicy(Qt::NoContextMenu);
    spinBox->setProperty(Edited, false);
    QObject::connect(spinBox, &SpinBox::textChanged, spinBox, [spinBox] { spinBox->setProperty(Edited, true); });
}

/// The limits of the feature, widened for a value outside of them: the spin box shows what the device has.
template <class SpinBox, class Value>
void setRange(SpinBox *spinBox, Value minimum, Value maximum, Value value)
{
    spinBox->setRange(std::min(minimum, value), std::max(maximum, value));
}

// Integers

void showInteger(QSpinBox *spinBox, GenApi::IInteger &integer, int64_t value)
{
    const int minimum = NodeNumbers::low32(integer.GetMin());
    const int maximum = NodeNumbers::spinBoxMaximum(integer.GetMax(), minimum);
    const int step = NodeNumbers::low32(integer.GetInc());
    const int shown = NodeNumbers::low32(value);
    const QSignalBlocker blocker(spinBox);
    setRange(spinBox, minimum, maximum, shown);
    spinBox->setSingleStep(step > 0 ? step : DefaultIntegerStep);
    spinBox->setValue(shown);
}

QWidget *makeInteger(GenApi::INode *node, QWidget *parent, bool verify)
{
    const GenApi::CIntegerPtr integer(node);
    auto spinBox = std::make_unique<QSpinBox>(parent);
    showInteger(spinBox.get(), *integer, integer->GetValue(verify, true));
    spinBox->setAccessibleDescription(QString::fromUtf8(integer->GetUnit().c_str()));
    spinBox->setProperty(RowEditors::PreValue, spinBox->value());
    trackEdits(spinBox.get());
    return spinBox.release();
}

void refreshInteger(GenApi::INode *node, QWidget *editor)
{
    const GenApi::CIntegerPtr integer(node);
    if (auto *spinBox = qobject_cast<QSpinBox *>(editor))
        showInteger(spinBox, *integer, integer->GetValue(false, false));
}

void putBackInteger(QWidget *editor)
{
    const QSignalBlocker blocker(editor);
    static_cast<QSpinBox *>(editor)->setValue(editor->property(RowEditors::PreValue).toInt());
}

void connectInteger(QWidget *editor, ToolPageWidgetItem *row)
{
    QObject::connect(static_cast<QSpinBox *>(editor), &QSpinBox::editingFinished, row,
                     &ToolPageWidgetItem::onIntParamChanged);
}

// Floats

double increment(GenApi::IFloat &number)
{
    const bool isFixed = number.HasInc() && number.GetIncMode() == GenApi::fixedIncrement;
    const double step = isFixed ? NodeNumbers::singlePrecision(number.GetInc()) : 0.0;
    return step > 0.0 ? step : NodeNumbers::singlePrecision(DefaultStep);
}

QWidget *makeFloat(GenApi::INode *node, QWidget *parent, bool verify)
{
    using NodeNumbers::singlePrecision;
    const GenApi::CFloatPtr number(node);
    auto spinBox = std::make_unique<QDoubleSpinBox>(parent);
    spinBox->setDecimals(Decimals);
    const double value = singlePrecision(number->GetValue(verify, true));
    setRange(spinBox.get(), singlePrecision(number->GetMin(), -FLT_MAX), singlePrecision(number->GetMax(), FLT_MAX),
             value);
    spinBox->setSingleStep(increment(*number));
    spinBox->setValue(value);
    spinBox->setProperty(RowEditors::PreValue, static_cast<float>(spinBox->value()));
    spinBox->setAccessibleDescription(QString::fromUtf8(number->GetUnit().c_str()));
    trackEdits(spinBox.get());
    return spinBox.release();
}

void refreshFloat(GenApi::INode *node, QWidget *editor)
{
    using NodeNumbers::finite;
    auto *spinBox = qobject_cast<QDoubleSpinBox *>(editor);
    if (!spinBox)
        return;
    const GenApi::CFloatPtr number(node);
    const double minimum = finite(number->GetMin(), -DBL_MAX);
    const double maximum = finite(number->GetMax(), DBL_MAX);
    const double value = finite(number->GetValue(false, false));
    const QSignalBlocker blocker(spinBox);
    setRange(spinBox, minimum, maximum, value);
    spinBox->setSingleStep(DefaultStep);
    spinBox->setValue(value);
}

void putBackFloat(QWidget *editor)
{
    const QSignalBlocker blocker(editor);
    const float value = editor->property(RowEditors::PreValue).toFloat();
    static_cast<QDoubleSpinBox *>(editor)->setValue(static_cast<double>(value));
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

/// Changes only what differs, since the list may be open. Entries are unique.
void showEntries(QComboBox *comboBox, const QStringList &entries)
{
    for (int index = comboBox->count() - 1; index >= 0; --index) {
        if (!entries.contains(comboBox->itemText(index)))
            comboBox->removeItem(index);
    }
    for (int index = 0; index < entries.size(); ++index) {
        const int former = comboBox->findText(entries.at(index), Qt::MatchExactly | Qt::MatchCaseSensitive);
        if (former == index)
            continue;
        if (former >= 0)
            comboBox->removeItem(former);
        comboBox->insertItem(index, entries.at(index));
    }
}

void showEnumeration(QComboBox *comboBox, GenApi::IEnumeration &enumeration)
{
    GenApi::StringList_t symbolics;
    enumeration.GetSymbolics(symbolics);
    const QString current = QString::fromUtf8(enumeration.ToString().c_str());
    QStringList entries;
    for (const GenICam::gcstring &symbolic : symbolics)
        entries.append(QString::fromUtf8(symbolic.c_str()));
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

bool RowEditors::tracksInput(const QWidget *editor)
{
    return editor->property(Edited).isValid();
}

bool RowEditors::hasEnteredValue(const QWidget *editor)
{
    return editor->property(Edited).toBool();
}

bool RowEditors::hasInput(const QWidget *editor)
{
    return hasEnteredValue(editor) || (tracksInput(editor) && editor->findChild<QLineEdit *>()->isModified());
}

void RowEditors::forgetInput(QWidget *editor)
{
    if (!tracksInput(editor))
        return;
    editor->setProperty(Edited, false);
    editor->findChild<QLineEdit *>()->setModified(false);
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
