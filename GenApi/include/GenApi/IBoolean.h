// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/IValue.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE IBoolean : virtual public IValue
{
    virtual void SetValue(bool value, bool verify = true) = 0;
    virtual IBoolean &operator=(bool value) = 0;
    virtual bool GetValue(bool verify = false, bool ignoreCache = false) const = 0;
    virtual bool operator()() const = 0;
};

} // namespace GENAPI_NAMESPACE
