// SPDX-License-Identifier: MIT
#pragma once

#include "Node.h"

namespace NodeEngine {

// What a node cannot do now, as the standard's exceptions. `call` is the public call as it stands in the exception,
// e.g. "GetValue()".

void requireReadable(const Node &node, const char *call);
void requireWritable(const Node &node, bool verify, const char *call);
void requireAvailable(const Node &node);
[[noreturn]] void refuse(const Node &node, const char *description, const char *call);
/// An OutOfRangeException with a printf-formatted description.
[[noreturn]] void refuseRange(const Node &node, const char *call, const char *format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 3, 4)))
#endif
    ;

} // namespace NodeEngine
