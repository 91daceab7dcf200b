// SPDX-License-Identifier: MIT
#include "ParamterWidget/FeatureDescription.h"

#include <QScopeGuard>

#include "PanelBase/DeviceReading.h"
#include "PanelBase/Guarded.h"

namespace {

QString text(const GenICam::gcstring &value)
{
    return QString::fromUtf8(value.c_str()).toHtmlEscaped();
}

QString number(double value)
{
    return QStringLiteral("%1").arg(value, 0, 'g', -1);
}

/// A line "Label: value" with the value in the colour of device data; the label is in English in every language.
QString line(const char *label, const QString &value)
{
    return QStringLiteral("%1:<span style='color: green;'> %2</span><br>").arg(QLatin1String(label), value);
}

QString propertyText(GenApi::INode *node, const char *name)
{
    GenICam::gcstring value;
    GenICam::gcstring attribute;
    return node->GetProperty(name, value, attribute) ? text(value) : QString();
}

QString unitLine(const GenICam::gcstring &unit)
{
    return unit.empty() ? QString() : line("Unit", text(unit));
}

QString nameSpaceText(GenApi::ENameSpace nameSpace)
{
    switch (nameSpace) {
    case GenApi::Custom:
        return QStringLiteral("Custom");
    case GenApi::Standard:
        return QStringLiteral("Standard");
    default:
        return QStringLiteral("_UndefinedNameSpace");
    }
}

void appendHead(QString &html, GenApi::INode *node)
{
    html += QStringLiteral("<span style='color: green;'>%1</span><br>%2<br><br>")
                .arg(text(node->GetName()), text(node->GetDescription()));
    for (const char *property : {"NodeType", "NameSpace", "Visibility", "Streamable"})
        html += line(property, propertyText(node, property));
}

void appendInteger(QString &html, const GenApi::CIntegerPtr &integer)
{
    const GenApi::ERepresentation representation = integer->GetRepresentation();
    if (representation != GenApi::Linear && representation != GenApi::PureNumber)
        return;
    html += line("Min", QString::number(integer->GetMin()));
    html += line("Max", QString::number(integer->GetMax()));
    html += line("Inc", QString::number(integer->GetInc()));
    html += unitLine(integer->GetUnit());
}

void appendFloat(QString &html, const GenApi::CFloatPtr &real)
{
    html += line("Min", number(real->GetMin()));
    html += line("Max", number(real->GetMax()));
    html += unitLine(real->GetUnit());
}

void appendEntry(QString &html, GenApi::IEnumEntry *entry)
{
    GenApi::INode *const node = entry->GetNode();
    html += QStringLiteral("<br><span style='color: green;'> %1</span><br>").arg(text(node->GetDisplayName()));
    html += line("Description", text(node->GetDescription()));
    html += line("Enum Entry Name", text(entry->GetSymbolic()));
    html += line("Enum Entry Value", number(entry->GetNumericValue()));
    html += line("NameSpace", nameSpaceText(node->GetNameSpace()));
}

void appendEnumeration(QString &html, const GenApi::CEnumerationPtr &enumeration)
{
    GenApi::StringList_t symbolics;
    enumeration->GetSymbolics(symbolics);
    for (const GenICam::gcstring &symbolic : symbolics) {
        if (GenApi::IEnumEntry *const entry = enumeration->GetEntryByName(symbolic))
            appendEntry(html, entry);
    }
}

void appendValueRange(QString &html, GenApi::INode *node)
{
    switch (node->GetPrincipalInterfaceType()) {
    case GenApi::intfIInteger:
        return appendInteger(html, node);
    case GenApi::intfIFloat:
        return appendFloat(html, node);
    case GenApi::intfIEnumeration:
        return appendEnumeration(html, node);
    default:
        return;
    }
}

} // namespace

QString featureDescription(GenApi::INode *node, DeviceReading *reading)
{
    QString html;
    errorOf([&] {
        if (!reading || !reading->isSilent()) {
            appendHead(html, node);
            reading ? reading->read(node, [&] { appendValueRange(html, node); }) : appendValueRange(html, node);
            return;
        }
        // The map may be locked by a read that takes its time.
        GenApi::CLock &lock = node->GetNodeMap()->GetLock();
        if (!lock.TryLock())
            return;
        const auto unlock = qScopeGuard([&lock] { lock.Unlock(); });
        appendHead(html, node);
    });
    return html;
}
