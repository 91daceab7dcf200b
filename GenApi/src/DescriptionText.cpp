// SPDX-License-Identifier: MIT
#include "DescriptionText.h"

#include <Base/GCException.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <string_view>

#include "DescriptionArchive.h"
#include "DescriptionEncoding.h"

namespace NodeEngine {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t LargestSize = std::size_t(256) << 20;
constexpr std::size_t DeclarationWithin = 4096;

bool startsWith(std::string_view bytes, std::string_view beginning)
{
    return bytes.substr(0, beginning.size()) == beginning;
}

// Drops the NULs that fill up the device's memory behind the text.
std::string_view withoutTrailingNuls(std::string_view bytes)
{
    return bytes.substr(0, bytes.find_last_not_of('\0') + 1);
}

// The text from its declaration, or from its first markup if it has none near the beginning.
std::string_view fromFirstMarkup(std::string_view text)
{
    const std::size_t declaration = text.substr(0, DeclarationWithin).find("<?xml");
    const std::size_t begin = declaration != std::string_view::npos ? declaration : text.find('<');
    if (begin == std::string_view::npos)
        throw RUNTIME_EXCEPTION("The description holds no XML.");
    return text.substr(begin);
}

bool declaresLatin1(std::string_view text)
{
    if (!startsWith(text, "<?xml"))
        return false;
    std::string declaration(text.substr(0, text.substr(0, DeclarationWithin).find("?>")).substr(0, DeclarationWithin));
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    std::transform(declaration.begin(), declaration.end(), declaration.begin(), lower);
    const auto encoding =
        std::string_view(declaration).substr(std::min(declaration.find("encoding"), declaration.size()));
    constexpr std::string_view Names[] = {"iso-8859-1\"", "iso-8859-1'", "latin1", "latin-1", "windows-1252", "cp1252"};
    return std::any_of(std::begin(Names), std::end(Names),
                       [encoding](std::string_view name) { return encoding.find(name) != std::string_view::npos; });
}

std::string utf8FromBytes(std::string_view bytes)
{
    const std::string_view text = fromFirstMarkup(withoutTrailingNuls(bytes));
    return declaresLatin1(text) ? utf8FromLatin1(text) : repairedUtf8(text);
}

std::string textOfBytes(std::string_view bytes)
{
    const bool isLittleEndian = startsWith(bytes, "\xFF\xFE"sv) || startsWith(bytes, "<\0"sv);
    const bool isBigEndian = startsWith(bytes, "\xFE\xFF"sv) || startsWith(bytes, "\0<\0"sv);
    std::string text;
    if (isLittleEndian || isBigEndian) {
        const std::string converted = utf8FromUtf16(bytes, isBigEndian);
        text = fromFirstMarkup(withoutTrailingNuls(converted));
    } else {
        text = utf8FromBytes(bytes);
    }
    for (std::size_t nul = text.find('\0'); nul != std::string::npos; nul = text.find('\0', nul))
        text[nul] = ' ';
    return text;
}

std::string bytesOfFile(const std::string &fileName)
{
    errno = 0;
    std::ifstream file(fileName, std::ios::binary);
    std::string bytes;
    char block[64 * 1024];
    while (file.good() && bytes.size() <= LargestSize) {
        file.read(block, sizeof block);
        bytes.append(block, static_cast<std::size_t>(file.gcount()));
    }
    if (bytes.size() > LargestSize)
        throw RUNTIME_EXCEPTION("The description file '%s' is larger than %zu MiB.", fileName.c_str(),
                                LargestSize >> 20);
    if (!file.eof() || file.bad())
        throw RUNTIME_EXCEPTION("The description file '%s' cannot be read: %s.", fileName.c_str(),
                                std::strerror(errno));
    return bytes;
}

} // namespace

std::string descriptionText(const void *data, std::size_t size)
{
    const std::string_view bytes(static_cast<const char *>(data), data ? size : 0);
    return isArchive(bytes) ? textOfBytes(descriptionInArchive(bytes, LargestSize)) : textOfBytes(bytes);
}

std::string descriptionTextOfFile(const std::string &fileName)
{
    const std::string bytes = bytesOfFile(fileName);
    try {
        return descriptionText(bytes.data(), bytes.size());
    } catch (const GenICam::GenericException &error) {
        throw RUNTIME_EXCEPTION("The description file '%s' cannot be loaded: %s", fileName.c_str(),
                                error.GetDescription());
    }
}

} // namespace NodeEngine
