// SPDX-License-Identifier: MIT
#include "PublicNode.h"

#include "Caching.h"
#include "NodeLoader.h"
#include "NodeProperties.h"
#include "NodeRelations.h"
#include "NumberText.h"
#include "Refusals.h"

#include <cmath>
#include <limits>

namespace NodeEngine {

PublicNode::PublicNode(NodeContext &context, const NodeRecord &record)
    : Node(record), m_context(context), m_evaluation(context.evaluations, record.name)
{ }

// --- loading

void PublicNode::load(NodeLoader &loader)
{
    for (const pugi::xml_node &parent : m_description.elements()) {
        for (pugi::xml_node child = parent.first_child(); child; child = child.next_sibling()) {
            if (child.type() != pugi::node_element)
                continue;
            const Tag tag = tagOf(child.name());
            if (!m_description.take(tag, child))
                take(tag, child, loader);
        }
    }
    loaded(loader);
    m_links.shrink_to_fit();
}

bool PublicNode::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    switch (tag) {
    case Tag::PollingTime:
        m_pollingTime = integerOfDescription(textOf(child)).value_or(-1);
        if (m_pollingTime > 0)
            loader.addPolled(*this, m_pollingTime);
        return true;
    case Tag::pInvalidator:
    case Tag::pSelected:
    case Tag::pAlias:
    case Tag::pCastAlias:
    case Tag::pError:
    case Tag::pBlockPolling:
        loader.link(*this, tag, child);
        return true;
    default:
        return m_gates.take(*this, tag, child, loader);
    }
}

// --- INode and ISelector

GenICam::gcstring PublicNode::GetName(bool fullQualified) const
{
    if (!fullQualified)
        return GenICam::gcstring(m_description.nameView().data(), m_description.nameView().size());
    return ((GetNameSpace() == GenApi::Standard ? "Std::" : "Cust::") + name()).c_str();
}

GenICam::gcstring PublicNode::GetDisplayName() const
{
    const char *own = text(Tag::DisplayName);
    return *own ? GenICam::gcstring(own) : GetName(false);
}

GenApi::EAccessMode PublicNode::GetAccessMode() const
{
    const GenApi::AutoLock lock(m_context.lock);
    return accessMode();
}

void PublicNode::ImposeAccessMode(GenApi::EAccessMode mode)
{
    m_context.changes.change([this, mode] {
        m_gates.impose(mode);
        m_context.changes.changed(*this);
    });
}

void PublicNode::ImposeVisibility(GenApi::EVisibility visibility)
{
    const GenApi::AutoLock lock(m_context.lock);
    m_description.imposeVisibility(visibility);
}

GenApi::EYesNo PublicNode::IsAccessModeCacheable() const
{
    const GenApi::AutoLock lock(m_context.lock);
    return isAccessModeCachable() ? GenApi::Yes : GenApi::No;
}

GenApi::ECachingMode PublicNode::GetCachingMode() const
{
    const GenApi::AutoLock lock(m_context.lock);
    return cachingMode();
}

void PublicNode::InvalidateNode()
{
    m_context.changes.change([this] { m_context.changes.forgotten(*this); });
}

GenApi::INode *PublicNode::linkedNode(Tag role) const
{
    Node *node = linked(role);
    return node ? &node->asNode() : nullptr;
}

void PublicNode::GetChildren(GenApi::NodeList_t &children, GenApi::ELinkType type) const
{
    const GenApi::AutoLock lock(m_context.lock);
    listChildren(*this, type, m_context.graph, children);
}

void PublicNode::GetParents(GenApi::NodeList_t &parents) const
{
    const GenApi::AutoLock lock(m_context.lock);
    listParents(*this, m_context.graph, parents);
}

void PublicNode::GetSelectedFeatures(GenApi::FeatureList_t &features) const
{
    const GenApi::AutoLock lock(m_context.lock);
    listSelected(*this, m_context.graph, features);
}

void PublicNode::GetSelectingFeatures(GenApi::FeatureList_t &features) const
{
    listSelecting(*this, m_context.graph, features);
}

void PublicNode::GetPropertyNames(GenICam::gcstring_vector &names) const
{
    const GenApi::AutoLock lock(m_context.lock);
    names.clear();
    for (const std::string &name : NodeProperties(*this, *this, m_gates.imposed()).names())
        names.push_back(name.c_str());
}

bool PublicNode::GetProperty(const GenICam::gcstring &name, GenICam::gcstring &value, GenICam::gcstring &attribute)
{
    const GenApi::AutoLock lock(m_context.lock);
    const std::optional<NodeProperty> property = NodeProperties(*this, *this, m_gates.imposed()).find(name.c_str());
    value = property ? property->value.c_str() : "";
    attribute = property ? property->attribute.c_str() : "";
    return property.has_value();
}

GenApi::CallbackHandleType PublicNode::RegisterCallback(GenApi::CNodeCallback *callback)
{
    if (!callback)
        return 0;
    const GenApi::AutoLock lock(m_context.lock);
    callbacks().add(callback);
    return reinterpret_cast<GenApi::CallbackHandleType>(callback);
}

bool PublicNode::DeregisterCallback(GenApi::CallbackHandleType handle)
{
    const GenApi::AutoLock lock(m_context.lock);
    auto *callback = reinterpret_cast<GenApi::CNodeCallback *>(handle);
    if (!callbacks().remove(callback))
        return false;
    m_context.changes.dispose(callback);
    return true;
}

// --- access mode and caching

GenApi::EAccessMode PublicNode::accessMode() const
{
    if (m_accessMode != GenApi::_UndefinedAccesMode)
        return m_accessMode;
    const GenApi::EAccessMode mode = computedAccessMode();
    if (isAccessModeCachable())
        m_accessMode = mode;
    return mode;
}

GenApi::EAccessMode PublicNode::computedAccessMode() const
{
    if (isBroken())
        return GenApi::NA;
    const Evaluation step(m_evaluation, Evaluation::Access);
    if (!step.isEntered())
        return GenApi::RW; // modes that depend on each other do not restrict each other
    GenApi::EAccessMode mode = m_gates.mode();
    if (mode != GenApi::RW)
        return isOwnImplemented() ? mode : GenApi::NI;
    mode = combined(modeOfLinks(*this, m_context.graph), ownAccessMode());
    if (isBroken()) // only now found out
        return GenApi::NA;
    return m_gates.restricted(mode);
}

GenApi::EAccessMode PublicNode::baseAccessMode() const
{
    if (isBroken())
        return GenApi::NA;
    const Evaluation step(m_evaluation, Evaluation::Access);
    if (!step.isEntered())
        return GenApi::RW;
    return m_gates.isImplemented() ? combined(ownBaseAccessMode(), m_gates.imposed()) : GenApi::NI;
}

bool PublicNode::isAccessModeCachable() const
{
    if (m_isAccessModeCachable != GenApi::_UndefinedYesNo)
        return m_isAccessModeCachable == GenApi::Yes;
    const Evaluation step(m_evaluation, Evaluation::Look);
    if (!step.isEntered())
        return true;
    const bool isCachable = isAccessModeCachableAlong(links(), isRegister());
    m_isAccessModeCachable = isCachable ? GenApi::Yes : GenApi::No;
    return isCachable;
}

GenApi::ECachingMode PublicNode::cachingMode() const
{
    if (m_cachingMode != GenApi::_UndefinedCachingMode)
        return m_cachingMode;
    const Evaluation step(m_evaluation, Evaluation::Caching);
    if (!step.isEntered())
        return GenApi::NoCache;
    m_cachingMode = cachingModeAlong(links(), ownCachingMode());
    return m_cachingMode;
}

// --- the value of kinds that have none, or only one of the two numbers

int64_t PublicNode::integerValue(bool fresh)
{
    const double value = floatValue(fresh);
    if (std::isnan(value))
        refuse(*this, "The value is not a number.", "GetValue()");
    return saturatedInteger(value);
}

double PublicNode::floatValue(bool)
{
    throw GenICam::LogicalErrorException("Node has no number.", __FILE__, __LINE__, "", name().c_str(),
                                         "LogicalErrorException");
}

std::string PublicNode::textValue(bool, bool)
{
    refuse(*this, "Node is not readable", "ToString()");
}

void PublicNode::setInteger(int64_t, bool)
{
    refuse(*this, "Node is not writable.", "SetValue()");
}

void PublicNode::setFloat(double, bool)
{
    refuse(*this, "Node is not writable.", "SetValue()");
}

void PublicNode::setTextValue(const std::string &, bool)
{
    refuse(*this, "Node is not writable.", "FromString()");
}

int64_t PublicNode::integerLimit(Limit limit) const
{
    switch (limit) {
    case Limit::Min:
        return std::numeric_limits<int64_t>::min();
    case Limit::Max:
        return std::numeric_limits<int64_t>::max();
    case Limit::Inc:
        break;
    }
    return 1;
}

double PublicNode::floatLimit(Limit limit) const
{
    return static_cast<double>(integerLimit(limit));
}

} // namespace NodeEngine
