// SPDX-License-Identifier: MIT
#pragma once

#include <Base/GCException.h>
#include <GenApi/NodeMapFactory.h>

namespace GENAPI_NAMESPACE {

/// Owns a node map and forwards to it. Load before anything else: an unloaded map throws.
class CNodeMapRef
{
public:
    explicit CNodeMapRef(const gcstring &deviceName = "Device") : _Ptr(nullptr), m_deviceName(deviceName) { }
    ~CNodeMapRef() { _Destroy(); }

    void _LoadXMLFromFile(const gcstring &fileName)
    {
        CNodeMapFactory factory(ContentType_Xml, fileName);
        take(factory);
    }
    void _LoadXMLFromString(const gcstring &xml)
    {
        CNodeMapFactory factory(ContentType_Xml, xml.c_str(), xml.size());
        take(factory);
    }
    void _Destroy()
    {
        if (_Ptr)
            CastToIDestroy(_Ptr)->Destroy();
        _Ptr = nullptr;
    }

    void _GetNodes(NodeList_t &nodes) const { checked()->GetNodes(nodes); }
    INode *_GetNode(const gcstring &name) const { return checked()->GetNode(name); }
    void _InvalidateNodes() const { checked()->InvalidateNodes(); }
    bool _Connect(IPort *port, const gcstring &portName) const { return checked()->Connect(port, portName); }
    bool _Connect(IPort *port) const { return checked()->Connect(port); }
    gcstring _GetDeviceName() const { return checked()->GetDeviceName(); }
    void _Poll(int64_t elapsedMs) { checked()->Poll(elapsedMs); }

    INodeMap *_Ptr;

private:
    CNodeMapRef(const CNodeMapRef &);
    CNodeMapRef &operator=(const CNodeMapRef &);

    void take(CNodeMapFactory &factory)
    {
        INodeMap *loaded = factory.CreateNodeMap(m_deviceName);
        _Destroy();
        _Ptr = loaded;
    }
    INodeMap *checked() const
    {
        if (!_Ptr)
            throw LOGICAL_ERROR_EXCEPTION("no camera description loaded");
        return _Ptr;
    }

    gcstring m_deviceName;
};

} // namespace GENAPI_NAMESPACE
