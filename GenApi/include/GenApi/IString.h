// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/IValue.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE IString : virtual public IValue
{
    virtual void SetValue(const gcstring &value, bool verify = true) = 0;
    virtual IString &operator=(const gcstring &value) = 0;
    virtual gcstring GetValue(bool verify = false, bool ignoreCache = false) = 0;
    virtual gcstring operator()() = 0;
    virtual gcstring operator*() = 0;
    /// Greatest length in bytes.
    virtual int64_t GetMaxLength(bool verify = false) = 0;
};

} // namespace GENAPI_NAMESPACE
