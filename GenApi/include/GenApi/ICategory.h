// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/Container.h>
#include <GenApi/IValue.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE ICategory : virtual public IValue
{
    /// Replaces the list by the features and categories that the category lists.
    virtual void GetFeatures(FeatureList_t & features) const = 0;
};

} // namespace GENAPI_NAMESPACE
