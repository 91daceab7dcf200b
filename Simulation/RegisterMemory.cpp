// SPDX-License-Identifier: MIT
#include "Simulation/RegisterMemory.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "Simulation/RegisterLayout.h"

namespace {

constexpr int MemorySize = 128 * 1024;

quint64 bitMask(const Register &reg)
{
    const int bits = reg.bitCount > 0 ? reg.bitCount : reg.length * 8;
    return bits >= 64 ? ~quint64(0) : (quint64(1) << bits) - 1;
}

quint64 littleEndian(const QByteArray &data)
{
    quint64 word = 0;
    for (int i = int(data.size()); i-- > 0;)
        word = word << 8 | quint8(data[i]);
    return word;
}

QByteArray toLittleEndian(quint64 word, int length)
{
    QByteArray data(length, 0);
    for (int i = 0; i < length; ++i, word >>= 8)
        data[i] = char(word & 0xFF);
    return data;
}

template <typename Real>
QByteArray realBytes(double value)
{
    const Real real = Real(value);
    return QByteArray(reinterpret_cast<const char *>(&real), int(sizeof real));
}

template <typename Real>
double realValue(const QByteArray &data)
{
    Real real = 0;
    std::memcpy(&real, data.constData(), std::min(sizeof real, size_t(data.size())));
    return double(real);
}

qint64 integerValue(const Register &reg, const QByteArray &data)
{
    const quint64 mask = bitMask(reg);
    const quint64 word = littleEndian(data) >> reg.firstBit & mask;
    const bool negative = reg.isSigned && (word & ~(mask >> 1)) != 0;
    return qint64(negative ? word | ~mask : word);
}

/// The numbers of one table line, "1 2 3" or "0..255", one by one.
QByteArrayList numbers(const QByteArray &text)
{
    QByteArrayList result;
    for (const QByteArray &word : text.simplified().split(' ')) {
        const int dots = int(word.indexOf(".."));
        if (dots < 0)
            result << word;
        for (int i = word.left(dots).toInt(); dots > 0 && i <= word.mid(dots + 2).toInt(); ++i)
            result << QByteArray::number(i);
    }
    return result;
}

} // namespace

RegisterMemory::RegisterMemory(const QByteArray &description)
    : m_all(registerLayout(description)), m_memory(MemorySize, 0)
{
    for (size_t i = 0; i < m_all.size(); ++i) {
        m_byName.insert(m_all[i].name, int(i));
        m_byAddress.emplace(m_all[i].address, int(i));
    }
}

QByteArrayList RegisterMemory::load(const QByteArray &values)
{
    QByteArrayList odd;
    for (const QByteArray &raw : values.split('\n')) {
        const QByteArray line = raw.trimmed();
        if (!line.isEmpty() && !line.startsWith('#') && !loadLine(line))
            odd << line;
    }
    return odd;
}

bool RegisterMemory::loadLine(const QByteArray &line)
{
    const int blank = int(line.indexOf(' '));
    const QByteArray name = blank < 0 ? line : line.left(blank);
    const QByteArray rest = line.mid(name.size()).trimmed();
    const auto found = m_byName.constFind(name);
    if (found == m_byName.constEnd())
        return false;
    Register &reg = m_all[size_t(*found)];
    const QByteArrayList contents = reg.kind == Register::Kind::Text ? rest.split('|') : numbers(rest);
    reg.positions = std::max(reg.positions, int(contents.size()));
    bool ok = true;
    for (int i = 0; ok && i < contents.size(); ++i) {
        if (reg.kind == Register::Kind::Text)
            setText(name.constData(), contents[i].trimmed(), i);
        else if (reg.kind == Register::Kind::Integer)
            setInteger(name.constData(), contents[i].toLongLong(&ok, 0), i);
        else
            setNumber(name.constData(), contents[i].toDouble(&ok), i);
    }
    return ok;
}

void RegisterMemory::clear()
{
    std::fill(m_memory.begin(), m_memory.end(), char(0));
}

const Register *RegisterMemory::at(qint64 address) const
{
    const auto after = m_byAddress.upper_bound(address);
    if (after == m_byAddress.begin())
        return nullptr;
    const Register &reg = m_all[size_t(std::prev(after)->second)];
    return address < reg.address + qint64(reg.length) * reg.positions ? &reg : nullptr;
}

const Register *RegisterMemory::find(const char *name) const
{
    const auto found = m_byName.constFind(name);
    return found == m_byName.constEnd() ? nullptr : &m_all[size_t(*found)];
}

QByteArray RegisterMemory::position(const Register &reg, int index) const
{
    QByteArray data(reg.length, 0);
    read(data.data(), reg.address + qint64(index) * reg.length, reg.length);
    return data;
}

qint64 RegisterMemory::integer(const char *name, int index) const
{
    const Register *reg = find(name);
    return reg ? integerValue(*reg, position(*reg, index)) : 0;
}

double RegisterMemory::number(const char *name, int index) const
{
    const Register *reg = find(name);
    return reg ? decode(*reg, position(*reg, index)) : 0.0;
}

void RegisterMemory::setInteger(const char *name, qint64 value, int index)
{
    const Register *reg = find(name);
    if (!reg)
        return;
    const quint64 mask = bitMask(*reg) << reg->firstBit;
    const quint64 others = littleEndian(position(*reg, index)) & ~mask;
    const QByteArray data = toLittleEndian(others | (quint64(value) << reg->firstBit & mask), reg->length);
    write(data.constData(), reg->address + qint64(index) * reg->length, reg->length);
}

void RegisterMemory::setNumber(const char *name, double value, int index)
{
    const Register *reg = find(name);
    if (reg && reg->kind == Register::Kind::Real) {
        const QByteArray data = reg->length == 4 ? realBytes<float>(value) : realBytes<double>(value);
        write(data.constData(), reg->address + qint64(index) * reg->length, reg->length);
    } else if (reg && reg->kind == Register::Kind::Integer) {
        setInteger(name, std::llround(value), index);
    }
}

void RegisterMemory::setText(const char *name, const QByteArray &value, int index)
{
    if (const Register *reg = find(name)) {
        const QByteArray data = value.leftJustified(reg->length, '\0', true);
        write(data.constData(), reg->address + qint64(index) * reg->length, reg->length);
    }
}

QByteArray RegisterMemory::bytes(const Register &reg) const
{
    QByteArray data(reg.length * reg.positions, 0);
    read(data.data(), reg.address, data.size());
    return data;
}

void RegisterMemory::setBytes(const Register &reg, const QByteArray &contents)
{
    write(contents.constData(), reg.address, std::min<qint64>(contents.size(), qint64(reg.length) * reg.positions));
}

bool RegisterMemory::read(void *buffer, qint64 address, qint64 length) const
{
    if (address < 0 || length < 0 || address > MemorySize - length)
        return false;
    std::memcpy(buffer, m_memory.data() + address, size_t(length));
    return true;
}

bool RegisterMemory::write(const void *buffer, qint64 address, qint64 length)
{
    if (address < 0 || length < 0 || address > MemorySize - length)
        return false;
    std::memcpy(m_memory.data() + address, buffer, size_t(length));
    return true;
}

double RegisterMemory::decode(const Register &reg, const QByteArray &data)
{
    if (reg.kind == Register::Kind::Real)
        return reg.length == 4 ? realValue<float>(data) : realValue<double>(data);
    return reg.kind == Register::Kind::Integer ? double(integerValue(reg, data)) : 0.0;
}
