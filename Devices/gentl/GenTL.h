// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "Devices/gentl/GenTLCodes.h"

// NOLINTBEGIN(readability-identifier-naming): the standard gives the names.
/// The C interface between a GenTL producer (a shared library `*.cti`) and its consumer, by the GenICam GenTL
/// standard 1.6.
///
/// Names and values are the standard's. Every enumeration crosses the interface as int32_t, every structure is packed,
/// texts count their final zero, and `piSize` is the size of the buffer on entry and what was written, or is needed, on
/// return. The functions are only declared: a producer defines them, a consumer looks them up in it (Producer.h).
namespace GenTL {

using bool8_t = std::uint8_t;
using GC_ERROR = std::int32_t;

using TL_HANDLE = void *;
using IF_HANDLE = void *;
using DEV_HANDLE = void *;
using DS_HANDLE = void *;
using PORT_HANDLE = void *;
using BUFFER_HANDLE = void *;
using EVENTSRC_HANDLE = void *;
using EVENT_HANDLE = void *;

constexpr std::uint64_t GENTL_INFINITE = 0xFFFFFFFFFFFFFFFFULL;

#pragma pack(push, 1)
struct EVENT_NEW_BUFFER_DATA
{
    BUFFER_HANDLE BufferHandle;
    void *pUserPointer;
};

struct PORT_REGISTER_STACK_ENTRY
{
    std::uint64_t Address;
    void *pBuffer;
    std::size_t Size;
};

struct SINGLE_CHUNK_DATA
{
    std::uint64_t ChunkID;
    std::ptrdiff_t ChunkOffset;
    std::size_t ChunkLength;
};

struct DS_BUFFER_INFO_STACKED
{
    BUFFER_INFO_CMD iInfoCmd;
    INFO_DATATYPE iType;
    void *pBuffer;
    std::size_t iSize;
    GC_ERROR iResult;
};

struct DS_BUFFER_PART_INFO_STACKED
{
    std::uint32_t iPartIndex;
    BUFFER_PART_INFO_CMD iInfoCmd;
    GC_ERROR iResult;
    INFO_DATATYPE iType;
    void *pBuffer;
    std::size_t iSize;
};

#pragma pack(pop)

extern "C" {

GC_ERROR GCGetInfo(TL_INFO_CMD iInfoCmd, INFO_DATATYPE *piType, void *pBuffer, std::size_t *piSize);
GC_ERROR GCGetLastError(GC_ERROR *piErrorCode, char *sErrText, std::size_t *piSize);
GC_ERROR GCInitLib();
GC_ERROR GCCloseLib();
GC_ERROR GCReadPort(PORT_HANDLE hPort, std::uint64_t iAddress, void *pBuffer, std::size_t *piSize);
GC_ERROR GCWritePort(PORT_HANDLE hPort, std::uint64_t iAddress, const void *pBuffer, std::size_t *piSize);
GC_ERROR GCGetPortURL(PORT_HANDLE hPort, char *sURL, std::size_t *piSize);
GC_ERROR GCGetPortInfo(PORT_HANDLE hPort, PORT_INFO_CMD iInfoCmd, INFO_DATATYPE *piType, void *pBuffer,
                       std::size_t *piSize);
GC_ERROR GCRegisterEvent(EVENTSRC_HANDLE hEventSrc, EVENT_TYPE iEventID, EVENT_HANDLE *phEvent);
GC_ERROR GCUnregisterEvent(EVENTSRC_HANDLE hEventSrc, EVENT_TYPE iEventID);
GC_ERROR EventGetData(EVENT_HANDLE hEvent, void *pBuffer, std::size_t *piSize, std::uint64_t iTimeout);
GC_ERROR EventGetDataInfo(EVENT_HANDLE hEvent, const void *pInBuffer, std::size_t iInSize, EVENT_DATA_INFO_CMD iInfoCmd,
                          INFO_DATATYPE *piType, void *pOutBuffer, std::size_t *piOutSize);
GC_ERROR EventGetInfo(EVENT_HANDLE hEvent, EVENT_INFO_CMD iInfoCmd, INFO_DATATYPE *piType, void *pBuffer,
                      std::size_t *piSize);
GC_ERROR EventFlush(EVENT_HANDLE hEvent);
GC_ERROR EventKill(EVENT_HANDLE hEvent);
GC_ERROR TLOpen(TL_HANDLE *phTL);
GC_ERROR TLClose(TL_HANDLE hTL);
GC_ERROR TLGetInfo(TL_HANDLE hTL, TL_INFO_CMD iInfoCmd, INFO_DATATYPE *piType, void *pBuffer, std::size_t *piSize);
GC_ERROR TLGetNumInterfaces(TL_HANDLE hTL, std::uint32_t *piNumIfaces);
GC_ERROR TLGetInterfaceID(TL_HANDLE hTL, std::uint32_t iIndex, char *sID, std::size_t *piSize);
GC_ERROR TLGetInterfaceInfo(TL_HANDLE hTL, const char *sIfaceID, INTERFACE_INFO_CMD iInfoCmd, INFO_DATATYPE *piType,
                            void *pBuffer, std::size_t *piSize);
GC_ERROR TLOpenInterface(TL_HANDLE hTL, const char *sIfaceID, IF_HANDLE *phIface);
GC_ERROR TLUpdateInterfaceList(TL_HANDLE hTL, bool8_t *pbChanged, std::uint64_t iTimeout);
GC_ERROR IFClose(IF_HANDLE hIface);
GC_ERROR IFGetInfo(IF_HANDLE hIface, INTERFACE_INFO_CMD iInfoCmd, INFO_DATATYPE *piType, void *pBuffer,
                   std::size_t *piSize);
GC_ERROR IFGetNumDevices(IF_HANDLE hIface, std::uint32_t *piNumDevices);
GC_ERROR IFGetDeviceID(IF_HANDLE hIface, std::uint32_t iIndex, char *sIDeviceID, std::size_t *piSize);
GC_ERROR IFUpdateDeviceList(IF_HANDLE hIface, bool8_t *pbChanged, std::uint64_t iTimeout);
GC_ERROR IFGetDeviceInfo(IF_HANDLE hIface, const char *sDeviceID, DEVICE_INFO_CMD iInfoCmd, INFO_DATATYPE *piType,
                         void *pBuffer, std::size_t *piSize);
GC_ERROR IFOpenDevice(IF_HANDLE hIface, const char *sDeviceID, DEVICE_ACCESS_FLAGS iOpenFlag, DEV_HANDLE *phDevice);
GC_ERROR DevGetPort(DEV_HANDLE hDevice, PORT_HANDLE *phRemoteDevice);
GC_ERROR DevGetNumDataStreams(DEV_HANDLE hDevice, std::uint32_t *piNumDataStreams);
GC_ERROR DevGetDataStreamID(DEV_HANDLE hDevice, std::uint32_t iIndex, char *sDataStreamID, std::size_t *piSize);
GC_ERROR DevOpenDataStream(DEV_HANDLE hDevice, const char *sDataStreamID, DS_HANDLE *phDataStream);
GC_ERROR DevGetInfo(DEV_HANDLE hDevice, DEVICE_INFO_CMD iInfoCmd, INFO_DATATYPE *piType, void *pBuffer,
                    std::size_t *piSize);
GC_ERROR DevClose(DEV_HANDLE hDevice);
GC_ERROR DSAnnounceBuffer(DS_HANDLE hDataStream, void *pBuffer, std::size_t iSize, void *pPrivate,
                          BUFFER_HANDLE *phBuffer);
GC_ERROR DSAllocAndAnnounceBuffer(DS_HANDLE hDataStream, std::size_t iSize, void *pPrivate, BUFFER_HANDLE *phBuffer);
GC_ERROR DSFlushQueue(DS_HANDLE hDataStream, ACQ_QUEUE_TYPE iOperation);
GC_ERROR DSStartAcquisition(DS_HANDLE hDataStream, ACQ_START_FLAGS iStartFlags, std::uint64_t iNumToAcquire);
GC_ERROR DSStopAcquisition(DS_HANDLE hDataStream, ACQ_STOP_FLAGS iStopFlags);
GC_ERROR DSGetInfo(DS_HANDLE hDataStream, STREAM_INFO_CMD iInfoCmd, INFO_DATATYPE *piType, void *pBuffer,
                   std::size_t *piSize);
GC_ERROR DSGetBufferID(DS_HANDLE hDataStream, std::uint32_t iIndex, BUFFER_HANDLE *phBuffer);
GC_ERROR DSClose(DS_HANDLE hDataStream);
GC_ERROR DSRevokeBuffer(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, void **pBuffer, void **pPrivate);
GC_ERROR DSQueueBuffer(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer);
GC_ERROR DSGetBufferInfo(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, BUFFER_INFO_CMD iInfoCmd, INFO_DATATYPE *piType,
                         void *pBuffer, std::size_t *piSize);
GC_ERROR GCGetNumPortURLs(PORT_HANDLE hPort, std::uint32_t *piNumURLs);
GC_ERROR GCGetPortURLInfo(PORT_HANDLE hPort, std::uint32_t iURLIndex, URL_INFO_CMD iInfoCmd, INFO_DATATYPE *piType,
                          void *pBuffer, std::size_t *piSize);
GC_ERROR GCReadPortStacked(PORT_HANDLE hPort, PORT_REGISTER_STACK_ENTRY *pEntries, std::size_t *piNumEntries);
GC_ERROR GCWritePortStacked(PORT_HANDLE hPort, PORT_REGISTER_STACK_ENTRY *pEntries, std::size_t *piNumEntries);
GC_ERROR DSGetBufferChunkData(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, SINGLE_CHUNK_DATA *pChunkData,
                              std::size_t *piNumChunks);
GC_ERROR IFGetParentTL(IF_HANDLE hIface, TL_HANDLE *phSystem);
GC_ERROR DevGetParentIF(DEV_HANDLE hDevice, IF_HANDLE *phIface);
GC_ERROR DSGetParentDev(DS_HANDLE hDataStream, DEV_HANDLE *phDevice);
GC_ERROR DSGetNumBufferParts(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, std::uint32_t *piNumParts);
GC_ERROR DSGetBufferPartInfo(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, std::uint32_t iPartIndex,
                             BUFFER_PART_INFO_CMD iInfoCmd, INFO_DATATYPE *piType, void *pBuffer, std::size_t *piSize);
GC_ERROR DSAnnounceCompositeBuffer(DS_HANDLE hDataStream, std::size_t iNumSegments, void **ppSegments,
                                   std::size_t *piSizes, void *pPrivate, BUFFER_HANDLE *phBuffer);
GC_ERROR DSGetBufferInfoStacked(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, DS_BUFFER_INFO_STACKED *pInfoStacked,
                                std::size_t iNumInfos);
GC_ERROR DSGetBufferPartInfoStacked(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer,
                                    DS_BUFFER_PART_INFO_STACKED *pInfoStacked, std::size_t iNumInfos);
GC_ERROR DSGetNumFlows(DS_HANDLE hDataStream, std::uint32_t *piNumFlows);
GC_ERROR DSGetFlowInfo(DS_HANDLE hDataStream, std::uint32_t iFlowIndex, FLOW_INFO_CMD iInfoCmd, INFO_DATATYPE *piType,
                       void *pBuffer, std::size_t *piSize);
GC_ERROR DSGetNumBufferSegments(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, std::uint32_t *piNumSegments);
GC_ERROR DSGetBufferSegmentInfo(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, std::uint32_t iSegmentIndex,
                                SEGMENT_INFO_CMD iInfoCmd, INFO_DATATYPE *piType, void *pBuffer, std::size_t *piSize);

} // extern "C"

} // namespace GenTL
// NOLINTEND(readability-identifier-naming)
