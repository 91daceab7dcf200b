// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/IValue.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE IEnumEntry : virtual public IValue
{
    virtual int64_t GetValue() = 0;
    virtual gcstring GetSymbolic() const = 0;
    virtual double GetNumericValue() = 0;
    virtual bool IsSelfClearing() = 0;
};

} // namespace GENAPI_NAMESPACE
