// SPDX-License-Identifier: MIT
#pragma once

#include "AccessModes.h"
#include "Evaluation.h"
#include "Node.h"
#include "NodeContext.h"

#include <GenApi/ISelector.h>

namespace NodeEngine {

/// What every kind of node has in common: INode and ISelector, the access mode, what is kept of mode and value until
/// something changes, and how values behave where a kind says nothing else.
class PublicNode : public Node, public GenApi::INode, public GenApi::ISelector
{
public:
    PublicNode(NodeContext &context, const NodeRecord &record);

    // INode
    GenICam::gcstring GetName(bool fullQualified) const override;
    GenApi::ENameSpace GetNameSpace() const override { return m_description.nameSpace(); }
    GenApi::EVisibility GetVisibility() const override { return m_description.visibility(); }
    GenApi::EAccessMode GetAccessMode() const override;
    void InvalidateNode() override;
    bool IsCachable() const override { return GetCachingMode() != GenApi::NoCache; }
    GenApi::EYesNo IsAccessModeCacheable() const override;
    GenApi::ECachingMode GetCachingMode() const override;
    int64_t GetPollingTime() const override { return m_pollingTime; }
    GenICam::gcstring GetToolTip() const override { return text(Tag::ToolTip); }
    GenICam::gcstring GetDescription() const override { return text(Tag::Description); }
    GenICam::gcstring GetDisplayName() const override;
    GenICam::gcstring GetDeviceName() const override { return m_context.deviceName.c_str(); }
    void GetChildren(GenApi::NodeList_t &children, GenApi::ELinkType type) const override;
    void GetParents(GenApi::NodeList_t &parents) const override;
    GenApi::CallbackHandleType RegisterCallback(GenApi::CNodeCallback *callback) override;
    bool DeregisterCallback(GenApi::CallbackHandleType handle) override;
    GenApi::INodeMap *GetNodeMap() const override { return &m_context.map; }
    GenICam::gcstring GetEventID() const override { return text(Tag::EventID); }
    bool IsStreamable() const override { return m_description.isStreamable(); }
    void GetPropertyNames(GenICam::gcstring_vector &names) const override;
    bool GetProperty(const GenICam::gcstring &name, GenICam::gcstring &value, GenICam::gcstring &attribute) override;
    void ImposeAccessMode(GenApi::EAccessMode mode) override;
    void ImposeVisibility(GenApi::EVisibility visibility) override;
    GenApi::INode *GetAlias() const override { return linkedNode(Tag::pAlias); }
    GenApi::INode *GetCastAlias() const override { return linkedNode(Tag::pCastAlias); }
    GenICam::gcstring GetDocuURL() const override { return text(Tag::DocuURL); }
    bool IsDeprecated() const override { return m_description.isDeprecated(); }
    bool IsFeature() const override { return m_description.isFeature(); }

    // ISelector
    bool IsSelector() const override { return linked(Tag::pSelected) != nullptr; }
    void GetSelectedFeatures(GenApi::FeatureList_t &features) const override;
    void GetSelectingFeatures(GenApi::FeatureList_t &features) const override;

    // Node
    GenApi::INode &asNode() override { return *this; }
    void load(NodeLoader &loader) override;
    GenApi::EAccessMode accessMode() const override;
    GenApi::EAccessMode baseAccessMode() const override;
    bool isAccessModeCachable() const override;
    GenApi::ECachingMode cachingMode() const override;
    void forget() override { PublicNode::forgetComputed(); }
    void forgetComputed() override
    {
        m_valueValid = false;
        m_accessMode = GenApi::_UndefinedAccesMode;
    }

    // NodeValue
    int64_t integerValue(bool fresh) override;
    double floatValue(bool fresh) override;
    std::string textValue(bool verify, bool fresh) override;
    void setInteger(int64_t value, bool verify) override;
    void setFloat(double value, bool verify) override;
    void setTextValue(const std::string &value, bool verify) override;
    int64_t integerLimit(Limit limit) const override;
    double floatLimit(Limit limit) const override;
    bool hasIncrement() const override { return false; }
    GenApi::EIncMode incrementMode() const override { return GenApi::noIncrement; }
    int64_t greatestLength() override { return 0; }
    GenApi::ERepresentation representation() const override { return GenApi::_UndefinedRepresentation; }
    std::string unit() const override { return {}; }
    GenApi::EDisplayNotation displayNotation() const override { return GenApi::_UndefinedEDisplayNotation; }
    int64_t displayPrecision() const override { return -1; }

protected:
    /// Takes one child element; false if the kind does not know it.
    virtual bool take(Tag tag, pugi::xml_node child, NodeLoader &loader);
    /// Follows after the last child element.
    virtual void loaded(NodeLoader &) { }

    /// False if nothing is left of the node even with open gates.
    virtual bool isOwnImplemented() const { return true; }
    /// The mode as the kind of node has it, without gates, imposed mode and locks.
    virtual GenApi::EAccessMode ownAccessMode() const { return GenApi::RW; }
    virtual GenApi::EAccessMode ownBaseAccessMode() const { return ownAccessMode(); }
    virtual GenApi::EAccessMode computedAccessMode() const;
    virtual GenApi::ECachingMode ownCachingMode() const { return GenApi::WriteThrough; }

    NodeContext &m_context;
    mutable EvaluationState m_evaluation;
    mutable bool m_valueValid = false; // of the value that the kind of node keeps

private:
    GenApi::INode *linkedNode(Tag role) const;

    AccessGates m_gates;
    int64_t m_pollingTime = -1;
    // What was computed, so as not to do it again.
    mutable GenApi::EAccessMode m_accessMode = GenApi::_UndefinedAccesMode;
    mutable GenApi::ECachingMode m_cachingMode = GenApi::_UndefinedCachingMode;
    mutable GenApi::EYesNo m_isAccessModeCachable = GenApi::_UndefinedYesNo;
};

} // namespace NodeEngine
