// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "Devices/gentl/GenTL.h"

/// What a program asks of a producer, as NEEDED(name) or OPTIONAL(name).
///
/// Optional is what has a way round: what GenTL 1.0 did not have yet, and what only tells more. Producers are known to
/// lack it or to answer GC_ERR_NOT_IMPLEMENTED; both look the same here.
#define GENTL_FUNCTIONS(NEEDED, OPTIONAL)                                                                              \
    NEEDED(GCInitLib)                                                                                                  \
    NEEDED(GCCloseLib)                                                                                                 \
    NEEDED(GCReadPort)                                                                                                 \
    NEEDED(GCWritePort)                                                                                                \
    NEEDED(GCGetPortURL)                                                                                               \
    NEEDED(GCRegisterEvent)                                                                                            \
    NEEDED(GCUnregisterEvent)                                                                                          \
    NEEDED(EventGetData)                                                                                               \
    NEEDED(EventKill)                                                                                                  \
    NEEDED(TLOpen)                                                                                                     \
    NEEDED(TLClose)                                                                                                    \
    NEEDED(TLGetNumInterfaces)                                                                                         \
    NEEDED(TLGetInterfaceID)                                                                                           \
    NEEDED(TLOpenInterface)                                                                                            \
    NEEDED(TLUpdateInterfaceList)                                                                                      \
    NEEDED(IFClose)                                                                                                    \
    NEEDED(IFGetNumDevices)                                                                                            \
    NEEDED(IFGetDeviceID)                                                                                              \
    NEEDED(IFUpdateDeviceList)                                                                                         \
    NEEDED(IFGetDeviceInfo)                                                                                            \
    NEEDED(IFOpenDevice)                                                                                               \
    NEEDED(DevGetPort)                                                                                                 \
    NEEDED(DevGetNumDataStreams)                                                                                       \
    NEEDED(DevGetDataStreamID)                                                                                         \
    NEEDED(DevOpenDataStream)                                                                                          \
    NEEDED(DevClose)                                                                                                   \
    NEEDED(DSAnnounceBuffer)                                                                                           \
    NEEDED(DSAllocAndAnnounceBuffer)                                                                                   \
    NEEDED(DSFlushQueue)                                                                                               \
    NEEDED(DSStartAcquisition)                                                                                         \
    NEEDED(DSStopAcquisition)                                                                                          \
    NEEDED(DSGetInfo)                                                                                                  \
    NEEDED(DSClose)                                                                                                    \
    NEEDED(DSRevokeBuffer)                                                                                             \
    NEEDED(DSQueueBuffer)                                                                                              \
    NEEDED(DSGetBufferInfo)                                                                                            \
    OPTIONAL(GCGetInfo)                                                                                                \
    OPTIONAL(GCGetLastError)                                                                                           \
    OPTIONAL(GCGetPortInfo)                                                                                            \
    OPTIONAL(EventGetDataInfo)                                                                                         \
    OPTIONAL(TLGetInfo)                                                                                                \
    OPTIONAL(TLGetInterfaceInfo)                                                                                       \
    OPTIONAL(GCGetNumPortURLs)                                                                                         \
    OPTIONAL(GCGetPortURLInfo)                                                                                         \
    OPTIONAL(GCReadPortStacked)                                                                                        \
    OPTIONAL(DSGetBufferChunkData)                                                                                     \
    OPTIONAL(DSGetNumBufferParts)                                                                                      \
    OPTIONAL(DSGetBufferPartInfo)

/// The functions of one producer. None is null: optional ones that it lacks answer GC_ERR_NOT_IMPLEMENTED.
struct ProducerFunctions
{
    /// Looks the functions up in an open library. The result names the needed ones that it lacks.
    std::vector<std::string> lookUp(void *library);

#define GENTL_MEMBER(name) decltype(&GenTL::name) name = nullptr;
    GENTL_FUNCTIONS(GENTL_MEMBER, GENTL_MEMBER) // NOLINT(readability-identifier-naming): the standard's
#undef GENTL_MEMBER
};
