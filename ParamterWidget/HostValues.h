// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <QString>

#include "ParamterWidget/NodeAccess.h"
#include "ParamterWnd/HostCore.h"

struct PanelContext;

/// Values of the panel's device and its display settings, by name and as text, as the host keeps them. Nothing throws:
/// an exception of the host is logged, and leaves a value unread or unwritten.
namespace HostValues {

/// The device's text of a feature; `otherwise` when the host cannot read it or the device does not answer.
QString readNode(const PanelContext &context, const char *feature, const QString &otherwise = {});
/// The same, or nothing when the host cannot read it or gives an empty text: a control stays as it is then.
std::optional<QString> knownText(const PanelContext &context, const char *feature);
/// False when the host refuses, which it reports by itself, or throws, or the device does not answer, which is tried
/// once in a turn of the event loop.
bool writeNode(PanelContext &context, const char *feature, const QString &value);

/// Value and limits of an integer feature; zeros, and `value`, for one that cannot be read, or of a silent device.
IntegerInfo readInteger(const PanelContext &context, const char *feature, int value = 0);

QString readSetting(const PanelContext &context, HostCore::CAM_INFO item);
void writeSetting(PanelContext &context, HostCore::CAM_INFO item, const QString &value);

/// The finite number that the device has, or that the host keeps, as text; of `otherwise` when the host cannot read the
/// feature, or keeps nothing. Nothing for an empty text, and for one that is no number, which is logged.
std::optional<double> readNumber(const PanelContext &context, const char *feature, const QString &otherwise = {});
std::optional<double> readNumber(const PanelContext &context, HostCore::CAM_INFO item, const QString &otherwise = {});
/// Logs a value of the device or the host that is not used, once per panel.
void reportUnusable(const PanelContext &context, const QString &name, const QString &value);
/// Fixed notation with six decimals.
QString text(double number);

} // namespace HostValues
