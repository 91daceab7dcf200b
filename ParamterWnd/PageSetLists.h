// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include "ParamterWidget/PageSet.h"

class QObject;

/// The dynamic properties of the exported window by which a host gives cameras other pages than those of area-scan
/// cameras: lists of type codes (QStringList).
namespace PageSetLists {

/// That of the first list which holds the code, area-scan if none does; what is wrong in a list does not count.
PageSet pageSetOf(const QObject &window, const QString &typeCode);
bool isList(const QByteArray &property);
/// One line for each thing that is wrong in a list.
QStringList faults(const QObject &window, const QByteArray &property);

} // namespace PageSetLists
