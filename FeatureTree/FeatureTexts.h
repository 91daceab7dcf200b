// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>

/// Reads a table of translated feature texts: UTF-8 lines `text>translation`, one pair a line. A line without ">"
/// or with more than one is skipped, a later line replaces an earlier one of the same text, nothing is trimmed but
/// the line feed. A file that cannot be read gives an empty table.
QHash<QString, QString> readFeatureTexts(const QString &path);
