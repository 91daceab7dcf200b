// SPDX-License-Identifier: MIT
#include "Node.h"

#include "Dependencies.h"
#include "NodeBuilder.h"
#include "NodeMap.h"
#include "NumberText.h"
#include "WordTables.h"

#include <GenApi/IValue.h>
#include <GenApi/NodeCallback.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace NodeEngine {

Node::Node(NodeMap &map, const NodeRecord &record) : m_map(map), m_record(record) { }

Node::~Node()
{
    if (!m_callbacks)
        return;
    for (CNodeCallback *callback : *m_callbacks)
        callback->Destroy();
}

void Node::load(NodeBuilder &builder)
{
    for (const pugi::xml_node &parent : {m_record.structure, m_record.element}) {
        for (pugi::xml_node child = parent.first_child(); child; child = child.next_sibling()) {
            if (child.type() != pugi::node_element)
                continue;
            const Tag tag = tagOf(child.name());
            m_elements.set(static_cast<std::size_t>(tag));
            take(tag, child, builder);
        }
    }
    loaded(builder);
    m_links.shrink_to_fit();
}

bool Node::take(Tag tag, pugi::xml_node child, NodeBuilder &builder)
{
    switch (tag) {
    case Tag::Visibility:
        m_visibility = visibilityOf(textOf(child));
        return true;
    case Tag::IsDeprecated:
        m_deprecated = textOf(child) == "Yes";
        return true;
    case Tag::Streamable:
        m_streamable = textOf(child) == "Yes";
        return true;
    case Tag::ImposedAccessMode:
        m_imposedAccess = accessModeOf(textOf(child), RW);
        return true;
    case Tag::PollingTime:
        m_pollingTime = integerOfDescription(textOf(child)).value_or(-1);
        if (m_pollingTime > 0)
            builder.addPolled(*this);
        return true;
    case Tag::pIsImplemented:
        m_implemented = builder.link(*this, tag, child);
        return true;
    case Tag::pIsAvailable:
        m_available = builder.link(*this, tag, child);
        return true;
    case Tag::pIsLocked:
        m_locked = builder.link(*this, tag, child);
        return true;
    case Tag::pInvalidator:
    case Tag::pSelected:
    case Tag::pAlias:
    case Tag::pCastAlias:
    case Tag::pError:
    case Tag::pBlockPolling:
        builder.link(*this, tag, child);
        return true;
    default:
        return false;
    }
}

Node *Node::linked(Tag role) const
{
    const auto found = std::find_if(m_links.begin(), m_links.end(), [role](const Link &l) { return l.role == role; });
    return found == m_links.end() ? nullptr : found->target;
}

const char *Node::text(Tag tag) const
{
    if (!hasElement(tag))
        return "";
    const pugi::xml_node own = m_record.element.child(tagName(tag));
    return (own ? own : m_record.structure.child(tagName(tag))).text().get();
}

bool Node::isRegister() const
{
    switch (tag()) {
    case Tag::IntReg:
    case Tag::MaskedIntReg:
    case Tag::FloatReg:
    case Tag::StringReg:
    case Tag::Register:
        return true;
    default:
        return false;
    }
}

gcstring Node::GetName(bool fullQualified) const
{
    if (!fullQualified)
        return gcstring(m_record.name.data(), m_record.name.size());
    return ((GetNameSpace() == Standard ? "Std::" : "Cust::") + name()).c_str();
}

ENameSpace Node::GetNameSpace() const
{
    return std::string_view(m_record.element.attribute("NameSpace").value()) == "Standard" ? Standard : Custom;
}

EVisibility Node::GetVisibility() const
{
    return m_visibility;
}

void Node::ImposeVisibility(EVisibility visibility)
{
    AutoLock lock(m_map.GetLock());
    m_visibility = std::max(m_visibility, visibility);
}

gcstring Node::GetDisplayName() const
{
    const char *own = text(Tag::DisplayName);
    return *own ? gcstring(own) : GetName(false);
}

gcstring Node::GetDeviceName() const
{
    return m_map.deviceName().c_str();
}

INodeMap *Node::GetNodeMap() const
{
    return &m_map;
}

void Node::GetParents(NodeList_t &list) const
{
    AutoLock lock(m_map.GetLock());
    m_map.connect();
    list.clear();
    for (Node *parent : parents)
        list.push_back(parent);
}

void Node::GetSelectedFeatures(FeatureList_t &features) const
{
    AutoLock lock(m_map.GetLock());
    features.clear();
    const uint64_t mark = ++m_map.listMark;
    listMark = mark;
    std::vector<const Node *> reached{this};
    for (std::size_t i = 0; i < reached.size(); ++i) {
        for (const Link &link : reached[i]->m_links) {
            if (link.role != Tag::pSelected || link.target->listMark == mark)
                continue;
            link.target->listMark = mark;
            reached.push_back(link.target);
            if (link.target->asValue())
                features.push_back(link.target->asValue());
        }
    }
}

void Node::GetSelectingFeatures(FeatureList_t &features) const
{
    features.clear();
    for (Node *node : m_map.nodes()) {
        const auto selectsThis = [this](const Link &l) { return l.role == Tag::pSelected && l.target == this; };
        if (node->asValue() && std::any_of(node->m_links.begin(), node->m_links.end(), selectsThis))
            features.push_back(node->asValue());
    }
}

// The protocol, as far as kinds of nodes have it in common.

int64_t Node::integerValue(bool fresh)
{
    const double value = floatValue(fresh);
    if (std::isnan(value))
        refuse("The value is not a number.", "GetValue()");
    return saturatedInteger(value);
}

double Node::floatValue(bool)
{
    throw LogicalErrorException("Node has no number.", __FILE__, __LINE__, "", name().c_str(), "LogicalErrorException");
}

std::string Node::textValue(bool, bool)
{
    refuse("Node is not readable", "ToString()");
}

void Node::setInteger(int64_t, bool)
{
    refuse("Node is not writable.", "SetValue()");
}

void Node::setFloat(double, bool)
{
    refuse("Node is not writable.", "SetValue()");
}

void Node::setTextValue(const std::string &, bool)
{
    refuse("Node is not writable.", "FromString()");
}

int64_t Node::integerLimit(Limit limit) const
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

double Node::floatLimit(Limit limit) const
{
    return static_cast<double>(integerLimit(limit));
}

// Caches, changes and callbacks.

void Node::forgetComputed()
{
    m_valueValid = false;
    m_access = _UndefinedAccesMode;
}

void Node::forget()
{
    forgetComputed();
}

void Node::InvalidateNode()
{
    m_map.change([this] { m_map.forgotten(*this); });
}

bool Node::poll(int64_t elapsedMs)
{
    m_pollAge += std::max<int64_t>(elapsedMs, 0);
    if (m_pollAge < m_pollingTime)
        return false;
    m_pollAge = 0;
    return true;
}

CallbackHandleType Node::RegisterCallback(CNodeCallback *callback)
{
    if (!callback)
        return 0;
    AutoLock lock(m_map.GetLock());
    if (!m_callbacks)
        m_callbacks = std::make_unique<std::vector<CNodeCallback *>>();
    m_callbacks->push_back(callback);
    return reinterpret_cast<CallbackHandleType>(callback);
}

bool Node::DeregisterCallback(CallbackHandleType handle)
{
    AutoLock lock(m_map.GetLock());
    auto *callback = reinterpret_cast<CNodeCallback *>(handle);
    if (!m_callbacks)
        return false;
    const auto found = std::find(m_callbacks->begin(), m_callbacks->end(), callback);
    if (found == m_callbacks->end())
        return false;
    m_callbacks->erase(found);
    m_map.dispose(callback);
    return true;
}

void Node::fire(ECallbackType type)
{
    // A callback may register and deregister callbacks, its own too.
    std::vector<CNodeCallback *> callbacks;
    const auto isRegistered = [this](CNodeCallback *callback) {
        AutoLock lock(m_map.GetLock());
        return std::find(m_callbacks->begin(), m_callbacks->end(), callback) != m_callbacks->end();
    };
    {
        AutoLock lock(m_map.GetLock());
        callbacks = *m_callbacks;
    }
    for (CNodeCallback *callback : callbacks) {
        if (isRegistered(callback))
            (*callback)(type);
    }
}

} // namespace NodeEngine
