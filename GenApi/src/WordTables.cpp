// SPDX-License-Identifier: MIT
#include "WordTables.h"

namespace NodeEngine {

namespace {

template <class Enum>
struct Word
{
    const char *text;
    Enum value;
};

constexpr Word<GenApi::EVisibility> Visibilities[] = {{"Beginner", GenApi::Beginner},
                                                      {"Expert", GenApi::Expert},
                                                      {"Guru", GenApi::Guru},
                                                      {"Invisible", GenApi::Invisible}};
constexpr Word<GenApi::EAccessMode> AccessModes[] = {
    {"RW", GenApi::RW}, {"RO", GenApi::RO}, {"WO", GenApi::WO}, {"NA", GenApi::NA}, {"NI", GenApi::NI}};
constexpr Word<GenApi::ECachingMode> CachingModes[] = {
    {"WriteThrough", GenApi::WriteThrough}, {"WriteAround", GenApi::WriteAround}, {"NoCache", GenApi::NoCache}};
constexpr Word<GenApi::ERepresentation> Representations[] = {
    {"Linear", GenApi::Linear},         {"Logarithmic", GenApi::Logarithmic}, {"Boolean", GenApi::Boolean},
    {"PureNumber", GenApi::PureNumber}, {"HexNumber", GenApi::HexNumber},     {"IPV4Address", GenApi::IPV4Address},
    {"MACAddress", GenApi::MACAddress}};
constexpr Word<GenApi::EDisplayNotation> DisplayNotations[] = {
    {"Automatic", GenApi::fnAutomatic}, {"Fixed", GenApi::fnFixed}, {"Scientific", GenApi::fnScientific}};
constexpr Word<GenApi::ESlope> Slopes[] = {{"Increasing", GenApi::Increasing},
                                           {"Decreasing", GenApi::Decreasing},
                                           {"Varying", GenApi::Varying},
                                           {"Automatic", GenApi::Automatic}};

template <class Enum, std::size_t size>
Enum valueOf(const Word<Enum> (&words)[size], std::string_view text, Enum fallback)
{
    for (const Word<Enum> &word : words) {
        if (text == word.text)
            return word.value;
    }
    return fallback;
}

template <class Enum, std::size_t size>
const char *textOf(const Word<Enum> (&words)[size], Enum value)
{
    for (const Word<Enum> &word : words) {
        if (value == word.value)
            return word.text;
    }
    return "";
}

} // namespace

GenApi::EVisibility visibilityOf(std::string_view word)
{
    return valueOf(Visibilities, word, GenApi::Beginner);
}

GenApi::EAccessMode accessModeOf(std::string_view word, GenApi::EAccessMode fallback)
{
    return valueOf(AccessModes, word, fallback);
}

GenApi::ECachingMode cachingModeOf(std::string_view word)
{
    return valueOf(CachingModes, word, GenApi::WriteThrough);
}

GenApi::ERepresentation representationOf(std::string_view word)
{
    return valueOf(Representations, word, GenApi::_UndefinedRepresentation);
}

GenApi::EDisplayNotation displayNotationOf(std::string_view word)
{
    return valueOf(DisplayNotations, word, GenApi::fnAutomatic);
}

GenApi::ESlope slopeOf(std::string_view word)
{
    return valueOf(Slopes, word, GenApi::Automatic);
}

const char *wordOf(GenApi::EVisibility visibility)
{
    return textOf(Visibilities, visibility);
}

const char *wordOf(GenApi::EAccessMode mode)
{
    return textOf(AccessModes, mode);
}

} // namespace NodeEngine
