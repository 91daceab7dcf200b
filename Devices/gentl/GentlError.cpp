// SPDX-License-Identifier: MIT
#include "Devices/gentl/GentlError.h"

#include <algorithm>
#include <iterator>

namespace {

struct CodeName
{
    GenTL::GC_ERROR code;
    const char *name;
};

constexpr CodeName Names[] = {
    {GenTL::GC_ERR_SUCCESS, "GC_ERR_SUCCESS"},
    {GenTL::GC_ERR_ERROR, "GC_ERR_ERROR"},
    {GenTL::GC_ERR_NOT_INITIALIZED, "GC_ERR_NOT_INITIALIZED"},
    {GenTL::GC_ERR_NOT_IMPLEMENTED, "GC_ERR_NOT_IMPLEMENTED"},
    {GenTL::GC_ERR_RESOURCE_IN_USE, "GC_ERR_RESOURCE_IN_USE"},
    {GenTL::GC_ERR_ACCESS_DENIED, "GC_ERR_ACCESS_DENIED"},
    {GenTL::GC_ERR_INVALID_HANDLE, "GC_ERR_INVALID_HANDLE"},
    {GenTL::GC_ERR_INVALID_ID, "GC_ERR_INVALID_ID"},
    {GenTL::GC_ERR_NO_DATA, "GC_ERR_NO_DATA"},
    {GenTL::GC_ERR_INVALID_PARAMETER, "GC_ERR_INVALID_PARAMETER"},
    {GenTL::GC_ERR_IO, "GC_ERR_IO"},
    {GenTL::GC_ERR_TIMEOUT, "GC_ERR_TIMEOUT"},
    {GenTL::GC_ERR_ABORT, "GC_ERR_ABORT"},
    {GenTL::GC_ERR_INVALID_BUFFER, "GC_ERR_INVALID_BUFFER"},
    {GenTL::GC_ERR_NOT_AVAILABLE, "GC_ERR_NOT_AVAILABLE"},
    {GenTL::GC_ERR_INVALID_ADDRESS, "GC_ERR_INVALID_ADDRESS"},
    {GenTL::GC_ERR_BUFFER_TOO_SMALL, "GC_ERR_BUFFER_TOO_SMALL"},
    {GenTL::GC_ERR_INVALID_INDEX, "GC_ERR_INVALID_INDEX"},
    {GenTL::GC_ERR_PARSING_CHUNK_DATA, "GC_ERR_PARSING_CHUNK_DATA"},
    {GenTL::GC_ERR_INVALID_VALUE, "GC_ERR_INVALID_VALUE"},
    {GenTL::GC_ERR_RESOURCE_EXHAUSTED, "GC_ERR_RESOURCE_EXHAUSTED"},
    {GenTL::GC_ERR_OUT_OF_MEMORY, "GC_ERR_OUT_OF_MEMORY"},
    {GenTL::GC_ERR_BUSY, "GC_ERR_BUSY"},
    {GenTL::GC_ERR_AMBIGUOUS, "GC_ERR_AMBIGUOUS"},
};

std::string sentence(const char *function, GenTL::GC_ERROR code, const std::string &words)
{
    const std::string failure = std::string(function) + " failed with " + gentlCodeName(code);
    return words.empty() ? failure : failure + ": " + words;
}

} // namespace

GentlError::GentlError(const char *function, GenTL::GC_ERROR code, const std::string &words)
    : std::runtime_error(sentence(function, code, words)), m_function(function), m_code(code)
{ }

std::string gentlCodeName(GenTL::GC_ERROR code)
{
    const auto row =
        std::find_if(std::begin(Names), std::end(Names), [code](const CodeName &one) { return one.code == code; });
    if (row != std::end(Names))
        return row->name;
    const bool isOwn = code <= GenTL::GC_ERR_CUSTOM_ID;
    return (isOwn ? "the producer's own code " : "the unknown code ") + std::to_string(code);
}
