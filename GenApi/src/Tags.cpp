// SPDX-License-Identifier: MIT
#include "Tags.h"

#include <array>

namespace NodeEngine {

namespace {

// In the order of the enumeration.
constexpr const char *Names[] = {
    "",
    "Category",
    "Integer",
    "IntReg",
    "MaskedIntReg",
    "IntSwissKnife",
    "IntConverter",
    "Float",
    "FloatReg",
    "Converter",
    "SwissKnife",
    "Enumeration",
    "EnumEntry",
    "Boolean",
    "Command",
    "String",
    "StringReg",
    "Register",
    "Port",
    "Node",
    "StructReg",
    "StructEntry",
    "Group",
    "Extension",
    "ToolTip",
    "Description",
    "DisplayName",
    "Visibility",
    "DocuURL",
    "IsDeprecated",
    "EventID",
    "pIsImplemented",
    "pIsAvailable",
    "pIsLocked",
    "pBlockPolling",
    "ImposedAccessMode",
    "pError",
    "pAlias",
    "pCastAlias",
    "pInvalidator",
    "Streamable",
    "PollingTime",
    "Cachable",
    "pSelected",
    "pFeature",
    "Value",
    "pValue",
    "pValueCopy",
    "pIndex",
    "ValueIndexed",
    "pValueIndexed",
    "ValueDefault",
    "pValueDefault",
    "Min",
    "pMin",
    "Max",
    "pMax",
    "Inc",
    "pInc",
    "ValidValueSet",
    "Unit",
    "Representation",
    "DisplayNotation",
    "DisplayPrecision",
    "Address",
    "pAddress",
    "Length",
    "pLength",
    "AccessMode",
    "pPort",
    "LSB",
    "MSB",
    "Bit",
    "Sign",
    "Endianess",
    "pVariable",
    "Constant",
    "Expression",
    "Formula",
    "FormulaTo",
    "FormulaFrom",
    "Slope",
    "IsLinear",
    "OnValue",
    "OffValue",
    "CommandValue",
    "pCommandValue",
    "NumericValue",
    "Symbolic",
    "IsSelfClearing",
    "ChunkID",
    "pChunkID",
    "SwapEndianess",
};
constexpr std::size_t NameCount = sizeof Names / sizeof Names[0];
static_assert(NameCount == static_cast<std::size_t>(Tag::Count));

// Open addressing, at most a third full: one comparison for nearly every name.
class TagTable
{
public:
    TagTable()
    {
        for (std::size_t i = 1; i < NameCount; ++i) {
            std::size_t slot = hash(Names[i]);
            while (!m_slots[slot % SlotCount].name.empty())
                ++slot;
            m_slots[slot % SlotCount] = {Names[i], static_cast<Tag>(i)};
        }
    }

    Tag find(std::string_view name) const
    {
        for (std::size_t slot = hash(name);; ++slot) {
            const Slot &candidate = m_slots[slot % SlotCount];
            if (candidate.name == name)
                return candidate.tag;
            if (candidate.name.empty())
                return Tag::Unknown;
        }
    }

private:
    struct Slot
    {
        std::string_view name;
        Tag tag = Tag::Unknown;
    };
    static constexpr std::size_t SlotCount = 512;
    static_assert(NameCount * 3 < SlotCount);

    // Of the length and three letters; the factors give each known name a slot of its own.
    static std::size_t hash(std::string_view name)
    {
        const auto letter = [name](std::size_t i) {
            return static_cast<std::size_t>(static_cast<unsigned char>(name[i]));
        };
        return name.size() * 13 + letter(0) * 11 + letter(name.size() - 1) * 17 + letter(name.size() / 2) * 29;
    }

    std::array<Slot, SlotCount> m_slots;
};

} // namespace

Tag tagOf(std::string_view name)
{
    static const TagTable Table;
    return name.empty() ? Tag::Unknown : Table.find(name);
}

const char *tagName(Tag tag)
{
    return Names[static_cast<std::size_t>(tag)];
}

} // namespace NodeEngine
