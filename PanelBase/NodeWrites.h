// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>

#include <GenApi/GenApi.h>

class DeviceReading;

/// How the panel writes nodes that it holds. Of each write, whatever comes of it, `reading` tells once by its signal
/// written(): the value as settings files hold it, empty for a command, and what the device said when it refused.
/// Without a `reading` nobody is told. All pass on what the node throws, as they do for a node that is null or of
/// another kind. Writes by name go through the host, which knows of them itself.
namespace NodeWrites {

/// As ValueKind::write(); nothing is told where there was nothing to write.
bool writeValue(DeviceReading *reading, GenApi::INode *node, const QVariant &value);
/// In double precision, and verified.
void writeReal(DeviceReading *reading, GenApi::INode *node, double number);
/// Verified: a name that is no entry is refused.
void writeEntry(DeviceReading *reading, GenApi::INode *node, const QString &symbolic);
void writeEntry(DeviceReading *reading, GenApi::INode *node, int64_t number);
void execute(DeviceReading *reading, GenApi::INode *node);

} // namespace NodeWrites
