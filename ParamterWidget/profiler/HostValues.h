// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <QString>

#include "ParamterWnd/HostCore.h"

struct PanelContext;

/// Values of the panel's device and its display settings, by name and as text, as the host keeps them.
namespace HostValues {

/// The device's text of a feature; `otherwise` when the host cannot read it.
QString readNode(const PanelContext &context, const char *feature, const QString &otherwise = {});
void writeNode(const PanelContext &context, const char *feature, const QString &value);

QString readSetting(const PanelContext &context, HostCore::CAM_INFO item);
void writeSetting(const PanelContext &context, HostCore::CAM_INFO item, const QString &value);

/// The finite number that a text stands for, or nothing.
std::optional<double> number(const QString &text);
/// The same; `ifEmpty` for an empty text.
std::optional<double> number(const QString &text, double ifEmpty);
/// Fixed notation with six decimals.
QString text(double number);

} // namespace HostValues
