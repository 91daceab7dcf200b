// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <GenApi/GenApi.h>

/// A node that calls `fault`, which throws, on every call; the calls listed as members can be made to answer.
/// It claims to be an integer but has no value interface.
class FaultyNode : public GenApi::INode
{
public:
    explicit FaultyNode(std::function<void()> fault) : m_fault(std::move(fault)) { }

    bool hasShape = false; ///< answers what the tree asks when it builds its rows; the value still fails
    const char *name = "Faulty";

    GenICam::gcstring GetName(bool = false) const override { return answer<GenICam::gcstring>(name); }
    GenApi::EVisibility GetVisibility() const override { return answer(GenApi::Beginner); }
    GenApi::EInterfaceType GetPrincipalInterfaceType() const override { return answer(GenApi::intfIInteger); }
    bool IsFeature() const override { return answer(true); }
    void GetParents(GenApi::NodeList_t &) const override { answer(0); }
    GenICam::gcstring GetToolTip() const override { return answer<GenICam::gcstring>(name); }

    GenApi::EAccessMode GetAccessMode() const override { return fail<GenApi::EAccessMode>(); }
    GenApi::ENameSpace GetNameSpace() const override { return fail<GenApi::ENameSpace>(); }
    void InvalidateNode() override { m_fault(); }
    bool IsCachable() const override { return fail<bool>(); }
    GenApi::EYesNo IsAccessModeCacheable() const override { return fail<GenApi::EYesNo>(); }
    GenApi::ECachingMode GetCachingMode() const override { return fail<GenApi::ECachingMode>(); }
    int64_t GetPollingTime() const override { return fail<int64_t>(); }
    GenICam::gcstring GetDescription() const override { return fail<GenICam::gcstring>(); }
    GenICam::gcstring GetDisplayName() const override { return fail<GenICam::gcstring>(); }
    GenICam::gcstring GetDeviceName() const override { return fail<GenICam::gcstring>(); }
    void GetChildren(GenApi::NodeList_t &, GenApi::ELinkType) const override { m_fault(); }
    GenApi::CallbackHandleType RegisterCallback(GenApi::CNodeCallback *) override { return fail<intptr_t>(); }
    bool DeregisterCallback(GenApi::CallbackHandleType) override { return fail<bool>(); }
    GenApi::INodeMap *GetNodeMap() const override { return fail<GenApi::INodeMap *>(); }
    GenICam::gcstring GetEventID() const override { return fail<GenICam::gcstring>(); }
    bool IsStreamable() const override { return fail<bool>(); }
    void GetPropertyNames(GenICam::gcstring_vector &) const override { m_fault(); }
    bool GetProperty(const GenICam::gcstring &, GenICam::gcstring &, GenICam::gcstring &) override
    {
        return fail<bool>();
    }
    void ImposeAccessMode(GenApi::EAccessMode) override { m_fault(); }
    void ImposeVisibility(GenApi::EVisibility) override { m_fault(); }
    GenApi::INode *GetAlias() const override { return fail<GenApi::INode *>(); }
    GenApi::INode *GetCastAlias() const override { return fail<GenApi::INode *>(); }
    GenICam::gcstring GetDocuURL() const override { return fail<GenICam::gcstring>(); }
    bool IsDeprecated() const override { return fail<bool>(); }

private:
    template <class Result>
    Result answer(Result result) const
    {
        if (!hasShape)
            m_fault();
        return result;
    }
    template <class Result>
    Result fail() const
    {
        m_fault();
        return {};
    }

    std::function<void()> m_fault;
};
