// SPDX-License-Identifier: MIT
#include "Devices/gentl/ProducerFunctions.h"

#include <dlfcn.h>

namespace {

/// Stands in for a function that a producer lacks.
template <class... Arguments>
GenTL::GC_ERROR notImplemented(Arguments...)
{
    return GenTL::GC_ERR_NOT_IMPLEMENTED;
}

template <class... Arguments>
void standIn(GenTL::GC_ERROR (*&function)(Arguments...))
{
    function = notImplemented<Arguments...>;
}

/// False when the library lacks it; a stand-in takes its place.
template <class Function>
bool find(void *library, const char *name, Function &function)
{
    function = reinterpret_cast<Function>(dlsym(library, name));
    if (function)
        return true;
    standIn(function);
    return false;
}

} // namespace

std::vector<std::string> ProducerFunctions::lookUp(void *library)
{
    std::vector<std::string> missing;
#define GENTL_NEEDED(name)                                                                                             \
    if (!find(library, #name, name))                                                                                   \
        missing.emplace_back(#name);
#define GENTL_OPTIONAL(name) find(library, #name, name);
    GENTL_FUNCTIONS(GENTL_NEEDED, GENTL_OPTIONAL)
#undef GENTL_NEEDED
#undef GENTL_OPTIONAL
    return missing;
}
