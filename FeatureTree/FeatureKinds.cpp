// SPDX-License-Identifier: MIT
#include "FeatureTree/FeatureKinds.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include "FeatureTree/AddressText.h"
#include "FeatureTree/FeatureEditDelegate.h"
#include "FeatureTree/IntegerSpinBox.h"
#include "Features/ValueKind.h"
#include "PanelBase/StyleSheets.h"

namespace FeatureKinds {
namespace {

// Features that are known by name; names are compared exactly.

constexpr const char *AddressNodes[] = {
    "GevCurrentIPAddress",
    "GevCurrentSubnetMask",
    "GevCurrentDefaultGateway",
    "GevPersistentIPAddress",
    "GevPersistentSubnetMask",
    "GevPersistentDefaultGateway",
    "GevPrimaryApplicationIPAddress",
};
constexpr const char *MacNodes[] = {"GevMACAddress"};
/// Shown from a read that bypasses the node cache.
constexpr const char *FreshFloats[] = {"AcquisitionLineRate", "ResultingLineRateAbs"};
/// With six digits behind the decimal point.
constexpr const char *FineFloats[] = {"SinData", "CosData"};
/// In the local 8-bit code page instead of UTF-8 while the tree is built.
constexpr const char *LocalTexts[] = {"TLPath", "TLID"};

template <size_t count>
bool contains(const char *const (&names)[count], const QString &name)
{
    return std::any_of(std::begin(names), std::end(names),
                       [&name](const char *known) { return name == QLatin1String(known); });
}

// All kinds

QVariant readValue(GenApi::INode *node)
{
    return valueKind(node).read(node);
}

/// The value in the words of `format`.
template <QVariant (*format)(const QVariant &)>
QVariant readAs(GenApi::INode *node)
{
    return format(readValue(node));
}

void fillNothing(QWidget *, GenApi::INode *) { }

QVariant noValue(const QWidget *)
{
    return {};
}

QString neverRefused(QWidget *)
{
    return {};
}

// Lines

template <QVariant (*text)(GenApi::INode *)>
void fillLine(QWidget *editor, GenApi::INode *node)
{
    if (auto *line = qobject_cast<QLineEdit *>(editor))
        line->setText(text(node).toString());
}

QVariant lineText(const QWidget *editor)
{
    const auto *line = qobject_cast<const QLineEdit *>(editor);
    return line ? QVariant(line->text()) : QVariant();
}

QWidget *makeMaskedLine(QLatin1String mask, QWidget *parent)
{
    auto *line = new QLineEdit(parent);
    line->setInputMask(mask);
    return line;
}

// Addresses

QVariant macText(const QVariant &value)
{
    return MACIntegerToString(value.toULongLong());
}

QWidget *makeMacLine(const QString &, QWidget *parent)
{
    return makeMaskedLine(QLatin1String("HH:HH:HH:HH:HH:HH;_"), parent);
}

QVariant ipv4Text(const QVariant &value)
{
    return IPV4IntegerToString(static_cast<unsigned int>(value.toLongLong()));
}

QWidget *makeIpv4Line(const QString &, QWidget *parent)
{
    return makeMaskedLine(QLatin1String("000.000.000.000;_"), parent);
}

// Hexadecimal numbers

/// What the editor shows: its mask takes no "0x".
QVariant hexDigits(const QVariant &value)
{
    return QString::number(static_cast<quint64>(value.toLongLong()), 16);
}

QVariant hexText(const QVariant &value)
{
    return QString(QStringLiteral("0x") + hexDigits(value).toString());
}

QWidget *makeHexLine(const QString &, QWidget *parent)
{
    return makeMaskedLine(QLatin1String("HHHHHHHHHHHHHHHH"), parent);
}

/// All 64 bits, so that the highest one survives as the sign.
QVariant hexValue(const QWidget *editor)
{
    bool isNumber = false;
    const auto value = static_cast<qint64>(lineText(editor).toString().toULongLong(&isNumber, 16));
    return isNumber ? QVariant(value) : QVariant();
}

QString hexRefusal(QWidget *editor)
{
    return hexValue(editor).isValid()
        ? QString()
        : QStringLiteral("\"%1\" is no hexadecimal number").arg(lineText(editor).toString());
}

// Number fields

/// Nothing for text that is no number inside the limits.
template <class Field>
QVariant enteredNumber(const QWidget *editor)
{
    const auto *field = dynamic_cast<const Field *>(editor);
    const auto entered = field ? field->entered() : std::nullopt;
    return entered ? QVariant(*entered) : QVariant();
}

QString numberRefusal(QWidget *editor)
{
    const NumberInput *input = NumberInput::of(editor);
    return input ? input->refusal() : QString();
}

QWidget *makeIntegerBox(const QString &, QWidget *parent)
{
    return new IntegerSpinBox(parent);
}

void fillIntegerBox(QWidget *editor, GenApi::INode *node)
{
    auto *box = qobject_cast<IntegerSpinBox *>(editor);
    if (!box)
        return;
    const GenApi::CIntegerPtr integer(node);
    const qint64 minimum = integer->GetMin();
    const qint64 maximum = integer->GetMax();
    const qint64 increment = integer->GetIncMode() == GenApi::noIncrement ? 0 : integer->GetInc();
    box->setSteps(increment != 0 ? static_cast<double>(increment) : 1.0, increment);
    const qint64 value = integer->GetValue();
    box->refresh(minimum, maximum, value, static_cast<double>(value));
}

QVariant shownFloat(GenApi::INode *node)
{
    const ValueKind &kind = valueKind(node);
    return contains(FreshFloats, nodeName(node)) ? kind.readFresh(node) : kind.read(node);
}

QWidget *makeFloatBox(const QString &feature, QWidget *parent)
{
    auto *box = new RealField(parent);
    box->setDecimals(contains(FineFloats, feature) ? 6 : 4);
    return box;
}

/// Limits may be infinite or no number at all, which a spin box cannot hold.
double finite(double limit, double otherwise)
{
    return std::isfinite(limit) ? limit : otherwise;
}

void fillFloatBox(QWidget *editor, GenApi::INode *node)
{
    constexpr double Largest = std::numeric_limits<double>::max();
    constexpr double DefaultStep = 0.1;
    auto *box = dynamic_cast<RealField *>(editor);
    if (!box)
        return;
    const GenApi::CFloatPtr number(node);
    const double minimum = finite(number->GetMin(), -Largest);
    const double maximum = finite(number->GetMax(), Largest);
    const double increment = number->HasInc() ? number->GetInc() : 0.0;
    const bool isFixed = number->GetIncMode() == GenApi::fixedIncrement;
    box->setSteps(number->HasInc() ? increment : DefaultStep, isFixed ? increment : 0.0);
    const double value = number->GetValue();
    box->refresh(minimum, maximum, value, finite(value, 0.0));
}

// Texts

QVariant initialText(GenApi::INode *node)
{
    return contains(LocalTexts, nodeName(node)) ? QString::fromLocal8Bit(GenApi::CStringPtr(node)->GetValue().c_str())
                                                : readValue(node);
}

QWidget *makeLine(const QString &, QWidget *parent)
{
    return new QLineEdit(parent);
}

// Lists

QVariant booleanText(const QVariant &value)
{
    return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
}

/// Words in the language of the panel: not the texts of the value, which are the same in all languages.
QWidget *makeBooleanList(const QString &, QWidget *parent)
{
    auto *list = new QComboBox(parent);
    list->addItems({FeatureEditDelegate::tr("False"), FeatureEditDelegate::tr("True")});
    return list;
}

void fillBooleanList(QWidget *editor, GenApi::INode *node)
{
    if (auto *list = qobject_cast<QComboBox *>(editor))
        list->setCurrentIndex(readValue(node).toBool() ? 1 : 0);
}

QVariant chosenBoolean(const QWidget *editor)
{
    const auto *list = qobject_cast<const QComboBox *>(editor);
    return list ? QVariant(list->currentIndex() != 0) : QVariant();
}

QWidget *makeEntryList(const QString &, QWidget *parent)
{
    auto *list = new QComboBox(parent);
    list->setStyleSheet(StyleSheets::EnumerationList);
    return list;
}

void fillEntryList(QWidget *editor, GenApi::INode *node)
{
    auto *list = qobject_cast<QComboBox *>(editor);
    if (!list)
        return;
    list->clear();
    list->addItems(entryNames(*GenApi::CEnumerationPtr(node)));
    const QVariant current = readValue(node);
    if (current.isValid())
        list->setCurrentIndex(list->findText(current.toString(), Qt::MatchExactly | Qt::MatchCaseSensitive));
}

QVariant chosenEntry(const QWidget *editor)
{
    const auto *list = qobject_cast<const QComboBox *>(editor);
    return list ? QVariant(list->currentText()) : QVariant();
}

// Commands

QVariant commandText(const QVariant &)
{
    return QStringLiteral("{Execute}");
}

QWidget *makeButton(const QString &, QWidget *parent)
{
    auto *button = new QPushButton(QStringLiteral("Execute"), parent);
    button->setStyleSheet(StyleSheets::PlainButton);
    button->setAutoDefault(true); // Enter presses it, as Space does
    return button;
}

// The table

constexpr auto NoForm = IntegerForm::Number;

constexpr EditorKind Kinds[] = {
    {GenApi::intfIInteger, NoForm, "number box", true, false, readValue, readValue, nullptr, makeIntegerBox,
     fillIntegerBox, enteredNumber<IntegerSpinBox>, numberRefusal},
    {GenApi::intfIInteger, IntegerForm::Hex, "hex field", true, false, readValue, readAs<hexText>, hexText, makeHexLine,
     fillLine<readAs<hexDigits>>, hexValue, hexRefusal},
    {GenApi::intfIInteger, IntegerForm::Ipv4, "IPv4 field", true, true, readValue, readAs<ipv4Text>, ipv4Text,
     makeIpv4Line, fillLine<readAs<ipv4Text>>, noValue, neverRefused},
    {GenApi::intfIInteger, IntegerForm::Mac, "MAC field", true, true, readValue, readAs<macText>, macText, makeMacLine,
     fillLine<readAs<macText>>, noValue, neverRefused},
    {GenApi::intfIFloat, NoForm, "float box", false, false, readValue, shownFloat, nullptr, makeFloatBox, fillFloatBox,
     enteredNumber<RealField>, numberRefusal},
    {GenApi::intfIBoolean, NoForm, "boolean", false, false, readValue, readAs<booleanText>, booleanText,
     makeBooleanList, fillBooleanList, chosenBoolean, neverRefused},
    {GenApi::intfIEnumeration, NoForm, "list", false, false, readValue, readValue, nullptr, makeEntryList,
     fillEntryList, chosenEntry, neverRefused},
    {GenApi::intfIString, NoForm, "text", false, false, initialText, readValue, nullptr, makeLine, fillLine<readValue>,
     lineText, neverRefused},
    {GenApi::intfICommand, NoForm, "button", false, false, readValue, readAs<commandText>, commandText, makeButton,
     fillNothing, noValue, neverRefused},
};

constexpr EditorKind NoEditor = {GenApi::intfIValue, NoForm,  "",      false,       false,    readValue,
                                 readValue,          nullptr, nullptr, fillNothing, lineText, neverRefused};

/// Some devices say only by the names of their addresses what these are.
IntegerForm hexForm(const QString &name)
{
    if (contains(MacNodes, name))
        return IntegerForm::Mac;
    return contains(AddressNodes, name) ? IntegerForm::Ipv4 : IntegerForm::Hex;
}

IntegerForm integerForm(GenApi::INode *node)
{
    switch (GenApi::CIntegerPtr(node)->GetRepresentation()) {
    case GenApi::IPV4Address:
        return IntegerForm::Ipv4;
    case GenApi::MACAddress:
        return IntegerForm::Mac;
    case GenApi::HexNumber:
        return hexForm(nodeName(node));
    default:
        return IntegerForm::Number;
    }
}

} // namespace

const EditorKind &editorKind(GenApi::INode *node)
{
    const GenApi::EInterfaceType type = node->GetPrincipalInterfaceType();
    const IntegerForm form = type == GenApi::intfIInteger ? integerForm(node) : NoForm;
    const auto *const kind = std::find_if(std::begin(Kinds), std::end(Kinds), [&](const EditorKind &known) {
        return known.type == type && known.form == form;
    });
    return kind == std::end(Kinds) ? NoEditor : *kind;
}

QString nodeName(const GenApi::INode *node)
{
    return QString::fromUtf8(node->GetName().c_str());
}

bool isWritable(const GenApi::INode *node)
{
    const GenApi::EAccessMode mode = node->GetAccessMode();
    return mode == GenApi::WO || mode == GenApi::RW;
}

} // namespace FeatureKinds
