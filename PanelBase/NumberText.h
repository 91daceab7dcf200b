// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <QLocale>
#include <QString>

/// Numbers as people type them. Both "." and "," are decimal signs, whatever the locale; signs between groups of digits
/// are guessed nowhere, so "1,234.5" is no number. Integers take neither.
namespace NumberText {

/// The number, as exactly as its type allows; nothing if the text is none, or too large.
template <class Number>
std::optional<Number> parse(const QString &text, const QLocale &locale);
template <>
std::optional<double> parse(const QString &text, const QLocale &locale);
template <>
std::optional<qint64> parse(const QString &text, const QLocale &locale);

/// A limit for a log line.
QString limit(double number);
QString limit(qint64 number);

} // namespace NumberText
