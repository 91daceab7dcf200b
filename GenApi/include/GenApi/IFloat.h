// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/Container.h>
#include <GenApi/IValue.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE IFloat : virtual public IValue
{
    virtual void SetValue(double value, bool verify = true) = 0;
    virtual IFloat &operator=(double value) = 0;
    virtual double GetValue(bool verify = false, bool ignoreCache = false) = 0;
    virtual double operator()() = 0;
    virtual double operator*() = 0;
    virtual double GetMin() = 0;
    virtual double GetMax() = 0;
    virtual bool HasInc() = 0;
    virtual EIncMode GetIncMode() = 0;
    /// Throws a RuntimeException if there is no increment.
    virtual double GetInc() = 0;
    virtual double_autovector_t GetListOfValidValues(bool bounded = true) = 0;
    virtual ERepresentation GetRepresentation() = 0;
    virtual gcstring GetUnit() const = 0;
    virtual EDisplayNotation GetDisplayNotation() const = 0;
    virtual int64_t GetDisplayPrecision() const = 0;
    virtual void ImposeMin(double value) = 0;
    virtual void ImposeMax(double value) = 0;
};

} // namespace GENAPI_NAMESPACE
