// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <GenApi/GenApi.h>

class DeviceReading;

/// Single accesses to features of a camera by name, for user actions rather than loops: every call asks the
/// host for the camera's node map and looks the node up again. GUI thread only.
///
/// Writes with a `reading` are told by it (NodeWrites).
///
/// All return 0 on success, -1 when the host has no node map for the device, and other negative codes as said
/// at the function. Nothing is logged and no exception leaves them.

/// Selects the entry with the integer value `value` and reads it back. -4: no such node; -6: no enumeration;
/// -5: the node lacks the interface of its type; -7: GenICam refused.
int SetCameraEnumNodeValue(QString device, QString nodeName, int value);
int SetCameraEnumNodeValue(DeviceReading *reading, QString device, QString nodeName, int value);

/// Starts a command without waiting for its end. Codes as SetCameraEnumNodeValue().
int ExecCameraCommandNode(QString device, QString nodeName);
int ExecCameraCommandNode(DeviceReading *reading, QString device, QString nodeName);

/// Reads a float feature in its own unit; `inc` is 0.001 for a feature without increment. -2: no such node;
/// -4: no float; -3: not readable; -5: GenICam refused, with the outputs read so far written.
int GetCamerFloatNodeValue(QString device, QString nodeName, float &value, float &min, float &max, float &inc);

/// Reads an integer feature, truncated to int. -2: no such node; -3: not readable; -4: GenICam refused, with the
/// outputs read so far written. A node of another type gives 0 and leaves the outputs as they were.
int GetCameraIntNodeInfo(QString device, QString nodeName, int &value, int &min, int &max, int &inc);

/// What GetCameraIntNodeInfo() reads, on top of what is here.
struct IntegerInfo
{
    int value = 0;
    int minimum = 0;
    int maximum = 0;
    int increment = 1;
};

/// Writes an integer feature with verification. -2: no such node; -3: not writable; -4: GenICam refused.
/// A node of another type gives 0 and is not written.
int SetCameraIntNodeValue(QString device, QString nodeName, int value);
int SetCameraIntNodeValue(DeviceReading *reading, QString device, QString nodeName, int value);

/// The node that stands for one of the features "ExposureTime", "GammaEnable", "Gain", "TriggerDelay" and
/// "AcquisitionFrameRate" under the name that this camera gives it (plain, or an Abs or Raw variant); null when
/// it has none, and for every other name. `nodeMap` must not be null.
GenApi::INode *FindNodeByLogicalName(const QString &name, GenApi::INodeMap *nodeMap);
