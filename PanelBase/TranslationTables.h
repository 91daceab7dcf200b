// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QString>

/// Chinese display text of an enumeration entry to the symbolic name of the entry.
extern const QMap<QString, QString> zhTransEnMap;

/// Show type of a structured-light camera's 2D images to its number, 1 to 8.
extern const QMap<QString, int> imgShowTypeMap;
