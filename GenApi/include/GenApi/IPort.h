// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/IBase.h>

namespace GENAPI_NAMESPACE {

/// Access to the registers of a device; implemented by whoever owns the connection. Errors are thrown and
/// reach the caller of the feature unchanged.
GENICAM_INTERFACE IPort : virtual public IBase
{
    virtual void Read(void *buffer, int64_t address, int64_t length) = 0;
    virtual void Write(const void *buffer, int64_t address, int64_t length) = 0;
};

} // namespace GENAPI_NAMESPACE
