// SPDX-License-Identifier: MIT
#include "ParamterWidget/PanelContext.h"

#include "ParamterWnd/HostCore.h"

GenApi::INodeMap *PanelContext::nodeMap() const
{
    const HostCore::FOCUS_TYPE type = card ? HostCore::FOCUS_CARD : HostCore::FOCUS_CAMERA;
    return HostCore::GetAttrNodeMap(type, deviceKey(), HostCore::NODE_MAP_DEVICE);
}
