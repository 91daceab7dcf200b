// SPDX-License-Identifier: MIT
#pragma once

#include "Changes.h"
#include "Node.h"
#include "RegisterCache.h"

#include <optional>
#include <vector>

namespace NodeEngine {

class PortNode;

/// The register behind a register node: where it is, and its bytes as the device or the cache has them.
class RegisterSource
{
public:
    RegisterSource(Node &owner, Changes &changes) : m_owner(owner), m_changes(changes) { }

    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader);
    void loaded(NodeLoader &loader);

    GenApi::EAccessMode accessMode() const;
    GenApi::EAccessMode baseAccessMode() const;
    GenApi::ECachingMode cachingMode() const { return m_caching; }
    bool isBigEndian() const { return m_isBigEndian; }
    /// The bits of the register that the node shows; all for what is no masked integer.
    void setMask(uint64_t mask) { m_mask = mask; }

    /// \throws GenICam::RuntimeException if the sum is no address, or what it is summed from cannot be read
    int64_t address() const;
    /// In bytes; 0 for a register that is empty now, which is neither read nor written.
    int64_t length() const;
    /// The length as far as it is known without reading, else the greatest length of a number.
    int64_t constantLength() const { return m_lengthNode || m_length <= 0 ? 8 : m_length; }
    /// The register's bytes; read from the port if they are not cached, or `fresh` is asked for.
    const std::vector<uint8_t> &read(bool fresh);
    /// Writes all bytes of the register, and tells other nodes on the same bytes.
    void write(const std::vector<uint8_t> &bytes);
    /// The bytes are to be read again.
    void forget();

private:
    struct Index
    {
        Node *node;
        std::optional<int64_t> offset; ///< the register's length if there is none
        Node *offsetNode;
    };

    void takeIndex(pugi::xml_node child, NodeLoader &loader);
    CacheLine &line();
    void refresh(CacheLine &line);
    void tellOthers(const CacheLine &line);

    Node &m_owner;
    Changes &m_changes;
    PortNode *m_port = nullptr;
    std::vector<Node *> m_addresses;
    std::vector<Index> m_indexes;
    Node *m_lengthNode = nullptr;
    int64_t m_address = 0;
    int64_t m_length = 0;
    CacheLine *m_line = nullptr; // the one used last
    uint64_t m_mask = ~uint64_t(0);
    GenApi::EAccessMode m_mode = GenApi::RO;
    GenApi::ECachingMode m_caching = GenApi::WriteThrough;
    bool m_isBigEndian = false;
};

} // namespace NodeEngine
