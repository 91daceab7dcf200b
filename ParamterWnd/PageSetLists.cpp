// SPDX-License-Identifier: MIT
#include "ParamterWnd/PageSetLists.h"

#include <algorithm>
#include <iterator>

#include <QObject>
#include <QVariant>

namespace {

struct List
{
    const char *property;
    PageSet pageSet;
};

constexpr List Lists[] = {{"profilerTypeCodes", PageSet::Profiler},
                          {"structuredLightTypeCodes", PageSet::StructuredLight}};

/// Cameras of this type have the attribute tab only.
const QLatin1String WithoutPages("4");

bool isUsable(const QString &typeCode)
{
    return !typeCode.isEmpty() && typeCode != WithoutPages;
}

/// Empty for a property of another type.
QStringList codes(const QObject &window, const char *property)
{
    const QVariant list = window.property(property);
    return list.userType() == QMetaType::QStringList ? list.toStringList() : QStringList();
}

QString fault(const QObject &window, const QByteArray &property, const QString &typeCode)
{
    const QString name = QString::fromLatin1(property);
    if (typeCode.isEmpty())
        return QStringLiteral("%1 holds an empty type code, which no camera has").arg(name);
    if (typeCode == WithoutPages)
        return QStringLiteral("%1 holds type code %2, whose cameras have the attribute tab only").arg(name, typeCode);
    for (const List &list : Lists) {
        if (list.property != property && codes(window, list.property).contains(typeCode))
            return QStringLiteral("%1 and %2 hold type code %3, which counts in %4")
                .arg(name, QLatin1String(list.property), typeCode, QLatin1String(Lists[0].property));
    }
    return {};
}

} // namespace

PageSet PageSetLists::pageSetOf(const QObject &window, const QString &typeCode)
{
    const auto *const list = std::find_if(std::begin(Lists), std::end(Lists), [&](const List &one) {
        return isUsable(typeCode) && codes(window, one.property).contains(typeCode);
    });
    return list == std::end(Lists) ? PageSet::AreaScan : list->pageSet;
}

bool PageSetLists::isList(const QByteArray &property)
{
    return std::any_of(std::begin(Lists), std::end(Lists), [&](const List &list) { return list.property == property; });
}

QStringList PageSetLists::faults(const QObject &window, const QByteArray &property)
{
    const QVariant list = window.property(property.constData());
    if (list.isValid() && list.userType() != QMetaType::QStringList)
        return {QStringLiteral("%1 is no list of strings (QStringList) but %2: it is not used")
                    .arg(QString::fromLatin1(property), QString::fromLatin1(list.typeName()))};
    QStringList lines;
    for (const QString &typeCode : codes(window, property.constData()))
        lines << fault(window, property, typeCode);
    lines.removeAll(QString());
    lines.removeDuplicates();
    return lines;
}
