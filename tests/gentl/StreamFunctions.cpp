// SPDX-License-Identifier: MIT
// The functions of data streams and their buffers.
#include "tests/gentl/Call.h"

using namespace TestProducer;

namespace {

/// The buffer with that handle, if it is one of the stream's.
std::shared_ptr<Buffer> bufferOf(const World &world, const Stream &stream, GenTL::BUFFER_HANDLE handle)
{
    auto buffer = world.handles.get<Buffer>(handle);
    require(buffer->parent().get() == &stream, GenTL::GC_ERR_INVALID_HANDLE, "the buffer is another stream's");
    return buffer;
}

std::shared_ptr<Buffer> bufferOf(const World &world, GenTL::DS_HANDLE stream, GenTL::BUFFER_HANDLE handle)
{
    return bufferOf(world, *world.handles.get<Stream>(stream), handle);
}

/// What an entry of a stack comes to.
template <class Body>
GenTL::GC_ERROR codeOf(Body body)
{
    try {
        body();
        return GenTL::GC_ERR_SUCCESS;
    } catch (const Failure &failure) {
        return failure.code;
    }
}

} // namespace

GenTL::GC_ERROR GenTL::DSAnnounceBuffer(DS_HANDLE hDataStream, void *pBuffer, std::size_t iSize, void *pPrivate,
                                        BUFFER_HANDLE *phBuffer)
{
    return call("DSAnnounceBuffer", [&](World &world) {
        const auto stream = world.handles.get<Stream>(hDataStream);
        require(pBuffer, GC_ERR_INVALID_PARAMETER, "there is no buffer");
        answerHandle(phBuffer, world.handles.add(stream->announce(pBuffer, iSize, pPrivate)));
    });
}

GenTL::GC_ERROR GenTL::DSAllocAndAnnounceBuffer(DS_HANDLE hDataStream, std::size_t iSize, void *pPrivate,
                                                BUFFER_HANDLE *phBuffer)
{
    return call("DSAllocAndAnnounceBuffer", [&](World &world) {
        const auto stream = world.handles.get<Stream>(hDataStream);
        answerHandle(phBuffer, world.handles.add(stream->announce(nullptr, iSize, pPrivate)));
    });
}

GenTL::GC_ERROR GenTL::DSAnnounceCompositeBuffer(DS_HANDLE, std::size_t, void **, std::size_t *, void *,
                                                 BUFFER_HANDLE *)
{
    return call("DSAnnounceCompositeBuffer", [](World &) {
        throw Failure{GC_ERR_NOT_IMPLEMENTED, "buffers are in one piece"};
    });
}

GenTL::GC_ERROR GenTL::DSRevokeBuffer(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, void **pBuffer, void **pPrivate)
{
    return call("DSRevokeBuffer", [&](World &world) {
        const auto stream = world.handles.get<Stream>(hDataStream);
        const auto buffer = bufferOf(world, *stream, hBuffer);
        stream->revoke(*buffer);
        if (pBuffer)
            *pBuffer = buffer->isOwn() ? nullptr : buffer->base();
        if (pPrivate)
            *pPrivate = buffer->user();
    });
}

GenTL::GC_ERROR GenTL::DSQueueBuffer(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer)
{
    return call("DSQueueBuffer", [&](World &world) {
        const auto stream = world.handles.get<Stream>(hDataStream);
        stream->queue(bufferOf(world, *stream, hBuffer));
    });
}

GenTL::GC_ERROR GenTL::DSFlushQueue(DS_HANDLE hDataStream, ACQ_QUEUE_TYPE iOperation)
{
    return call("DSFlushQueue", [&](World &world, Lock &lock) {
        const auto stream = world.handles.get<Stream>(hDataStream);
        stream->flush(iOperation, lock);
    });
}

GenTL::GC_ERROR GenTL::DSStartAcquisition(DS_HANDLE hDataStream, ACQ_START_FLAGS iStartFlags,
                                          std::uint64_t iNumToAcquire)
{
    return call("DSStartAcquisition", [&](World &world) {
        const auto stream = world.handles.get<Stream>(hDataStream);
        require(iStartFlags == ACQ_START_FLAGS_DEFAULT, GC_ERR_INVALID_PARAMETER, "there are no such flags");
        stream->start(iNumToAcquire);
    });
}

GenTL::GC_ERROR GenTL::DSStopAcquisition(DS_HANDLE hDataStream, ACQ_STOP_FLAGS iStopFlags)
{
    return call("DSStopAcquisition", [&](World &world) {
        const auto stream = world.handles.get<Stream>(hDataStream);
        require(iStopFlags == ACQ_STOP_FLAGS_DEFAULT || iStopFlags == ACQ_STOP_FLAGS_KILL, GC_ERR_INVALID_PARAMETER,
                "there are no such flags");
        stream->stop();
    });
}

GenTL::GC_ERROR GenTL::DSGetInfo(DS_HANDLE hDataStream, STREAM_INFO_CMD iInfoCmd, INFO_DATATYPE *piType, void *pBuffer,
                                 std::size_t *piSize)
{
    return call("DSGetInfo", std::uint64_t(iInfoCmd), [&](World &world) {
        const auto stream = world.handles.get<Stream>(hDataStream);
        answer({piType, pBuffer, piSize}, known(stream->info(iInfoCmd)));
    });
}

GenTL::GC_ERROR GenTL::DSGetBufferID(DS_HANDLE hDataStream, std::uint32_t iIndex, BUFFER_HANDLE *phBuffer)
{
    return call("DSGetBufferID", [&](World &world) {
        const auto stream = world.handles.get<Stream>(hDataStream);
        const auto buffers = world.handles.children<Buffer>(stream.get());
        answerHandle(phBuffer, world.handles.of(at(buffers, iIndex).get()));
    });
}

GenTL::GC_ERROR GenTL::DSClose(DS_HANDLE hDataStream)
{
    return call("DSClose",
                [&](World &world, Lock &lock) { world.close(world.handles.get<Stream>(hDataStream), lock); });
}

GenTL::GC_ERROR GenTL::DSGetParentDev(DS_HANDLE hDataStream, DEV_HANDLE *phDevice)
{
    return call("DSGetParentDev", [&](World &world) {
        answerHandle(phDevice, world.handles.of(world.handles.get<Stream>(hDataStream)->parent().get()));
    });
}

GenTL::GC_ERROR GenTL::DSGetBufferInfo(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, BUFFER_INFO_CMD iInfoCmd,
                                       INFO_DATATYPE *piType, void *pBuffer, std::size_t *piSize)
{
    return call("DSGetBufferInfo", std::uint64_t(iInfoCmd), [&](World &world) {
        const auto stream = world.handles.get<Stream>(hDataStream);
        const std::string transport = stream->identity().transport;
        answer({piType, pBuffer, piSize}, known(bufferOf(world, *stream, hBuffer)->info(iInfoCmd, transport)));
    });
}

GenTL::GC_ERROR GenTL::DSGetBufferInfoStacked(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer,
                                              DS_BUFFER_INFO_STACKED *pInfoStacked, std::size_t iNumInfos)
{
    return call("DSGetBufferInfoStacked", [&](World &world) {
        const auto stream = world.handles.get<Stream>(hDataStream);
        const auto buffer = bufferOf(world, *stream, hBuffer);
        for (std::size_t i = 0; i < iNumInfos; ++i) {
            DS_BUFFER_INFO_STACKED entry = pInfoStacked[i]; // which is packed
            INFO_DATATYPE type = entry.iType;
            std::size_t length = entry.iSize;
            const GC_ERROR result = codeOf([&] {
                answer({&type, entry.pBuffer, &length}, known(buffer->info(entry.iInfoCmd, "")));
            });
            pInfoStacked[i].iType = type;
            pInfoStacked[i].iSize = length;
            pInfoStacked[i].iResult = result;
        }
    });
}

GenTL::GC_ERROR GenTL::DSGetNumBufferParts(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, std::uint32_t *piNumParts)
{
    return call("DSGetNumBufferParts",
                [&](World &world) { answerCount(piNumParts, bufferOf(world, hDataStream, hBuffer)->partCount()); });
}

GenTL::GC_ERROR GenTL::DSGetBufferPartInfo(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, std::uint32_t iPartIndex,
                                           BUFFER_PART_INFO_CMD iInfoCmd, INFO_DATATYPE *piType, void *pBuffer,
                                           std::size_t *piSize)
{
    return call("DSGetBufferPartInfo", std::uint64_t(iInfoCmd), [&](World &world) {
        const auto buffer = bufferOf(world, hDataStream, hBuffer);
        answer({piType, pBuffer, piSize}, known(buffer->partInfo(iPartIndex, iInfoCmd)));
    });
}

GenTL::GC_ERROR GenTL::DSGetBufferPartInfoStacked(DS_HANDLE, BUFFER_HANDLE, DS_BUFFER_PART_INFO_STACKED *, std::size_t)
{
    return call("DSGetBufferPartInfoStacked", [](World &) {
        throw Failure{GC_ERR_NOT_IMPLEMENTED, "ask for one info at a time"};
    });
}

GenTL::GC_ERROR GenTL::DSGetBufferChunkData(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, SINGLE_CHUNK_DATA *pChunkData,
                                            std::size_t *piNumChunks)
{
    return call("DSGetBufferChunkData", [&](World &world) {
        const auto chunks = bufferOf(world, hDataStream, hBuffer)->chunkList();
        require(piNumChunks, GC_ERR_INVALID_PARAMETER, "there is no place for the number");
        const std::size_t room = std::exchange(*piNumChunks, chunks.size());
        if (!pChunkData)
            return;
        require(room >= chunks.size(), GC_ERR_BUFFER_TOO_SMALL, "there are more chunks");
        std::copy(chunks.begin(), chunks.end(), pChunkData);
    });
}

GenTL::GC_ERROR GenTL::DSGetNumFlows(DS_HANDLE hDataStream, std::uint32_t *piNumFlows)
{
    return call("DSGetNumFlows", [&](World &world) {
        world.handles.get<Stream>(hDataStream);
        answerCount(piNumFlows, 0);
    });
}

GenTL::GC_ERROR GenTL::DSGetFlowInfo(DS_HANDLE hDataStream, std::uint32_t, FLOW_INFO_CMD, INFO_DATATYPE *, void *,
                                     std::size_t *)
{
    return call("DSGetFlowInfo", [&](World &world) {
        world.handles.get<Stream>(hDataStream);
        throw Failure{GC_ERR_INVALID_INDEX, "there are no flows"};
    });
}

GenTL::GC_ERROR GenTL::DSGetNumBufferSegments(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer,
                                              std::uint32_t *piNumSegments)
{
    return call("DSGetNumBufferSegments", [&](World &world) {
        bufferOf(world, hDataStream, hBuffer);
        answerCount(piNumSegments, 1);
    });
}

GenTL::GC_ERROR GenTL::DSGetBufferSegmentInfo(DS_HANDLE, BUFFER_HANDLE, std::uint32_t, SEGMENT_INFO_CMD,
                                              INFO_DATATYPE *, void *, std::size_t *)
{
    return call("DSGetBufferSegmentInfo", [](World &) {
        throw Failure{GC_ERR_NOT_IMPLEMENTED, "buffers are in one piece"};
    });
}
