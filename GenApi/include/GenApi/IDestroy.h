// SPDX-License-Identifier: MIT
#pragma once

#include <Base/GCTypes.h>

namespace GENAPI_NAMESPACE {

/// Frees a node map.
GENICAM_INTERFACE IDestroy
{
    virtual void Destroy() = 0;

protected:
    ~IDestroy() { }
};

} // namespace GENAPI_NAMESPACE
