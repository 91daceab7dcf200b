// SPDX-License-Identifier: MIT
#include "WordTables.h"

namespace NodeEngine {

using namespace GENAPI_NAMESPACE;

namespace {

template <class Enum>
struct Word
{
    const char *text;
    Enum value;
};

constexpr Word<EVisibility> Visibilities[] = {
    {"Beginner", Beginner}, {"Expert", Expert}, {"Guru", Guru}, {"Invisible", Invisible}};
constexpr Word<EAccessMode> AccessModes[] = {{"RW", RW}, {"RO", RO}, {"WO", WO}, {"NA", NA}, {"NI", NI}};
constexpr Word<ECachingMode> CachingModes[] = {
    {"WriteThrough", WriteThrough}, {"WriteAround", WriteAround}, {"NoCache", NoCache}};
constexpr Word<ERepresentation> Representations[] = {
    {"Linear", Linear},       {"Logarithmic", Logarithmic}, {"Boolean", Boolean},      {"PureNumber", PureNumber},
    {"HexNumber", HexNumber}, {"IPV4Address", IPV4Address}, {"MACAddress", MACAddress}};
constexpr Word<EDisplayNotation> DisplayNotations[] = {
    {"Automatic", fnAutomatic}, {"Fixed", fnFixed}, {"Scientific", fnScientific}};
constexpr Word<ESlope> Slopes[] = {
    {"Increasing", Increasing}, {"Decreasing", Decreasing}, {"Varying", Varying}, {"Automatic", Automatic}};

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

EVisibility visibilityOf(std::string_view word)
{
    return valueOf(Visibilities, word, Beginner);
}

EAccessMode accessModeOf(std::string_view word, EAccessMode fallback)
{
    return valueOf(AccessModes, word, fallback);
}

ECachingMode cachingModeOf(std::string_view word)
{
    return valueOf(CachingModes, word, WriteThrough);
}

ERepresentation representationOf(std::string_view word)
{
    return valueOf(Representations, word, _UndefinedRepresentation);
}

EDisplayNotation displayNotationOf(std::string_view word)
{
    return valueOf(DisplayNotations, word, fnAutomatic);
}

ESlope slopeOf(std::string_view word)
{
    return valueOf(Slopes, word, Automatic);
}

const char *wordOf(EVisibility visibility)
{
    return textOf(Visibilities, visibility);
}

const char *wordOf(EAccessMode mode)
{
    return textOf(AccessModes, mode);
}

const char *wordOf(ECachingMode mode)
{
    return textOf(CachingModes, mode);
}

} // namespace NodeEngine
