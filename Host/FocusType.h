// SPDX-License-Identifier: MIT
#pragma once

#include "Devices/Device.h"
#include "ParamterWnd/HostCore.h"

/// What panels call the kind of a device; none of their values for no device.
inline HostCore::FOCUS_TYPE focusType(const Device *device)
{
    if (!device)
        return HostCore::FOCUS_TYPE(0);
    return device->kind() == Device::Kind::Card ? HostCore::FOCUS_CARD : HostCore::FOCUS_CAMERA;
}
