// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/IValue.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE ICommand : virtual public IValue
{
    /// Starts the command; does not wait for its end.
    virtual void Execute(bool verify = true) = 0;
    virtual void operator()() = 0;
    virtual bool IsDone(bool verify = true) = 0;
};

} // namespace GENAPI_NAMESPACE
