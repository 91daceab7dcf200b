// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/Container.h>
#include <GenApi/IBase.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE ISelector : virtual public IBase
{
    virtual bool IsSelector() const = 0;
    virtual void GetSelectedFeatures(FeatureList_t & features) const = 0;
    virtual void GetSelectingFeatures(FeatureList_t & features) const = 0;
};

} // namespace GENAPI_NAMESPACE
