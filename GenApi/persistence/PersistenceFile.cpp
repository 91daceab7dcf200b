// SPDX-License-Identifier: MIT
#include <GenApi/PersistenceFile.h>

#include "ShownText.h"

#include <Base/GCException.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_map>

namespace Persistence {

namespace {

constexpr std::string_view Magic = "# {05D8C294-F295-4dfb-9D01-096BD04049F4}";
constexpr std::string_view VersionHead = "# GenApi persistence file (version ";
constexpr std::string_view DeviceHead = "# dev = ";
constexpr std::string_view DeviceVersion = " -- Device version = ";
constexpr std::string_view ProductGuid = " -- Product GUID = ";
constexpr std::string_view VersionGuid = " -- Product version GUID = ";
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t LongestLine = 64 << 20; // a register of the greatest length has half of it

bool startsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

bool isOfName(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == ':';
}

std::string numbered(std::size_t line, const std::string &text)
{
    return "Line " + std::to_string(line) + ": " + text;
}

/// Takes what stands in front of the separator, or everything.
std::string_view takenUntil(std::string_view &text, std::string_view separator)
{
    const std::string_view taken = text.substr(0, text.find(separator));
    text.remove_prefix(std::min(text.size(), taken.size() + separator.size()));
    return taken;
}

/// "{A=": what follows is no value, or one that cannot be told from selectors.
bool beginsSelection(std::string_view text)
{
    if (!startsWith(text, "{"))
        return false;
    const auto end = std::find_if_not(text.begin() + 1, text.end(), isOfName);
    return end != text.begin() + 1 && end != text.end() && *end == '=';
}

/// Nothing if the text between the braces is malformed.
std::optional<Selection> selectionOf(std::string_view text)
{
    Selection selection;
    while (!text.empty()) {
        std::string_view part = takenUntil(text, "\t");
        const std::string_view selector = takenUntil(part, "=");
        if (selector.empty() || part.empty())
            return std::nullopt;
        selection.push_back({std::string(selector), std::string(part)});
    }
    return selection;
}

/// The lines of a stream, without the exceptions that its owner may have asked it for.
class Lines
{
public:
    explicit Lines(std::istream &stream) : m_stream(stream) { }

    bool next()
    {
        using Traits = std::char_traits<char>;
        std::streambuf *buffer = m_stream.rdbuf();
        m_text.clear();
        m_isTooLong = false;
        Traits::int_type c = buffer ? buffer->sbumpc() : Traits::eof();
        const bool hasLine = !Traits::eq_int_type(c, Traits::eof());
        for (; !Traits::eq_int_type(c, Traits::eof()); c = buffer->sbumpc()) {
            if (Traits::to_char_type(c) == '\n')
                break;
            if (m_text.size() < LongestLine)
                m_text += Traits::to_char_type(c);
            else
                m_isTooLong = true;
        }
        m_number += hasLine ? 1 : 0;
        return hasLine;
    }
    /// If this line ends with CR LF, all do.
    void dropReturnsAsHere() { m_dropsReturns = !m_text.empty() && m_text.back() == '\r'; }
    std::string_view text() const
    {
        std::string_view text = m_text;
        if (m_dropsReturns && !text.empty() && text.back() == '\r')
            text.remove_suffix(1);
        return text;
    }
    std::size_t number() const { return m_number; }
    bool isTooLong() const { return m_isTooLong; }

private:
    std::istream &m_stream;
    std::string m_text;
    std::size_t m_number = 0;
    bool m_isTooLong = false;
    bool m_dropsReturns = false;
};

DeviceInfo deviceInfoOf(std::string_view text)
{
    DeviceInfo device;
    const auto takeFromEnd = [&text](std::string_view head, std::string &field) {
        const std::size_t at = text.rfind(head);
        if (at == std::string_view::npos)
            return;
        field = text.substr(at + head.size());
        text = text.substr(0, at);
    };
    takeFromEnd(VersionGuid, device.versionGuid);
    takeFromEnd(ProductGuid, device.productGuid);
    takeFromEnd(DeviceVersion, device.version);
    device.vendor = takenUntil(text, "::");
    device.model = takenUntil(text, " -- ");
    device.toolTip = text;
    return device;
}

class Reader
{
public:
    explicit Reader(std::istream &stream) : m_lines(stream) { }

    Settings read()
    {
        readMagic();
        while (m_lines.next()) {
            const std::string_view text = m_lines.text();
            if (m_lines.isTooLong())
                report("the line is too long and left out");
            else if (text == Magic)
                return endAtSecondFile();
            else if (startsWith(text, "#"))
                readComment(text);
            else if (!text.empty())
                readEntry(text);
        }
        return std::move(m_settings);
    }

private:
    void readMagic()
    {
        if (!m_lines.next())
            throw RUNTIME_EXCEPTION("Line 1: this is no settings file: it is empty");
        m_lines.dropReturnsAsHere();
        std::string_view text = m_lines.text();
        if (startsWith(text, ByteOrderMark))
            text.remove_prefix(ByteOrderMark.size());
        if (text == Magic)
            return;
        const std::string first = shownText(text);
        if (startsWith(text, "# {"))
            throw RUNTIME_EXCEPTION(
                "Line 1: this file is of another tool: it begins with '%s', a settings file with '%s'", first.c_str(),
                Magic.data());
        throw RUNTIME_EXCEPTION("Line 1: this is no settings file: it begins with '%s' instead of '%s'", first.c_str(),
                                Magic.data());
    }

    Settings endAtSecondFile()
    {
        report("another settings file begins here; it is left out");
        return std::move(m_settings);
    }

    void readComment(std::string_view text)
    {
        if (startsWith(text, VersionHead)) {
            text.remove_prefix(VersionHead.size());
            m_settings.interfaceVersion = takenUntil(text, ")");
        } else if (startsWith(text, DeviceHead)) {
            m_settings.device = deviceInfoOf(text.substr(DeviceHead.size()));
        } else {
            m_settings.comments.emplace_back(text.substr(startsWith(text, "# ") ? 2 : 1));
        }
    }

    void readEntry(std::string_view text)
    {
        Entry entry;
        const std::size_t end = text.find('\t');
        entry.feature = takenUntil(text, "\t");
        entry.line = m_lines.number();
        if (end == std::string_view::npos)
            return report("the line is incomplete: '" + shownText(entry.feature) + "' has no value");
        if (entry.feature.empty())
            return report("the line is incomplete: there is no name in front of the value");
        const std::string_view whole = text;
        if (beginsSelection(text) && !takeSelection(text, entry))
            return report("the selectors of '" + shownText(entry.feature) + "' are incomplete: " + shownText(whole));
        entry.value = text;
        noteDuplicate(entry);
        m_settings.entries.push_back(std::move(entry));
    }

    static bool takeSelection(std::string_view &text, Entry &entry)
    {
        const std::size_t end = text.find("}\t");
        if (end == std::string_view::npos)
            return false;
        std::optional<Selection> selection = selectionOf(text.substr(1, end - 1));
        text.remove_prefix(end + 2);
        entry.selection = selection.value_or(Selection());
        return selection.has_value();
    }

    void noteDuplicate(const Entry &entry)
    {
        const auto [known, isNew] = m_known.try_emplace(entry.place(), m_settings.entries.size());
        if (isNew)
            return;
        const Entry &before = m_settings.entries[known->second];
        if (before.value != entry.value)
            report("'" + shownText(entry.feature) + "' stands in line " + std::to_string(before.line)
                       + " with another value; the last one stays",
                   Severity::Note);
        known->second = m_settings.entries.size();
    }

    void report(const std::string &text, Severity severity = Severity::Error)
    {
        m_settings.problems.push_back({m_lines.number(), numbered(m_lines.number(), text), severity});
    }

    Lines m_lines;
    Settings m_settings;
    std::unordered_map<std::string, std::size_t> m_known; // places and the last entries there
};

std::string joined(const Selection &selection, const char *separator)
{
    std::string text;
    for (const SelectorPosition &one : selection)
        text += (text.empty() ? "" : separator) + one.selector + "=" + one.position;
    return text;
}

/// The text without what would end its line.
std::string inOneLine(std::string text)
{
    std::replace(text.begin(), text.end(), '\n', ' ');
    std::replace(text.begin(), text.end(), '\r', ' ');
    return text;
}

} // namespace

std::string fileText(const Selection &selection)
{
    return selection.empty() ? std::string() : "{" + joined(selection, "\t") + "}";
}

std::string displayText(const Selection &selection)
{
    return joined(selection, ", ");
}

Settings readSettings(std::istream &stream)
{
    Settings settings = Reader(stream).read();
    if (!stream.eof() && stream.exceptions() == std::ios_base::goodbit)
        stream.setstate(std::ios_base::eofbit);
    return settings;
}

void writeSettings(std::ostream &stream, const Settings &settings)
{
    const DeviceInfo &device = settings.device;
    stream << Magic << '\n' << VersionHead << settings.interfaceVersion << ")\n";
    stream << DeviceHead << inOneLine(device.vendor + "::" + device.model + " -- " + device.toolTip) << DeviceVersion
           << device.version << ProductGuid << device.productGuid << VersionGuid << device.versionGuid << '\n';
    for (const std::string &comment : settings.comments)
        stream << "# " << inOneLine(comment) << '\n';
    for (const Entry &entry : settings.entries) {
        stream << entry.feature << '\t';
        if (!entry.selection.empty())
            stream << fileText(entry.selection) << '\t';
        stream << entry.value << '\n';
    }
}

std::string whyNotStorable(const Entry &entry)
{
    if (entry.value.find('\n') != std::string::npos)
        return "its text has a line feed";
    if (!entry.value.empty() && entry.value.back() == '\r')
        return "its text ends with a carriage return";
    if (entry.selection.empty() && beginsSelection(entry.value))
        return "its text looks like the position of a selector";
    return {};
}

} // namespace Persistence
