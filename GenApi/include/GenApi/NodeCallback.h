// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/INode.h>
#include <GenApi/Types.h>

namespace GENAPI_NAMESPACE {

/// Something to be called when a node changes. Owned by the node it is registered with.
class GENICAM_DECL CNodeCallback
{
public:
    CNodeCallback(INode *node, ECallbackType type) : m_node(node), m_type(type) { }
    virtual ~CNodeCallback() { }

    /// Fires if `type` is the callback's own type.
    virtual void operator()(ECallbackType type) const = 0;
    /// Deletes the callback.
    virtual void Destroy() = 0;
    INode *GetNode() { return m_node; }

protected:
    INode *m_node;
    ECallbackType m_type;
};

/// Calls a function.
template <class Function>
class Function_NodeCallback : public CNodeCallback
{
public:
    Function_NodeCallback(INode *node, const Function &function, ECallbackType type)
        : CNodeCallback(node, type), m_function(function)
    { }
    void operator()(ECallbackType type) const override
    {
        if (m_function && type == m_type)
            m_function(m_node);
    }
    void Destroy() override { delete this; }

private:
    Function m_function;
};

/// Calls a member of an object, which has to outlive the registration.
template <class Client, class Member>
class Member_NodeCallback : public CNodeCallback
{
public:
    Member_NodeCallback(INode *node, Client &client, Member member, ECallbackType type)
        : CNodeCallback(node, type), m_client(client), m_member(member)
    { }
    void operator()(ECallbackType type) const override
    {
        if (type == m_type)
            (m_client.*m_member)(m_node);
    }
    void Destroy() override { delete this; }

private:
    Client &m_client;
    Member m_member;
};

template <class Function>
intptr_t Register(INode *node, Function function, ECallbackType type = cbPostInsideLock)
{
    return node->RegisterCallback(new Function_NodeCallback<Function>(node, function, type));
}

template <class Client, class Member>
intptr_t Register(INode *node, Client &client, Member member, ECallbackType type = cbPostInsideLock)
{
    return node->RegisterCallback(new Member_NodeCallback<Client, Member>(node, client, member, type));
}

/// The handle must still be registered.
inline void Deregister(CallbackHandleType handle)
{
    if (handle)
        reinterpret_cast<CNodeCallback *>(handle)->GetNode()->DeregisterCallback(handle);
}

} // namespace GENAPI_NAMESPACE
