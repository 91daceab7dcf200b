// SPDX-License-Identifier: MIT
#include <Base/GCException.h>
#include <GenApi/EnumClasses.h>

#include <cstring>
#include <utility>

namespace GENAPI_NAMESPACE {

namespace {

template <class Enum>
using Name = std::pair<Enum, const char *>;

constexpr Name<EAccessMode> accessModes[] = {{NI, "NI"}, {NA, "NA"}, {WO, "WO"},
                                             {RO, "RO"}, {RW, "RW"}, {_UndefinedAccesMode, "_UndefinedAccesMode"}};
constexpr Name<EVisibility> visibilities[] = {{Beginner, "Beginner"},
                                              {Expert, "Expert"},
                                              {Guru, "Guru"},
                                              {Invisible, "Invisible"},
                                              {_UndefinedVisibility, "_UndefinedVisibility"}};
constexpr Name<ERepresentation> representations[] = {
    {Linear, "Linear"},         {Logarithmic, "Logarithmic"},
    {Boolean, "Boolean"},       {PureNumber, "PureNumber"},
    {HexNumber, "HexNumber"},   {IPV4Address, "IPV4Address"},
    {MACAddress, "MACAddress"}, {_UndefinedRepresentation, "_UndefinedRepresentation"}};
constexpr Name<EIncMode> incModes[] = {
    {fixedIncrement, "fixedIncrement"}, {listIncrement, "listIncrement"}, {noIncrement, "noIncrement"}};
constexpr Name<ENameSpace> nameSpaces[] = {
    {Custom, "Custom"}, {Standard, "Standard"}, {_UndefinedNameSpace, "_UndefinedNameSpace"}};
constexpr Name<ECachingMode> cachingModes[] = {{NoCache, "NoCache"},
                                               {WriteThrough, "WriteThrough"},
                                               {WriteAround, "WriteAround"},
                                               {_UndefinedCachingMode, "_UndefinedCachingMode"}};
constexpr Name<EDisplayNotation> displayNotations[] = {{fnAutomatic, "Automatic"},
                                                       {fnFixed, "Fixed"},
                                                       {fnScientific, "Scientific"},
                                                       {_UndefinedEDisplayNotation, "_UndefinedEDisplayNotation"}};
constexpr Name<EYesNo> yesNo[] = {{Yes, "Yes"}, {No, "No"}, {_UndefinedYesNo, "_UndefinedYesNo"}};
constexpr Name<EEndianess> endianesses[] = {
    {BigEndian, "BigEndian"}, {LittleEndian, "LittleEndian"}, {_UndefinedEndian, "_UndefinedEndian"}};
constexpr Name<ESign> signs[] = {{Signed, "Signed"}, {Unsigned, "Unsigned"}, {_UndefinedSign, "_UndefinedSign"}};
constexpr Name<ESlope> slopes[] = {{Increasing, "Increasing"},
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
bool readText(const Name<Enum> (&names)[Count], const char *text, Enum *value)
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

#define GENAPI_ENUM_TEXTS(Enum, names)                                                                                 \
    bool Enum##Class::FromString(const gcstring &text, Enum *value)                                                    \
    {                                                                                                                  \
        return readText(names, text, value);                                                                           \
    }                                                                                                                  \
    void Enum##Class::ToString(gcstring &text, Enum *value)                                                            \
    {                                                                                                                  \
        text = textOf(names, *value);                                                                                  \
    }                                                                                                                  \
    gcstring Enum##Class::ToString(Enum value)                                                                         \
    {                                                                                                                  \
        return textOf(names, value);                                                                                   \
    }

GENAPI_ENUM_TEXTS(EAccessMode, accessModes)
GENAPI_ENUM_TEXTS(EVisibility, visibilities)
GENAPI_ENUM_TEXTS(ERepresentation, representations)
GENAPI_ENUM_TEXTS(EIncMode, incModes)
GENAPI_ENUM_TEXTS(ENameSpace, nameSpaces)
GENAPI_ENUM_TEXTS(ECachingMode, cachingModes)
GENAPI_ENUM_TEXTS(EDisplayNotation, displayNotations)
GENAPI_ENUM_TEXTS(EYesNo, yesNo)
GENAPI_ENUM_TEXTS(EEndianess, endianesses)
GENAPI_ENUM_TEXTS(ESign, signs)
GENAPI_ENUM_TEXTS(ESlope, slopes)

} // namespace GENAPI_NAMESPACE
