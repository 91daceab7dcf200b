// SPDX-License-Identifier: MIT
#include <Base/GCException.h>
#include <GenApi/EnumClasses.h>

#include <cstring>
#include <utility>

namespace GENAPI_NAMESPACE {

namespace {

template <class Enum>
using Name = std::pair<Enum, const char *>;

constexpr Name<EAccessMode> AccessModes[] = {{NI, "NI"}, {NA, "NA"}, {WO, "WO"},
                                             {RO, "RO"}, {RW, "RW"}, {_UndefinedAccesMode, "_UndefinedAccesMode"}};
constexpr Name<EVisibility> Visibilities[] = {{Beginner, "Beginner"},
                                              {Expert, "Expert"},
                                              {Guru, "Guru"},
                                              {Invisible, "Invisible"},
                                              {_UndefinedVisibility, "_UndefinedVisibility"}};
constexpr Name<ERepresentation> Representations[] = {
    {Linear, "Linear"},         {Logarithmic, "Logarithmic"},
    {Boolean, "Boolean"},       {PureNumber, "PureNumber"},
    {HexNumber, "HexNumber"},   {IPV4Address, "IPV4Address"},
    {MACAddress, "MACAddress"}, {_UndefinedRepresentation, "_UndefinedRepresentation"}};
constexpr Name<EIncMode> IncModes[] = {
    {fixedIncrement, "fixedIncrement"}, {listIncrement, "listIncrement"}, {noIncrement, "noIncrement"}};
constexpr Name<ENameSpace> NameSpaces[] = {
    {Custom, "Custom"}, {Standard, "Standard"}, {_UndefinedNameSpace, "_UndefinedNameSpace"}};
constexpr Name<ECachingMode> CachingModes[] = {{NoCache, "NoCache"},
                                               {WriteThrough, "WriteThrough"},
                                               {WriteAround, "WriteAround"},
                                               {_UndefinedCachingMode, "_UndefinedCachingMode"}};
constexpr Name<EDisplayNotation> DisplayNotations[] = {{fnAutomatic, "Automatic"},
                                                       {fnFixed, "Fixed"},
                                                       {fnScientific, "Scientific"},
                                                       {_UndefinedEDisplayNotation, "_UndefinedEDisplayNotation"}};
constexpr Name<EYesNo> YesNo[] = {{Yes, "Yes"}, {No, "No"}, {_UndefinedYesNo, "_UndefinedYesNo"}};
constexpr Name<EEndianess> Endianesses[] = {
    {BigEndian, "BigEndian"}, {LittleEndian, "LittleEndian"}, {_UndefinedEndian, "_UndefinedEndian"}};
constexpr Name<ESign> Signs[] = {{Signed, "Signed"}, {Unsigned, "Unsigned"}, {_UndefinedSign, "_UndefinedSign"}};
constexpr Name<ESlope> Slopes[] = {{Increasing, "Increasing"},
                                   {Decreasing, "Decreasing"},
                                   {Varying, "Varying"},
                                   {Automatic, "Automatic"},
                                   {_UndefinedESlope, "_UndefinedESlope"}};

// In every table the last value stands for all that is unknown.
template <class Enum, size_t Count>
const char *textOf(const Name<Enum> (&names)[Count], Enum value)
{
    for (const Name<Enum> &name : names) {
        if (name.first == value)
            return name.second;
    }
    return names[Count - 1].second;
}

template <class Enum, size_t Count>
bool parse(const Name<Enum> (&names)[Count], const char *text, Enum *value)
{
    *value = names[Count - 1].first;
    for (const Name<Enum> &name : names) {
        if (std::strcmp(name.second, text) == 0) {
            *value = name.first;
            return true;
        }
    }
    return false;
}

} // namespace

// NOLINTBEGIN(bugprone-macro-parentheses): the arguments are a type and a table
#define GENAPI_ENUM_TEXTS(Enum, names)                                                                                 \
    bool Enum##Class::FromString(const gcstring &text, Enum *value)                                                    \
    {                                                                                                                  \
        return parse(names, text, value);                                                                              \
    }                                                                                                                  \
    void Enum##Class::ToString(gcstring &text, Enum *value)                                                            \
    {                                                                                                                  \
        text = textOf(names, *value);                                                                                  \
    }                                                                                                                  \
    gcstring Enum##Class::ToString(Enum value)                                                                         \
    {                                                                                                                  \
        return textOf(names, value);                                                                                   \
    }
// NOLINTEND(bugprone-macro-parentheses)

GENAPI_ENUM_TEXTS(EAccessMode, AccessModes)
GENAPI_ENUM_TEXTS(EVisibility, Visibilities)
GENAPI_ENUM_TEXTS(ERepresentation, Representations)
GENAPI_ENUM_TEXTS(EIncMode, IncModes)
GENAPI_ENUM_TEXTS(ENameSpace, NameSpaces)
GENAPI_ENUM_TEXTS(ECachingMode, CachingModes)
GENAPI_ENUM_TEXTS(EDisplayNotation, DisplayNotations)
GENAPI_ENUM_TEXTS(EYesNo, YesNo)
GENAPI_ENUM_TEXTS(EEndianess, Endianesses)
GENAPI_ENUM_TEXTS(ESign, Signs)
GENAPI_ENUM_TEXTS(ESlope, Slopes)

} // namespace GENAPI_NAMESPACE
