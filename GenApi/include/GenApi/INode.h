// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/Container.h>
#include <GenApi/IBase.h>
#include <GenApi/Types.h>

namespace GENAPI_NAMESPACE {

class CNodeCallback;
struct INodeMap;

/// A node of a map: identity, texts, place in the graph, properties, callbacks.
GENICAM_INTERFACE INode : virtual public IBase
{
    virtual gcstring GetName(bool fullQualified = false) const = 0;
    virtual ENameSpace GetNameSpace() const = 0;
    /// Of a category: the lowest visibility of its features.
    virtual EVisibility GetVisibility() const = 0;
    virtual void InvalidateNode() = 0;
    virtual bool IsCachable() const = 0;
    virtual EYesNo IsAccessModeCacheable() const = 0;
    virtual ECachingMode GetCachingMode() const = 0;
    /// Milliseconds, or -1 for none; takes effect through INodeMap::Poll().
    virtual int64_t GetPollingTime() const = 0;
    virtual gcstring GetToolTip() const = 0;
    virtual gcstring GetDescription() const = 0;
    virtual gcstring GetDisplayName() const = 0;
    virtual gcstring GetDeviceName() const = 0;
    /// Replaces the list by the nodes that this node's links of the given kind lead to.
    virtual void GetChildren(NodeList_t & children, ELinkType type = ctReadingChildren) const = 0;
    virtual void GetParents(NodeList_t & parents) const = 0;
    /// Takes ownership of the callback; the handle is for DeregisterCallback().
    virtual CallbackHandleType RegisterCallback(CNodeCallback * callback) = 0;
    /// False if the handle is not, or no longer, valid.
    virtual bool DeregisterCallback(CallbackHandleType handle) = 0;
    virtual INodeMap *GetNodeMap() const = 0;
    virtual gcstring GetEventID() const = 0;
    virtual bool IsStreamable() const = 0;
    virtual void GetPropertyNames(gcstring_vector & names) const = 0;
    /// True if the node has the property; else both texts are cleared. Several values are joined by tabs.
    virtual bool GetProperty(const gcstring &name, gcstring &value, gcstring &attribute) = 0;
    virtual void ImposeAccessMode(EAccessMode mode) = 0;
    virtual void ImposeVisibility(EVisibility visibility) = 0;
    virtual INode *GetAlias() const = 0;
    virtual INode *GetCastAlias() const = 0;
    virtual gcstring GetDocuURL() const = 0;
    virtual bool IsDeprecated() const = 0;
    virtual EInterfaceType GetPrincipalInterfaceType() const = 0;
    /// True if the node can be reached from the category "Root" through categories only.
    virtual bool IsFeature() const = 0;
};

} // namespace GENAPI_NAMESPACE
