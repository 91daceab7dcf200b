// SPDX-License-Identifier: MIT
#include "RegisterSource.h"

#include "NodeLoader.h"
#include "NumberText.h"
#include "PortNode.h"
#include "Refusals.h"
#include "WordTables.h"

#include <GenApi/GenApi.h>

#include <algorithm>

namespace NodeEngine {

namespace {

// What a wrong or lying description may ask for at most.
constexpr int64_t GreatestRegister = int64_t{16} * 1024 * 1024;

int64_t sum(int64_t a, int64_t b)
{
    return static_cast<int64_t>(static_cast<uint64_t>(a) + static_cast<uint64_t>(b));
}

int64_t product(int64_t a, int64_t b)
{
    return static_cast<int64_t>(static_cast<uint64_t>(a) * static_cast<uint64_t>(b));
}

int64_t numberOf(pugi::xml_node element)
{
    return integerOfDescription(textOf(element)).value_or(0);
}

} // namespace

bool RegisterSource::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    switch (tag) {
    case Tag::Address:
        m_address = sum(m_address, numberOf(child));
        return true;
    case Tag::pAddress:
        if (Node *node = loader.link(m_owner, tag, child))
            m_addresses.push_back(node);
        return true;
    case Tag::IntSwissKnife: // an address formula that stands inside of the register
        if (Node *node = loader.addInner({tag, child.attribute("Name").value(), child, {}})) {
            loader.link(m_owner, Tag::pAddress, *node);
            m_addresses.push_back(node);
        } else {
            m_owner.setBroken();
        }
        return true;
    case Tag::pIndex:
        takeIndex(child, loader);
        return true;
    case Tag::Length:
        m_length = numberOf(child);
        return true;
    case Tag::pLength:
        m_lengthNode = loader.link(m_owner, tag, child);
        return true;
    case Tag::AccessMode:
        m_mode = accessModeOf(textOf(child), GenApi::RO);
        return true;
    case Tag::pPort:
        m_port = dynamic_cast<PortNode *>(loader.link(m_owner, tag, child));
        return true;
    case Tag::Cachable:
        m_caching = cachingModeOf(textOf(child));
        return true;
    case Tag::Endianess:
        m_isBigEndian = textOf(child) == "BigEndian";
        return true;
    default:
        return false;
    }
}

void RegisterSource::takeIndex(pugi::xml_node child, NodeLoader &loader)
{
    Node *node = loader.link(m_owner, Tag::pIndex, child);
    if (!node)
        return;
    const std::string_view offset = child.attribute("Offset").value();
    const std::string_view offsetName = child.attribute("pOffset").value();
    Node *offsetNode = offsetName.empty() ? nullptr : loader.link(m_owner, Tag::pAddress, offsetName);
    m_indexes.push_back({node, integerOfDescription(offset), offsetNode});
}

void RegisterSource::loaded(NodeLoader &loader)
{
    if (m_port)
        return;
    loader.warn("register '" + m_owner.name() + "' has no port");
    m_owner.setBroken();
}

GenApi::EAccessMode RegisterSource::accessMode() const
{
    return combined(m_mode, m_port ? m_port->accessMode() : GenApi::NI);
}

GenApi::EAccessMode RegisterSource::baseAccessMode() const
{
    return combined(m_mode, m_port ? m_port->baseAccessMode() : GenApi::NI);
}

int64_t RegisterSource::address() const
{
    int64_t address = m_address;
    for (Node *node : m_addresses)
        address = sum(address, node->integerValue(false));
    for (const Index &index : m_indexes) {
        const int64_t offset =
            index.offsetNode ? index.offsetNode->integerValue(false) : (index.offset ? *index.offset : length());
        address = sum(address, product(index.node->integerValue(false), offset));
    }
    return address;
}

int64_t RegisterSource::length() const
{
    const int64_t length = m_lengthNode ? m_lengthNode->integerValue(false) : m_length;
    if (length < 0)
        throw GenICam::RuntimeException("The register has a negative length.", __FILE__, __LINE__, "",
                                        m_owner.name().c_str(), "RuntimeException");
    return std::min(length, GreatestRegister);
}

CacheLine &RegisterSource::line()
{
    if (!m_port)
        refuse(m_owner, "Node has no port.", "Read()");
    const bool isFixed = m_addresses.empty() && m_indexes.empty() && !m_lengthNode;
    if (m_line && isFixed)
        return *m_line;
    CacheLine &line = m_port->cache().line(address(), length());
    if (&line != m_line && std::find(line.users.begin(), line.users.end(), this) == line.users.end())
        line.users.push_back(this);
    m_line = &line;
    return line;
}

const std::vector<uint8_t> &RegisterSource::read(bool fresh)
{
    CacheLine &current = line();
    const bool isDue = fresh || !current.isValid || m_owner.cachingMode() == GenApi::NoCache;
    if (isDue && current.length() > 0)
        refresh(current);
    return current.bytes;
}

void RegisterSource::refresh(CacheLine &line)
{
    // Zeros where a port that answers short leaves the buffer alone.
    std::vector<uint8_t> bytes(line.bytes.size(), 0);
    m_port->Read(bytes.data(), line.address, line.length());
    const bool isNews = line.wasRead && bytes != line.bytes;
    line.bytes = std::move(bytes);
    line.isValid = line.wasRead = true;
    if (!isNews)
        return;
    for (RegisterSource *user : line.users)
        m_changes.forgetDependents(user->m_owner);
}

void RegisterSource::write(const std::vector<uint8_t> &bytes)
{
    if (bytes.empty())
        return;
    CacheLine &current = line();
    m_port->Write(bytes.data(), current.address, static_cast<int64_t>(bytes.size()));
    current.isValid = m_owner.cachingMode() == GenApi::WriteThrough;
    if (current.isValid)
        current.bytes = bytes;
    tellOthers(current);
}

void RegisterSource::tellOthers(const CacheLine &line)
{
    for (RegisterSource *user : line.users) {
        if (user != this && user->m_line == &line && (user->m_mask & m_mask) != 0)
            m_changes.changed(user->m_owner);
    }
    for (CacheLine *other : m_port->cache().overlapping(line)) {
        other->isValid = false;
        for (RegisterSource *user : other->users) {
            if (user->m_line == other)
                m_changes.changed(user->m_owner);
        }
    }
}

void RegisterSource::forget()
{
    if (m_line)
        m_line->isValid = false;
}

} // namespace NodeEngine
