// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/Types.h>

namespace GENAPI_NAMESPACE {

/// What every node interface has.
GENICAM_INTERFACE IBase
{
    /// The access mode now; may read the device.
    virtual EAccessMode GetAccessMode() const = 0;

    virtual ~IBase() { }
};

} // namespace GENAPI_NAMESPACE
