// SPDX-License-Identifier: MIT
#pragma once

#include "Description.h"
#include "Evaluation.h"

#include <GenApi/INode.h>
#include <GenApi/ISelector.h>

#include <bitset>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace NodeEngine {

using namespace GENAPI_NAMESPACE;
using namespace GENICAM_NAMESPACE;

class Node;
class NodeBuilder;
class NodeMap;

/// One link of a node, in document order. The role is the element's tag (pValue, pMax, EnumEntry...).
struct Link
{
    Tag role;
    Node *target;
    std::string_view name; ///< pVariable: the variable
    std::string_view number; ///< pIndex, pValueIndexed: Offset or Index as it stands in the file
};

enum class Limit { Min, Max, Inc };

/// What every node is: identity, links, access mode, caches, callbacks; and the protocol between linked nodes.
///
/// The protocol (integerValue() to setTextValue()) is called with the map's lock held, by the public interfaces and by
/// nodes that link here. Port errors pass through unchanged.
class Node : public INode, public ISelector
{
public:
    Node(NodeMap &map, const NodeRecord &record);
    ~Node() override;
    Node(const Node &) = delete;
    Node &operator=(const Node &) = delete;

    // INode
    gcstring GetName(bool fullQualified) const override;
    ENameSpace GetNameSpace() const override;
    EVisibility GetVisibility() const override;
    EAccessMode GetAccessMode() const override;
    void InvalidateNode() override;
    bool IsCachable() const override { return GetCachingMode() != NoCache; }
    EYesNo IsAccessModeCacheable() const override;
    ECachingMode GetCachingMode() const override;
    int64_t GetPollingTime() const override { return m_pollingTime; }
    gcstring GetToolTip() const override { return text(Tag::ToolTip); }
    gcstring GetDescription() const override { return text(Tag::Description); }
    gcstring GetDisplayName() const override;
    gcstring GetDeviceName() const override;
    void GetChildren(NodeList_t &children, ELinkType type) const override;
    void GetParents(NodeList_t &parents) const override;
    CallbackHandleType RegisterCallback(CNodeCallback *callback) override;
    bool DeregisterCallback(CallbackHandleType handle) override;
    INodeMap *GetNodeMap() const override;
    gcstring GetEventID() const override { return text(Tag::EventID); }
    bool IsStreamable() const override { return m_streamable; }
    void GetPropertyNames(gcstring_vector &names) const override;
    bool GetProperty(const gcstring &name, gcstring &value, gcstring &attribute) override;
    void ImposeAccessMode(EAccessMode mode) override;
    void ImposeVisibility(EVisibility visibility) override;
    INode *GetAlias() const override { return linked(Tag::pAlias); }
    INode *GetCastAlias() const override { return linked(Tag::pCastAlias); }
    gcstring GetDocuURL() const override { return text(Tag::DocuURL); }
    bool IsDeprecated() const override { return m_deprecated; }
    bool IsFeature() const override { return m_feature; }

    // ISelector
    bool IsSelector() const override { return linked(Tag::pSelected) != nullptr; }
    void GetSelectedFeatures(FeatureList_t &features) const override;
    void GetSelectingFeatures(FeatureList_t &features) const override;

    // Identity and links.
    std::string name() const { return std::string(m_record.name); }
    Tag tag() const { return m_record.tag; }
    pugi::xml_node element() const { return m_record.element; }
    NodeMap &map() const { return m_map; }
    bool isRegister() const;
    const std::vector<Link> &links() const { return m_links; }
    /// The first link of that role, or null.
    Node *linked(Tag role) const;
    /// The text of a child element, of the structure around it if the node has none, or "".
    const char *text(Tag tag) const;
    /// Whether the node, or the structure around it, has such a child element.
    bool hasElement(Tag tag) const { return m_elements[static_cast<std::size_t>(tag)]; }
    /// The IValue side, or null for ports and plain nodes.
    virtual IValue *asValue() { return nullptr; }

    // Loading.
    /// Reads everything below the node's element; called once.
    void load(NodeBuilder &builder);
    void addLink(const Link &link) { m_links.push_back(link); }
    void setFeature() { m_feature = true; }
    /// The node cannot work (dangling link, cycle, formula that does not parse): NA from now on.
    void setBroken() const { m_broken = true; }
    bool isBroken() const { return m_broken; }

    ECachingMode cachingMode() const;
    bool hasCachableValue() const { return cachingMode() != NoCache; }

    // Refusals; `call` is the public call as it stands in the exception, e.g. "GetValue()".
    void requireReadable(const char *call) const;
    void requireWritable(bool verify, const char *call) const;
    void requireAvailable() const;
    [[noreturn]] void refuse(const char *description, const char *call) const;
    /// An OutOfRangeException with a printf-formatted description.
    [[noreturn]] void refuseRange(const char *call, const char *format, ...) const
#if defined(__GNUC__)
        __attribute__((format(printf, 3, 4)))
#endif
        ;

    // The protocol between nodes. `fresh` passes the caches of the values (not of limits and access modes).
    EAccessMode accessMode() const;
    /// The mode as far as pIsAvailable and pIsLocked do not matter: what an unverified write needs.
    virtual EAccessMode baseAccessMode() const;
    virtual int64_t integerValue(bool fresh);
    virtual double floatValue(bool fresh);
    virtual std::string textValue(bool verify, bool fresh);
    virtual void setInteger(int64_t value, bool verify);
    virtual void setFloat(double value, bool verify);
    virtual void setTextValue(const std::string &value, bool verify);
    virtual int64_t integerLimit(Limit limit) const;
    virtual double floatLimit(Limit limit) const;
    virtual bool hasIncrement() const
    {
        return false;
    }
    virtual EIncMode incrementMode() const
    {
        return noIncrement;
    }
    virtual ERepresentation representation() const
    {
        return _UndefinedRepresentation;
    }
    virtual std::string unit() const
    {
        return {};
    }
    virtual EDisplayNotation displayNotation() const
    {
        return _UndefinedEDisplayNotation;
    }
    virtual int64_t displayPrecision() const
    {
        return -1;
    }
    virtual int64_t greatestLength()
    {
        return 0;
    }

    // Caches and changes.
    /// Something that this node depends on changed: forget what was computed. Registers forget their bytes too.
    virtual void forget();
    /// The same for the access mode and value of this node alone, bytes of registers stay.
    void forgetComputed();
    bool poll(int64_t elapsedMs);
    void fire(ECallbackType type);
    bool hasCallbacks() const
    {
        return m_callbacks && !m_callbacks->empty();
    }
    /// Mark of the change that this node was collected for last.
    uint64_t changeMark = 0;
    /// Mark of the list that this node was put into last.
    mutable uint64_t listMark = 0;

    static constexpr std::size_t Nowhere = static_cast<std::size_t>(-1);
    /// Index in the map's list of nodes.
    std::size_t position = Nowhere;

    // The graph; filled by Dependencies.
    /// Number of the cycle of nodes that read each other, 0 for a node in none.
    uint32_t cycle = 0;
    std::vector<Node *> parents;
    std::vector<Node *> dependents;
    /// Everything that depends on this node, directly or not; made at the first write.
    std::unique_ptr<std::vector<Node *>> dependentClosure;

    /// States that must not be entered twice at a time.
    mutable Evaluation::Flags evaluating = 0;

protected:
    /// Takes one child element; false if the kind does not know it.
    virtual bool take(Tag tag, pugi::xml_node child, NodeBuilder &builder);
    /// Follows after the last child element.
    virtual void loaded(NodeBuilder &) { }

    /// False if nothing is left of the node even with open gates.
    virtual bool isOwnImplemented() const
    {
        return true;
    }
    /// The mode as the kind of node has it, without gates, imposed mode and locks.
    virtual EAccessMode ownAccessMode() const
    {
        return RW;
    }
    virtual EAccessMode ownBaseAccessMode() const
    {
        return ownAccessMode();
    }
    virtual EAccessMode computedAccessMode() const;
    virtual ECachingMode ownCachingMode() const
    {
        return WriteThrough;
    }

    NodeMap &m_map;
    mutable bool m_valueValid = false;

private:
    EAccessMode modeOfGates() const;
    EAccessMode modeOfLinks() const;
    bool isAccessModeCachable() const;
    std::optional<std::string> ownProperty(const std::string &name) const;

    const NodeRecord m_record;
    std::bitset<static_cast<std::size_t>(Tag::Count)> m_elements; // the kinds of child elements
    std::vector<Link> m_links;
    Node *m_implemented = nullptr;
    Node *m_available = nullptr;
    Node *m_locked = nullptr;
    std::unique_ptr<std::vector<CNodeCallback *>> m_callbacks;
    int64_t m_pollingTime = -1;
    int64_t m_pollAge = 0;
    EVisibility m_visibility = Beginner;
    EAccessMode m_imposedAccess = RW;
    mutable EAccessMode m_access = _UndefinedAccesMode; // the cached one
    mutable ECachingMode m_caching = _UndefinedCachingMode;
    mutable signed char m_accessCachable = -1;
    bool m_streamable = false;
    bool m_deprecated = false;
    bool m_feature = false;
    mutable bool m_broken = false;
};

/// The worse of two modes: NI, NA, then what neither restricts; RO with WO leaves nothing.
EAccessMode combined(EAccessMode a, EAccessMode b);

} // namespace NodeEngine
