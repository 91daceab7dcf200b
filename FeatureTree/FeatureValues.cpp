// SPDX-License-Identifier: MIT
#include "FeatureTree/FeatureValues.h"

#include "FeatureTree/AddressText.h"
#include "FeatureTree/FeatureKinds.h"

namespace FeatureValues {
namespace {

QVariant currentSymbolic(GenApi::INode *node)
{
    const GenApi::CEnumEntryPtr entry(GenApi::CEnumerationPtr(node)->GetCurrentEntry());
    return entry.IsValid() ? QVariant(QString::fromUtf8(entry->GetSymbolic().c_str())) : QVariant();
}

QVariant shownInteger(GenApi::INode *node)
{
    const GenApi::CIntegerPtr integer(node);
    const qint64 value = integer->GetValue();
    switch (FeatureKinds::integerForm(FeatureKinds::nodeName(node), integer->GetRepresentation())) {
    case FeatureKinds::IntegerForm::Hex:
        return QStringLiteral("0x%1").arg(static_cast<quint64>(value), 0, 16);
    case FeatureKinds::IntegerForm::Ipv4:
        return IPV4IntegerToString(static_cast<unsigned int>(value));
    case FeatureKinds::IntegerForm::Mac:
        return MACIntegerToString(static_cast<unsigned long long>(value));
    case FeatureKinds::IntegerForm::Number:
        break;
    }
    return value;
}

bool writeEntry(GenApi::INode *node, const QString &symbolic)
{
    const GenApi::CEnumerationPtr enumeration(node);
    const GenApi::CEnumEntryPtr entry(enumeration->GetEntryByName(symbolic.toUtf8().constData()));
    if (!entry.IsValid())
        return false;
    enumeration->SetIntValue(entry->GetValue(), true);
    return true;
}

} // namespace

QVariant read(GenApi::INode *node)
{
    switch (node->GetPrincipalInterfaceType()) {
    case GenApi::intfIInteger:
        return static_cast<qint64>(GenApi::CIntegerPtr(node)->GetValue());
    case GenApi::intfIBoolean:
        return GenApi::CBooleanPtr(node)->GetValue();
    case GenApi::intfIFloat:
        return GenApi::CFloatPtr(node)->GetValue();
    case GenApi::intfIString:
        return QString::fromUtf8(GenApi::CStringPtr(node)->GetValue().c_str());
    case GenApi::intfIEnumeration:
        return currentSymbolic(node);
    default:
        return {};
    }
}

QVariant shown(GenApi::INode *node)
{
    switch (node->GetPrincipalInterfaceType()) {
    case GenApi::intfIInteger:
        return shownInteger(node);
    case GenApi::intfIBoolean:
        return GenApi::CBooleanPtr(node)->GetValue() ? QStringLiteral("True") : QStringLiteral("False");
    case GenApi::intfICommand:
        return QStringLiteral("{Execute}");
    case GenApi::intfIFloat:
        if (FeatureKinds::isShownFresh(FeatureKinds::nodeName(node)))
            return GenApi::CFloatPtr(node)->GetValue(true, true);
        return read(node);
    default:
        return read(node);
    }
}

bool isPlain(GenApi::INode *node)
{
    switch (node->GetPrincipalInterfaceType()) {
    case GenApi::intfIInteger:
    case GenApi::intfIBoolean:
    case GenApi::intfIFloat:
    case GenApi::intfIString:
        return true;
    default:
        return false;
    }
}

bool write(GenApi::INode *node, const QVariant &value)
{
    switch (node->GetPrincipalInterfaceType()) {
    case GenApi::intfIInteger:
        GenApi::CIntegerPtr(node)->SetValue(value.toLongLong(), true);
        return true;
    case GenApi::intfIBoolean:
        GenApi::CBooleanPtr(node)->SetValue(value.toBool(), true);
        return true;
    case GenApi::intfIFloat:
        GenApi::CFloatPtr(node)->SetValue(static_cast<double>(value.toFloat()), false);
        return true;
    case GenApi::intfIString:
        GenApi::CStringPtr(node)->SetValue(value.toString().toUtf8().constData(), true);
        return true;
    case GenApi::intfIEnumeration:
        return writeEntry(node, value.toString());
    default:
        return false;
    }
}

void refresh(GenApi::INode *node)
{
    switch (node->GetPrincipalInterfaceType()) {
    case GenApi::intfIInteger:
        GenApi::CIntegerPtr(node)->GetValue(true, true);
        break;
    case GenApi::intfIBoolean:
        GenApi::CBooleanPtr(node)->GetValue(true, true);
        break;
    case GenApi::intfIFloat:
        GenApi::CFloatPtr(node)->GetValue(true, true);
        break;
    case GenApi::intfIString:
        GenApi::CStringPtr(node)->GetValue(true, true);
        break;
    case GenApi::intfIEnumeration:
        GenApi::CEnumerationPtr(node)->GetIntValue(true, true);
        break;
    default:
        break;
    }
}

} // namespace FeatureValues
