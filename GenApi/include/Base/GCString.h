// SPDX-License-Identifier: MIT
#pragma once

#include <Base/GCTypes.h>

#include <istream>
#include <ostream>
#include <string>

#define GCSTRING_NPOS (static_cast<size_t>(-1))

namespace GENICAM_NAMESPACE {

/// The standard's string: bytes, UTF-8 where they are text.
class GENICAM_DECL gcstring
{
public:
    static const size_t npos = static_cast<size_t>(-1);

    gcstring() { }
    gcstring(const char *text) : m_text(text ? text : "") { }
    gcstring(const char *text, size_t count) : m_text(text ? text : "", text ? count : 0) { }
    gcstring(size_t count, char character) : m_text(count, character) { }
    static size_t _npos() { return npos; }

    gcstring &operator=(const char *text) { return assign(text); }
    gcstring &assign(const gcstring &other)
    {
        m_text = other.m_text;
        return *this;
    }
    gcstring &assign(const char *text)
    {
        m_text = text ? text : "";
        return *this;
    }
    gcstring &assign(size_t count, char character)
    {
        m_text.assign(count, character);
        return *this;
    }

    const char *c_str() const { return m_text.c_str(); }
    operator const char *() const { return m_text.c_str(); }
    size_t length() const { return m_text.size(); }
    size_t size() const { return m_text.size(); }
    size_t max_size() const { return m_text.max_size(); }
    bool empty() const { return m_text.empty(); }

    void clear() { m_text.clear(); }
    void resize(size_t count) { m_text.resize(count); }
    void reserve(size_t count) { m_text.reserve(count); }
    void swap(gcstring &other) { m_text.swap(other.m_text); }
    gcstring &erase(size_t position = 0, size_t count = npos)
    {
        m_text.erase(position, count);
        return *this;
    }
    gcstring &append(const gcstring &other)
    {
        m_text += other.m_text;
        return *this;
    }
    gcstring &append(size_t count, char character)
    {
        m_text.append(count, character);
        return *this;
    }

    size_t find(char character, size_t from = 0) const { return m_text.find(character, from); }
    size_t find(const gcstring &text, size_t from = 0) const { return m_text.find(text.m_text, from); }
    size_t find(const char *text, size_t from = 0) const { return m_text.find(text ? text : "", from); }
    size_t find_first_of(const gcstring &set, size_t from = 0) const { return m_text.find_first_of(set.m_text, from); }
    size_t find_first_not_of(const gcstring &set, size_t from = 0) const
    {
        return m_text.find_first_not_of(set.m_text, from);
    }
    gcstring substr(size_t from = 0, size_t count = npos) const
    {
        gcstring part;
        part.m_text = m_text.substr(from, count);
        return part;
    }
    int compare(const gcstring &other) const { return m_text.compare(other.m_text); }

    gcstring &operator+=(const gcstring &other) { return append(other); }
    gcstring &operator+=(const char *text)
    {
        m_text += text ? text : "";
        return *this;
    }
    gcstring &operator+=(char character)
    {
        m_text += character;
        return *this;
    }

    bool operator==(const gcstring &other) const { return m_text == other.m_text; }
    bool operator==(const char *text) const { return m_text == (text ? text : ""); }
    bool operator!=(const gcstring &other) const { return m_text != other.m_text; }
    bool operator!=(const char *text) const { return m_text != (text ? text : ""); }
    bool operator<(const gcstring &other) const { return m_text < other.m_text; }
    bool operator>(const gcstring &other) const { return m_text > other.m_text; }

private:
    friend gcstring operator+(const gcstring &, const gcstring &);
    friend std::istream &operator>>(std::istream &, gcstring &);
    friend std::istream &getline(std::istream &, gcstring &);

    std::string m_text;
};

inline gcstring operator+(const gcstring &left, const gcstring &right)
{
    gcstring sum(left);
    sum += right;
    return sum;
}
inline gcstring operator+(const gcstring &left, const char *right)
{
    gcstring sum(left);
    sum += right;
    return sum;
}
inline gcstring operator+(const char *left, const gcstring &right)
{
    gcstring sum(left);
    sum += right;
    return sum;
}
inline std::ostream &operator<<(std::ostream &stream, const gcstring &text)
{
    return stream.write(text.c_str(), static_cast<std::streamsize>(text.size()));
}
inline std::istream &operator>>(std::istream &stream, gcstring &text)
{
    return stream >> text.m_text;
}
inline std::istream &getline(std::istream &stream, gcstring &text)
{
    return std::getline(stream, text.m_text);
}

} // namespace GENICAM_NAMESPACE
