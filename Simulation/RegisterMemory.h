// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <vector>

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>

/// One register of a simulated device, as its description lays it out.
struct Register
{
    enum class Kind { Integer, Real, Text, Bytes };

    QByteArray name; ///< the register node's name without its ending "Reg": the feature's name
    Kind kind = Kind::Bytes;
    qint64 address = 0;
    int length = 0; ///< bytes of one position
    bool isSigned = false;
    int firstBit = 0;
    int bitCount = 0; ///< 0: all bits of the register
    int positions = 1; ///< selector positions, one after the other; known from the power-up values
    bool inUserSet = false; ///< the description says that loading a user set changes it
};

/// The register memory of a simulated device, little-endian, addressed by register name or by address.
/// Registers that the description does not have read as zero and ignore writes. Not thread-safe.
class RegisterMemory
{
public:
    /// Takes the layout from a GenICam description.
    explicit RegisterMemory(const QByteArray &description);

    /// Fills registers from a table of power-up values (see area_scan.values); later tables add to earlier ones.
    /// Returns the lines that make no sense.
    QByteArrayList load(const QByteArray &values);
    /// Fills the memory with zeros.
    void clear();

    const std::vector<Register> &registers() const { return m_all; }
    bool contains(const char *name) const { return m_byName.contains(name); }
    /// The register that holds the byte at `address`, else null.
    const Register *at(qint64 address) const;

    /// Positions count from 0; one that lies outside the memory reads as zero.
    qint64 integer(const char *name, int position = 0) const;
    double number(const char *name, int position = 0) const;
    void setInteger(const char *name, qint64 value, int position = 0);
    /// Rounds when the register holds an integer.
    void setNumber(const char *name, double value, int position = 0);
    void setText(const char *name, const QByteArray &value, int position = 0);

    /// All positions of one register.
    QByteArray bytes(const Register &reg) const;
    void setBytes(const Register &reg, const QByteArray &contents);

    /// Raw access; false when the range is not inside the memory.
    bool read(void *buffer, qint64 address, qint64 length) const;
    bool write(const void *buffer, qint64 address, qint64 length);

    /// The number that `data`, one position of `reg`, stands for; 0 for texts and bytes.
    static double decode(const Register &reg, const QByteArray &data);

private:
    const Register *find(const char *name) const;
    QByteArray position(const Register &reg, int index) const;
    bool loadLine(const QByteArray &line);

    std::vector<Register> m_all;
    QHash<QByteArray, int> m_byName;
    std::map<qint64, int> m_byAddress;
    std::vector<char> m_memory;
};
