// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace NodeEngine {

/// Elements of a camera description: the nodes, then what stands inside of them. Named as in the GenApi schema.
enum class Tag : uint8_t {
    Unknown,

    Category,
    Integer,
    IntReg,
    MaskedIntReg,
    IntSwissKnife,
    IntConverter,
    Float,
    FloatReg,
    Converter,
    SwissKnife,
    Enumeration,
    EnumEntry,
    Boolean,
    Command,
    String,
    StringReg,
    Register,
    Port,
    Node,
    StructReg,
    StructEntry,
    Group,

    Extension,
    ToolTip,
    Description,
    DisplayName,
    Visibility,
    DocuURL,
    IsDeprecated,
    EventID,
    pIsImplemented,
    pIsAvailable,
    pIsLocked,
    pBlockPolling,
    ImposedAccessMode,
    pError,
    pAlias,
    pCastAlias,
    pInvalidator,
    Streamable,
    PollingTime,
    Cachable,
    pSelected,
    pFeature,

    Value,
    pValue,
    pValueCopy,
    pIndex,
    ValueIndexed,
    pValueIndexed,
    ValueDefault,
    pValueDefault,
    Min,
    pMin,
    Max,
    pMax,
    Inc,
    pInc,
    ValidValueSet,
    Unit,
    Representation,
    DisplayNotation,
    DisplayPrecision,

    Address,
    pAddress,
    Length,
    pLength,
    AccessMode,
    pPort,
    LSB,
    MSB,
    Bit,
    Sign,
    Endianess,

    pVariable,
    Constant,
    Expression,
    Formula,
    FormulaTo,
    FormulaFrom,
    Slope,
    IsLinear,

    OnValue,
    OffValue,
    CommandValue,
    pCommandValue,
    NumericValue,
    Symbolic,
    IsSelfClearing,

    ChunkID,
    pChunkID,
    SwapEndianess,

    Count
};

/// Unknown for anything that is not in the list.
Tag tagOf(std::string_view name);
const char *tagName(Tag tag);

constexpr bool isNodeTag(Tag tag)
{
    return tag >= Tag::Category && tag <= Tag::Node;
}

} // namespace NodeEngine
