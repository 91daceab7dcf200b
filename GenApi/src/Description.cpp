// SPDX-License-Identifier: MIT
#include "Description.h"

#include "LoadLog.h"

#include <Base/GCException.h>

namespace NodeEngine {

namespace {

constexpr unsigned ParseOptions = pugi::parse_escapes | pugi::parse_eol | pugi::parse_cdata | pugi::parse_trim_pcdata
    | pugi::parse_embed_pcdata | pugi::parse_wconv_attribute;

} // namespace

std::string_view textOf(pugi::xml_node element)
{
    std::string_view text = element.text().get();
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

Description::Description(std::string text, LoadLog &log) : m_text(std::move(text))
{
    const pugi::xml_parse_result result =
        m_tree.load_buffer_inplace(m_text.data(), m_text.size(), ParseOptions, pugi::encoding_utf8);
    if (!result)
        throw RUNTIME_EXCEPTION("Error while parsing the camera description at byte %lld: %s",
                                static_cast<long long>(result.offset), result.description());
    if (std::string_view(m_tree.document_element().name()) != "RegisterDescription")
        throw RUNTIME_EXCEPTION(
            "This is no camera description: its outermost element is '%s', not 'RegisterDescription'",
            m_tree.document_element().name());
    collect(log);
}

void Description::collect(LoadLog &log)
{
    // Groups nest as deep as the file likes: walk without recursion.
    const pugi::xml_node root = m_tree.document_element();
    pugi::xml_node current = root.first_child();
    pugi::xml_node parent = root;
    while (true) {
        if (!current) {
            if (parent == root)
                return;
            current = parent.next_sibling();
            parent = parent.parent();
            continue;
        }
        const Tag tag = tagOf(current.name());
        if (tag == Tag::Group || tag == Tag::StructReg) {
            parent = current;
            current = current.first_child();
            continue;
        }
        const bool inStructure = tagOf(parent.name()) == Tag::StructReg;
        if (!inStructure || tag == Tag::StructEntry)
            add(tag, current, inStructure ? parent : pugi::xml_node(), log);
        current = current.next_sibling();
    }
}

void Description::add(Tag tag, pugi::xml_node element, pugi::xml_node structure, LoadLog &log)
{
    if (element.type() != pugi::node_element || tag == Tag::Extension)
        return;
    const std::string_view name = element.attribute("Name").value();
    if (!isNodeTag(tag) && tag != Tag::StructEntry)
        log.warn("element '" + std::string(element.name()) + "' is not known and left out");
    else if (name.empty())
        log.warn("a node of kind '" + std::string(element.name()) + "' without a name is left out");
    else
        m_nodes.push_back({tag == Tag::StructEntry ? Tag::MaskedIntReg : tag, name, element, structure});
}

NodeRecord Description::entry(std::string_view enumeration, pugi::xml_node element)
{
    constexpr std::string_view Prefix = "EnumEntry_";
    const std::string_view name = element.attribute("Name").value();
    std::string &whole = m_entryNames.emplace_back();
    whole.reserve(Prefix.size() + enumeration.size() + 1 + name.size());
    whole.append(Prefix).append(enumeration).append("_").append(name);
    return {Tag::EnumEntry, whole, element, {}};
}

} // namespace NodeEngine
