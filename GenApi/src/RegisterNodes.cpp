// SPDX-License-Identifier: MIT
#include "RegisterNodes.h"

#include "NodeLoader.h"
#include "NumberText.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace NodeEngine {

// --- IntRegNode

bool IntRegNode::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    switch (tag) {
    case Tag::LSB:
        m_lsb = integerOfDescription(textOf(child)).value_or(0);
        return true;
    case Tag::MSB:
        m_msb = integerOfDescription(textOf(child)).value_or(0);
        return true;
    case Tag::Bit:
        m_lsb = m_msb = integerOfDescription(textOf(child)).value_or(0);
        return true;
    case Tag::Sign:
        m_isSigned = textOf(child) == "Signed";
        return true;
    default:
        return RegisterOf::take(tag, child, loader);
    }
}

void IntRegNode::loaded(NodeLoader &loader)
{
    RegisterOf::loaded(loader);
    if (!isBroken() && m_lsb >= 0 && m_msb >= 0) {
        const Field bits = field(m_register.constantLength());
        m_register.setMask(bits.mask() << bits.shift);
    }
}

// Bits count from the least significant one, in big-endian registers from the most significant one.
IntRegNode::Field IntRegNode::field(int64_t lengthOfRegister) const
{
    if (lengthOfRegister == 0)
        throw RUNTIME_EXCEPTION("Node '%s' : the register of a number has no length.", name().c_str());
    const int64_t bits = 8 * std::min<int64_t>(lengthOfRegister, 8);
    if (m_lsb < 0 || m_msb < 0)
        return {0, static_cast<int>(bits)};
    const bool isReversed = m_register.isBigEndian();
    const auto position = [&](int64_t bit) {
        return std::clamp<int64_t>(isReversed ? bits - 1 - bit : bit, 0, bits - 1);
    };
    const int64_t low = std::min(position(m_lsb), position(m_msb));
    const int64_t high = std::max(position(m_lsb), position(m_msb));
    return {static_cast<int>(low), static_cast<int>(high - low + 1)};
}

uint64_t IntRegNode::word(const std::vector<uint8_t> &bytes) const
{
    const std::size_t length = std::min<std::size_t>(bytes.size(), 8);
    uint64_t word = 0;
    for (std::size_t i = 0; i < length; ++i)
        word = word << 8 | bytes[m_register.isBigEndian() ? i : length - 1 - i];
    return word;
}

std::vector<uint8_t> IntRegNode::bytesOf(uint64_t word, std::size_t length) const
{
    std::vector<uint8_t> bytes(length, 0);
    const std::size_t used = std::min<std::size_t>(length, 8);
    for (std::size_t i = 0; i < used; ++i)
        bytes[m_register.isBigEndian() ? used - 1 - i : i] = static_cast<uint8_t>(word >> (8 * i));
    return bytes;
}

int64_t IntRegNode::readNumber(bool fresh)
{
    const Field bits = field(m_register.length());
    const uint64_t value = word(m_register.read(fresh)) >> bits.shift & bits.mask();
    const bool isNegative = m_isSigned && (value >> (bits.width - 1) & 1);
    return static_cast<int64_t>(isNegative ? value | ~bits.mask() : value);
}

void IntRegNode::writeNumber(int64_t value, bool)
{
    const Field bits = field(m_register.length());
    const uint64_t mask = bits.mask() << bits.shift;
    const auto length = static_cast<std::size_t>(m_register.length());
    const bool isPart = m_lsb >= 0 && m_msb >= 0 && bits.width < static_cast<int>(8 * std::min<std::size_t>(length, 8));
    uint64_t whole = 0;
    if (isPart && GenApi::IsReadable(m_register.accessMode()))
        whole = word(m_register.read(false)) & ~mask;
    m_register.write(bytesOf(whole | (static_cast<uint64_t>(value) << bits.shift & mask), length));
}

int64_t IntRegNode::ownLimit(Limit limit) const
{
    if (limit == Limit::Inc)
        return 1;
    const Field bits = field(m_register.length());
    if (m_isSigned) {
        const int64_t max = static_cast<int64_t>(bits.mask() >> 1);
        return limit == Limit::Max ? max : -max - 1;
    }
    if (limit == Limit::Min)
        return 0;
    return static_cast<int64_t>(std::min<uint64_t>(bits.mask(), std::numeric_limits<int64_t>::max()));
}

// --- FloatRegNode

std::vector<uint8_t> FloatRegNode::ordered(std::vector<uint8_t> bytes) const
{
    const uint16_t probe = 1;
    uint8_t first = 0;
    std::memcpy(&first, &probe, 1);
    const bool isHostBigEndian = first == 0;
    if (isHostBigEndian != m_register.isBigEndian())
        std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

double FloatRegNode::readNumber(bool fresh)
{
    const std::vector<uint8_t> bytes = ordered(m_register.read(fresh));
    double wide = 0;
    float narrow = 0;
    if (bytes.size() == sizeof wide) {
        std::memcpy(&wide, bytes.data(), sizeof wide);
        return wide;
    }
    if (bytes.size() != sizeof narrow)
        throw RUNTIME_EXCEPTION("Node '%s' : a floating-point register has 4 or 8 bytes.", name().c_str());
    std::memcpy(&narrow, bytes.data(), sizeof narrow);
    return static_cast<double>(narrow);
}

void FloatRegNode::writeNumber(double value, bool)
{
    const auto length = static_cast<std::size_t>(m_register.length());
    const auto narrow = static_cast<float>(value);
    std::vector<uint8_t> bytes(length, 0);
    if (length == sizeof value)
        std::memcpy(bytes.data(), &value, sizeof value);
    else if (length == sizeof narrow)
        std::memcpy(bytes.data(), &narrow, sizeof narrow);
    else
        throw RUNTIME_EXCEPTION("Node '%s' : a floating-point register has 4 or 8 bytes.", name().c_str());
    m_register.write(ordered(std::move(bytes)));
}

double FloatRegNode::ownLimit(Limit limit) const
{
    if (m_register.constantLength() != sizeof(float) || limit == Limit::Inc)
        return FloatValue::ownLimit(limit);
    const auto most = static_cast<double>(std::numeric_limits<float>::max());
    return limit == Limit::Min ? -most : most;
}

// --- StringRegNode

std::string StringRegNode::readString(bool fresh)
{
    const std::vector<uint8_t> &bytes = m_register.read(fresh);
    return std::string(bytes.begin(), std::find(bytes.begin(), bytes.end(), uint8_t(0)));
}

void StringRegNode::writeString(const std::string &value, bool)
{
    std::vector<uint8_t> bytes(value.begin(), value.end());
    bytes.resize(static_cast<std::size_t>(m_register.length()), 0);
    m_register.write(bytes);
}

// --- RawRegisterNode

std::string RawRegisterNode::textValue(bool, bool fresh)
{
    const std::vector<uint8_t> &bytes = m_register.read(fresh);
    std::string text = bytes.empty() ? "" : "0x";
    for (const uint8_t byte : bytes) {
        constexpr char Digits[] = "0123456789abcdef";
        text += Digits[byte >> 4];
        text += Digits[byte & 15];
    }
    return text;
}

void RawRegisterNode::setTextValue(const std::string &text, bool verify)
{
    std::vector<uint8_t> bytes;
    std::string_view digits(text);
    if (digits.substr(0, 2) == "0x" || digits.substr(0, 2) == "0X")
        digits.remove_prefix(2);
    bool isHex = digits.size() % 2 == 0;
    for (std::size_t i = 0; isHex && i < digits.size(); i += 2) {
        const std::string pair = "0x" + std::string(digits.substr(i, 2));
        isHex = pair.find_first_not_of("0123456789abcdefABCDEF", 2) == std::string::npos;
        bytes.push_back(static_cast<uint8_t>(integerOfText(pair).value_or(0)));
    }
    if (!isHex)
        throw INVALID_ARGUMENT_EXCEPTION("Node '%s' : cannot convert string '%s' to bytes.", name().c_str(),
                                         text.c_str());
    setBytes(std::move(bytes), verify);
}

} // namespace NodeEngine
