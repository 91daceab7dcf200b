// SPDX-License-Identifier: MIT
#include "Features/ValueKind.h"

namespace {

// All kinds

GenApi::IValue &valueOf(GenApi::INode *node)
{
    const GenApi::CValuePtr value(node);
    if (!value.IsValid())
        throw INVALID_ARGUMENT_EXCEPTION("Feature '%s' has no value", node->GetName().c_str());
    return *value;
}

QString standardText(GenApi::INode *node)
{
    return QString::fromUtf8(valueOf(node).ToString().c_str());
}

void writeStandardText(GenApi::INode *node, const QString &text)
{
    valueOf(node).FromString(text.toUtf8().constData());
}

template <class Pointer, class Type>
QVariant readAs(GenApi::INode *node)
{
    return QVariant::fromValue<Type>(Pointer(node)->GetValue());
}

template <class Pointer, class Type>
QVariant readFreshAs(GenApi::INode *node)
{
    return QVariant::fromValue<Type>(Pointer(node)->GetValue(true, true));
}

// Numbers

bool writeInteger(GenApi::INode *node, const QVariant &value)
{
    GenApi::CIntegerPtr(node)->SetValue(value.toLongLong(), true);
    return true;
}

bool writeFloat(GenApi::INode *node, const QVariant &value)
{
    GenApi::CFloatPtr(node)->SetValue(static_cast<double>(value.toFloat()), false);
    return true;
}

// Booleans

bool writeBoolean(GenApi::INode *node, const QVariant &value)
{
    GenApi::CBooleanPtr(node)->SetValue(value.toBool(), true);
    return true;
}

QString booleanText(GenApi::INode *node)
{
    return GenApi::CBooleanPtr(node)->GetValue() ? QStringLiteral("True") : QStringLiteral("False");
}

void writeBooleanText(GenApi::INode *node, const QString &text)
{
    GenApi::CBooleanPtr(node)->FromString(text.toLower().toUtf8().constData());
}

// Strings

QVariant readString(GenApi::INode *node)
{
    return QString::fromUtf8(GenApi::CStringPtr(node)->GetValue().c_str());
}

QVariant readFreshString(GenApi::INode *node)
{
    return QString::fromUtf8(GenApi::CStringPtr(node)->GetValue(true, true).c_str());
}

bool writeString(GenApi::INode *node, const QVariant &value)
{
    GenApi::CStringPtr(node)->SetValue(value.toString().toUtf8().constData(), true);
    return true;
}

// Enumerations

QVariant readEntry(GenApi::INode *node)
{
    const GenApi::CEnumEntryPtr entry(GenApi::CEnumerationPtr(node)->GetCurrentEntry());
    return entry.IsValid() ? QVariant(QString::fromUtf8(entry->GetSymbolic().c_str())) : QVariant();
}

bool writeEntry(GenApi::INode *node, const QVariant &symbolic)
{
    const GenApi::CEnumerationPtr enumeration(node);
    const GenApi::CEnumEntryPtr entry(enumeration->GetEntryByName(symbolic.toString().toUtf8().constData()));
    if (!entry.IsValid())
        return false;
    enumeration->SetIntValue(entry->GetValue(), true);
    return true;
}

QVariant refreshEntry(GenApi::INode *node)
{
    GenApi::CEnumerationPtr(node)->GetIntValue(true, true);
    return {};
}

void writeEntryText(GenApi::INode *node, const QString &text)
{
    const GenApi::CEnumerationPtr enumeration(node);
    const GenICam::gcstring symbolic(text.toUtf8().constData());
    bool isNumber = false;
    const qlonglong number = text.toLongLong(&isNumber);
    if (isNumber && !enumeration->GetEntryByName(symbolic))
        enumeration->SetIntValue(number);
    else
        enumeration->FromString(symbolic);
}

// Commands, and what has no value at all

QVariant readNothing(GenApi::INode *)
{
    return {};
}

bool writeNothing(GenApi::INode *, const QVariant &)
{
    return false;
}

void executeText(GenApi::INode *node, const QString &text)
{
    if (text.isEmpty())
        GenApi::CCommandPtr(node)->Execute();
    else
        writeStandardText(node, text);
}

constexpr ValueKind Kinds[] = {
    {GenApi::intfIInteger, true, readAs<GenApi::CIntegerPtr, qint64>, writeInteger,
     readFreshAs<GenApi::CIntegerPtr, qint64>, standardText, writeStandardText},
    {GenApi::intfIFloat, true, readAs<GenApi::CFloatPtr, double>, writeFloat, readFreshAs<GenApi::CFloatPtr, double>,
     standardText, writeStandardText},
    {GenApi::intfIBoolean, true, readAs<GenApi::CBooleanPtr, bool>, writeBoolean,
     readFreshAs<GenApi::CBooleanPtr, bool>, booleanText, writeBooleanText},
    {GenApi::intfIString, true, readString, writeString, readFreshString, standardText, writeStandardText},
    {GenApi::intfIEnumeration, false, readEntry, writeEntry, refreshEntry, standardText, writeEntryText},
    {GenApi::intfICommand, false, readNothing, writeNothing, readNothing, standardText, executeText},
};

constexpr ValueKind Other = {GenApi::intfIValue, false,        readNothing,      writeNothing,
                             readNothing,        standardText, writeStandardText};

} // namespace

const ValueKind &valueKind(GenApi::INode *node)
{
    if (!node)
        throw INVALID_ARGUMENT_EXCEPTION("There is no feature");
    const GenApi::EInterfaceType type = node->GetPrincipalInterfaceType();
    for (const ValueKind &kind : Kinds) {
        if (kind.type == type)
            return kind;
    }
    return Other;
}

QStringList entryNames(GenApi::IEnumeration &enumeration)
{
    GenApi::StringList_t symbolics;
    enumeration.GetSymbolics(symbolics);
    QStringList names;
    for (const GenICam::gcstring &symbolic : symbolics)
        names.append(QString::fromUtf8(symbolic.c_str()));
    return names;
}
