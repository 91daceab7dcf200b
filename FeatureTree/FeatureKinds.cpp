// SPDX-License-Identifier: MIT
#include "FeatureTree/FeatureKinds.h"

#include <algorithm>
#include <iterator>

namespace FeatureKinds {
namespace {

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
constexpr const char *FreshFloats[] = {"AcquisitionLineRate", "ResultingLineRateAbs"};
constexpr const char *LocalTexts[] = {"TLPath", "TLID"};
constexpr const char *FineFloats[] = {"SinData", "CosData"};

template <size_t count>
bool contains(const char *const (&names)[count], const QString &name)
{
    return std::any_of(std::begin(names), std::end(names),
                       [&name](const char *known) { return name == QLatin1String(known); });
}

EditorKind integerEditor(GenApi::INode *node)
{
    switch (integerForm(nodeName(node), GenApi::CIntegerPtr(node)->GetRepresentation())) {
    case IntegerForm::Hex:
        return EditorKind::HexMask;
    case IntegerForm::Ipv4:
        return EditorKind::Ipv4Mask;
    case IntegerForm::Mac:
        return EditorKind::MacMask;
    case IntegerForm::Number:
        break;
    }
    return EditorKind::IntegerBox;
}

} // namespace

IntegerForm integerForm(const QString &name, GenApi::ERepresentation representation)
{
    switch (representation) {
    case GenApi::IPV4Address:
        return IntegerForm::Ipv4;
    case GenApi::MACAddress:
        return IntegerForm::Mac;
    case GenApi::HexNumber:
        if (contains(MacNodes, name))
            return IntegerForm::Mac;
        return contains(AddressNodes, name) ? IntegerForm::Ipv4 : IntegerForm::Hex;
    default:
        return IntegerForm::Number;
    }
}

bool isShownFresh(const QString &name)
{
    return contains(FreshFloats, name);
}

bool isLocalText(const QString &name)
{
    return contains(LocalTexts, name);
}

int floatDecimals(const QString &name)
{
    return contains(FineFloats, name) ? 6 : 4;
}

EditorKind editorKind(GenApi::INode *node)
{
    switch (node->GetPrincipalInterfaceType()) {
    case GenApi::intfIInteger:
        return integerEditor(node);
    case GenApi::intfIBoolean:
        return EditorKind::BooleanList;
    case GenApi::intfICommand:
        return EditorKind::CommandButton;
    case GenApi::intfIFloat:
        return EditorKind::FloatBox;
    case GenApi::intfIString:
        return EditorKind::Text;
    case GenApi::intfIEnumeration:
        return EditorKind::EntryList;
    default:
        return EditorKind::None;
    }
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
