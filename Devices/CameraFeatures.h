// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>

#include <QString>

#include <GenApi/GenApi.h>

/// Features that a camera need not have are written if they can be.
void writeIfWritable(GenApi::INodeMap &map, const char *name, const QString &text);

/// Bytes of a frame. Throws a GenICam exception when the camera does not tell.
int64_t payloadSize(GenApi::INodeMap &map);

/// After which silence a camera and its host take each other for gone; 0 when the camera does not tell.
std::chrono::milliseconds heartbeatOf(GenApi::INodeMap &map);
