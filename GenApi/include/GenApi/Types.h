// SPDX-License-Identifier: MIT
#pragma once

#include <Base/GCStringVector.h>
#include <Base/GCTypes.h>

namespace GENAPI_NAMESPACE {

/// How a node can be accessed now: not implemented, not available, write-only, read-only, read-write.
typedef enum _EAccessMode { NI, NA, WO, RO, RW, _UndefinedAccesMode, _CycleDetectAccesMode } EAccessMode;

/// For whom a feature is meant.
typedef enum _EVisibility { Beginner = 0, Expert = 1, Guru = 2, Invisible = 3, _UndefinedVisibility = 99 } EVisibility;

/// How a number is best shown and edited.
typedef enum _ERepresentation {
    Linear,
    Logarithmic,
    Boolean,
    PureNumber,
    HexNumber,
    IPV4Address,
    MACAddress,
    _UndefinedRepresentation
} ERepresentation;

typedef enum _EIncMode { noIncrement, fixedIncrement, listIncrement } EIncMode;

typedef enum _ENameSpace { Custom, Standard, _UndefinedNameSpace } ENameSpace;

/// What a read or write does with the cached value.
typedef enum _ECachingMode { NoCache, WriteThrough, WriteAround, _UndefinedCachingMode } ECachingMode;

typedef enum _EDisplayNotation { fnAutomatic, fnFixed, fnScientific, _UndefinedEDisplayNotation } EDisplayNotation;

/// Which nodes INode::GetChildren() gives.
typedef enum _ELinkType {
    ctParentNodes,
    ctReadingChildren,
    ctWritingChildren,
    ctInvalidatingChildren,
    ctDependingNodes,
    ctTerminalNodes
} ELinkType;

typedef enum _EYesNo { No = 0, Yes = 1, _UndefinedYesNo = 2 } EYesNo;

typedef enum _EStandardNameSpace { None, GEV, IIDC, CL, USB, _UndefinedStandardNameSpace } EStandardNameSpace;

typedef enum _EEndianess { BigEndian, LittleEndian, _UndefinedEndian } EEndianess;

typedef enum _ESign { Signed, Unsigned, _UndefinedSign } ESign;

typedef enum _ESlope { Increasing, Decreasing, Varying, Automatic, _UndefinedESlope } ESlope;

/// The one interface under which a node is best used.
typedef enum _EInterfaceType {
    intfIValue,
    intfIBase,
    intfIInteger,
    intfIBoolean,
    intfICommand,
    intfIFloat,
    intfIString,
    intfIRegister,
    intfICategory,
    intfIEnumeration,
    intfIEnumEntry,
    intfIPort
} EInterfaceType;

typedef enum _ECallbackType { cbPostInsideLock = 1, cbPostOutsideLock = 2 } ECallbackType;

typedef intptr_t CallbackHandleType;

using GENICAM_NAMESPACE::gcstring;
using GENICAM_NAMESPACE::gcstring_vector;
using GENICAM_NAMESPACE::Version_t;
typedef GENICAM_NAMESPACE::gcstring_vector StringList_t;

} // namespace GENAPI_NAMESPACE
