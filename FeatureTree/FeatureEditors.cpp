// SPDX-License-Identifier: MIT
#include "FeatureTree/FeatureEditors.h"

#include <cmath>
#include <limits>

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>

#include "FeatureTree/AddressText.h"
#include "FeatureTree/FeatureEditDelegate.h"
#include "FeatureTree/IntegerSpinBox.h"
#include "PanelBase/StyleSheets.h"

using FeatureKinds::EditorKind;

namespace FeatureEditors {
namespace {

constexpr QLatin1String MacMask("HH:HH:HH:HH:HH:HH;_");
constexpr QLatin1String Ipv4Mask("000.000.000.000;_");
constexpr QLatin1String HexMask("HHHHHHHHHHHHHHHH");
constexpr double DefaultFloatStep = 0.1;
/// Property of lines and lists: the text that they were filled with; none after a choice.
constexpr char FilledText[] = "filledText";

QWidget *makeLine(QLatin1String mask, QWidget *parent)
{
    auto *line = new QLineEdit(parent);
    line->setInputMask(mask);
    return line;
}

QWidget *makeFloatBox(int decimals, QWidget *parent)
{
    auto *box = new RealField(parent);
    box->setDecimals(decimals);
    return box;
}

QWidget *makeBooleanList(QWidget *parent)
{
    auto *list = new QComboBox(parent);
    list->addItems({FeatureEditDelegate::tr("False"), FeatureEditDelegate::tr("True")});
    return list;
}

QWidget *makeButton(QWidget *parent)
{
    auto *button = new QPushButton(QStringLiteral("Execute"), parent);
    button->setStyleSheet(StyleSheets::PlainButton);
    button->setAutoDefault(true); // Enter presses it, as Space does
    return button;
}

QWidget *makeEntryList(QWidget *parent)
{
    auto *list = new QComboBox(parent);
    list->setStyleSheet(StyleSheets::EnumerationList);
    return list;
}

/// Limits may be infinite or no number at all, which a spin box cannot hold.
double finite(double limit, double otherwise)
{
    return std::isfinite(limit) ? limit : otherwise;
}

void fillAddress(QLineEdit *line, EditorKind kind, GenApi::INode *node)
{
    const qint64 value = GenApi::CIntegerPtr(node)->GetValue();
    line->setText(kind == EditorKind::MacMask ? MACIntegerToString(static_cast<unsigned long long>(value))
                                              : IPV4IntegerToString(static_cast<unsigned int>(value)));
}

/// The mask takes digits only, so the text comes without "0x".
void fillHex(QLineEdit *line, GenApi::INode *node)
{
    line->setText(QString::number(static_cast<quint64>(GenApi::CIntegerPtr(node)->GetValue()), 16));
}

void fillInteger(IntegerSpinBox *box, GenApi::INode *node)
{
    const GenApi::CIntegerPtr integer(node);
    const qint64 minimum = integer->GetMin();
    const qint64 maximum = integer->GetMax();
    const qint64 increment = integer->GetIncMode() == GenApi::noIncrement ? 0 : integer->GetInc();
    box->setSteps(increment != 0 ? static_cast<double>(increment) : 1.0, increment);
    const qint64 value = integer->GetValue();
    box->refresh(minimum, maximum, value, static_cast<double>(value));
}

void fillFloat(RealField *box, GenApi::INode *node)
{
    constexpr double Largest = std::numeric_limits<double>::max();
    const GenApi::CFloatPtr number(node);
    const double minimum = finite(number->GetMin(), -Largest);
    const double maximum = finite(number->GetMax(), Largest);
    const double increment = number->HasInc() ? number->GetInc() : 0.0;
    const bool isFixed = number->GetIncMode() == GenApi::fixedIncrement;
    box->setSteps(number->HasInc() ? increment : DefaultFloatStep, isFixed ? increment : 0.0);
    const double value = number->GetValue();
    box->refresh(minimum, maximum, value, finite(value, 0.0));
}

QStringList entryTexts(const GenApi::CEnumerationPtr &enumeration)
{
    GenICam::gcstring_vector symbolics;
    enumeration->GetSymbolics(symbolics);
    QStringList texts;
    for (const GenICam::gcstring &symbolic : symbolics) {
        if (enumeration->GetEntryByName(symbolic))
            texts.append(QString::fromUtf8(symbolic.c_str()));
    }
    return texts;
}

void fillEntries(QComboBox *list, GenApi::INode *node)
{
    const GenApi::CEnumerationPtr enumeration(node);
    list->clear();
    list->addItems(entryTexts(enumeration));
    const GenApi::CEnumEntryPtr entry(enumeration->GetCurrentEntry());
    if (entry.IsValid())
        list->setCurrentIndex(
            list->findText(QString::fromUtf8(entry->GetSymbolic().c_str()), Qt::MatchExactly | Qt::MatchCaseSensitive));
}

/// Nothing for text that is no number inside the limits.
template <class Field>
QVariant boxValue(const Field *box)
{
    const auto entered = box ? box->entered() : std::nullopt;
    return entered ? QVariant(*entered) : QVariant();
}

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

/// What lines and lists show.
void fillText(QWidget *editor, EditorKind kind, GenApi::INode *node)
{
    auto *line = qobject_cast<QLineEdit *>(editor);
    auto *list = qobject_cast<QComboBox *>(editor);
    if (line && (kind == EditorKind::MacMask || kind == EditorKind::Ipv4Mask))
        fillAddress(line, kind, node);
    else if (line && kind == EditorKind::HexMask)
        fillHex(line, node);
    else if (line && kind == EditorKind::Text)
        line->setText(QString::fromUtf8(GenApi::CStringPtr(node)->GetValue().c_str()));
    else if (list && kind == EditorKind::BooleanList)
        list->setCurrentIndex(GenApi::CBooleanPtr(node)->GetValue() ? 1 : 0);
    else if (list && kind == EditorKind::EntryList)
        fillEntries(list, node);
    forgetInput(editor);
}

/// All 64 bits, so that the highest one survives as the sign.
QVariant hexValue(const QString &digits)
{
    bool isNumber = false;
    const auto value = static_cast<qint64>(digits.toULongLong(&isNumber, 16));
    return isNumber ? QVariant(value) : QVariant();
}

QWidget *makeEditor(EditorKind kind, const QString &name, QWidget *parent)
{
    switch (kind) {
    case EditorKind::MacMask:
        return makeLine(MacMask, parent);
    case EditorKind::Ipv4Mask:
        return makeLine(Ipv4Mask, parent);
    case EditorKind::HexMask:
        return makeLine(HexMask, parent);
    case EditorKind::IntegerBox:
        return new IntegerSpinBox(parent);
    case EditorKind::BooleanList:
        return makeBooleanList(parent);
    case EditorKind::CommandButton:
        return makeButton(parent);
    case EditorKind::FloatBox:
        return makeFloatBox(FeatureKinds::floatDecimals(name), parent);
    case EditorKind::Text:
        return new QLineEdit(parent);
    case EditorKind::EntryList:
        return makeEntryList(parent);
    case EditorKind::None:
        break;
    }
    return nullptr;
}

} // namespace

QWidget *make(EditorKind kind, const QString &name, QWidget *parent)
{
    QWidget *editor = makeEditor(kind, name, parent);
    if (editor)
        forgetInput(editor);
    return editor;
}

void fill(QWidget *editor, EditorKind kind, GenApi::INode *node)
{
    const QSignalBlocker blocker(editor);
    auto *integers = qobject_cast<IntegerSpinBox *>(editor);
    auto *reals = dynamic_cast<RealField *>(editor);
    if (integers && kind == EditorKind::IntegerBox)
        fillInteger(integers, node);
    else if (reals && kind == EditorKind::FloatBox)
        fillFloat(reals, node);
    else if (!hasInput(editor) && !isOpenList(editor))
        fillText(editor, kind, node);
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

QString refusal(QWidget *editor, EditorKind kind)
{
    if (const NumberInput *input = NumberInput::of(editor))
        return input->refusal();
    const bool isTaken = kind != EditorKind::HexMask || value(editor, kind).isValid();
    return isTaken ? QString() : QStringLiteral("\"%1\" is no hexadecimal number").arg(shownText(editor));
}

QVariant value(QWidget *editor, EditorKind kind)
{
    auto *line = qobject_cast<QLineEdit *>(editor);
    auto *list = qobject_cast<QComboBox *>(editor);
    switch (kind) {
    case EditorKind::HexMask:
        return line ? hexValue(line->text()) : QVariant();
    case EditorKind::IntegerBox:
        return boxValue(qobject_cast<IntegerSpinBox *>(editor));
    case EditorKind::FloatBox:
        return boxValue(dynamic_cast<RealField *>(editor));
    case EditorKind::BooleanList:
        return list ? QVariant(list->currentIndex() != 0) : QVariant();
    case EditorKind::EntryList:
        return list ? QVariant(list->currentText()) : QVariant();
    case EditorKind::Text:
    case EditorKind::None:
        return line ? QVariant(line->text()) : QVariant();
    case EditorKind::MacMask:
    case EditorKind::Ipv4Mask:
    case EditorKind::CommandButton:
        break;
    }
    return {};
}

} // namespace FeatureEditors
