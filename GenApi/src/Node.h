// SPDX-License-Identifier: MIT
#pragma once

#include "Links.h"
#include "NodeCallbacks.h"
#include "NodeDescription.h"
#include "NodeValue.h"

#include <GenApi/INode.h>
#include <GenApi/IValue.h>

#include <string>

namespace NodeEngine {

class NodeLoader;

/// A node as its map and other nodes know it: what describes it, what it links to, whether it can be read, its value.
/// Called with the map's lock held.
class Node : public NodeValue
{
public:
    static constexpr std::size_t Nowhere = static_cast<std::size_t>(-1);

    explicit Node(const NodeRecord &record) : m_description(record) { }
    Node(const Node &) = delete;
    Node &operator=(const Node &) = delete;

    const NodeDescription &description() const { return m_description; }
    std::string name() const { return m_description.name(); }
    Tag tag() const { return m_description.tag(); }
    const char *text(Tag tag) const { return m_description.text(tag); }
    bool isRegister() const;
    virtual GenApi::INode &asNode() = 0;
    /// The IValue side, or null for ports and plain nodes.
    virtual GenApi::IValue *asValue() { return nullptr; }
    NodeCallbacks &callbacks() { return m_callbacks; }

    const Links &links() const { return m_links; }
    /// The target of the first link of that role, or null.
    Node *linked(Tag role) const;
    /// Index in the list of nodes that NodeGraph keeps.
    std::size_t position() const { return m_position; }

    // While a description is being loaded.
    /// Reads everything below the node's element; called once.
    virtual void load(NodeLoader &loader) = 0;
    void addLink(const Link &link) { m_links.push_back(link); }
    void setPosition(std::size_t position) { m_position = position; }
    void setFeature() { m_description.setFeature(); }
    /// The node cannot work (dangling link, cycle, formula that does not parse): NA from now on.
    void setBroken() { m_broken = true; }
    bool isBroken() const { return m_broken; }

    virtual GenApi::EAccessMode accessMode() const = 0;
    /// The mode as far as pIsAvailable and pIsLocked do not matter: what an unverified write needs.
    virtual GenApi::EAccessMode baseAccessMode() const = 0;
    virtual bool isAccessModeCachable() const = 0;
    virtual GenApi::ECachingMode cachingMode() const = 0;
    bool hasCachableValue() const { return cachingMode() != GenApi::NoCache; }

    /// Something that this node depends on changed: forget what was computed. Registers forget their bytes too.
    virtual void forget() = 0;
    /// The same for the access mode and value of this node alone, bytes of registers stay.
    virtual void forgetComputed() = 0;

private:
    // What changes and lists need of every node comes first, so that they touch little memory.
    std::size_t m_position = Nowhere;
    NodeCallbacks m_callbacks;
    bool m_broken = false;

protected:
    Links m_links;
    NodeDescription m_description;
};

} // namespace NodeEngine
