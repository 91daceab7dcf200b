// SPDX-License-Identifier: MIT
#include "Refusals.h"

#include <GenApi/GenApi.h>

#include <cstdarg>
#include <cstdio>

namespace NodeEngine {

void requireReadable(const Node &node, const char *call)
{
    if (!GenApi::IsReadable(node.accessMode()))
        refuse(node, "Node is not readable.", call);
}

void requireWritable(const Node &node, bool verify, const char *call)
{
    if (!GenApi::IsWritable(verify ? node.accessMode() : node.baseAccessMode()))
        refuse(node, "Node is not writable.", call);
}

void requireAvailable(const Node &node)
{
    if (!GenApi::IsAvailable(node.accessMode()))
        throw GenICam::AccessException("Node is not available.", __FILE__, __LINE__, "", node.name().c_str(),
                                       "AccessException");
}

void refuse(const Node &node, const char *description, const char *call)
{
    throw GenICam::AccessException(description, __FILE__, __LINE__, (node.name() + "." + call).c_str(),
                                   node.name().c_str(), "AccessException");
}

void refuseRange(const Node &node, const char *call, const char *format, ...)
{
    char description[1024];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(description, sizeof description, format, arguments);
    va_end(arguments);
    throw GenICam::OutOfRangeException(description, __FILE__, __LINE__, (node.name() + "." + call).c_str(),
                                       node.name().c_str(), "OutOfRangeException");
}

} // namespace NodeEngine
