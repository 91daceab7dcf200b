// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/Types.h>

namespace GENAPI_NAMESPACE {

/// What a description tells about itself and its device. A node map has it: dynamic_cast<IDeviceInfo *>(map).
GENICAM_INTERFACE IDeviceInfo
{
    virtual gcstring GetModelName() = 0;
    virtual gcstring GetVendorName() = 0;
    virtual gcstring GetToolTip() = 0;
    virtual gcstring GetStandardNameSpace() = 0;
    /// Of this interface.
    virtual void GetGenApiVersion(Version_t & version, uint16_t & build) = 0;
    virtual void GetSchemaVersion(Version_t & version) = 0;
    virtual void GetDeviceVersion(Version_t & version) = 0;
    virtual gcstring GetProductGuid() = 0;
    virtual gcstring GetVersionGuid() = 0;

    virtual ~IDeviceInfo() { }
};

} // namespace GENAPI_NAMESPACE
