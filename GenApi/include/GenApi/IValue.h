// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/IBase.h>
#include <GenApi/Types.h>

namespace GENAPI_NAMESPACE {

struct INode;

/// A node that has a value.
GENICAM_INTERFACE IValue : virtual public IBase
{
    virtual INode *GetNode() = 0;
    /// The value as text, as it would be written in a file.
    virtual gcstring ToString(bool verify = false, bool ignoreCache = false) = 0;
    virtual void FromString(const gcstring &text, bool verify = true) = 0;
    /// True if the next read needs no access to the device.
    virtual bool IsValueCacheValid() const = 0;
};

} // namespace GENAPI_NAMESPACE
