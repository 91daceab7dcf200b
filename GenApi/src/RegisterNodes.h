// SPDX-License-Identifier: MIT
#pragma once

#include "FloatValue.h"
#include "IntegerValue.h"
#include "RegisterSource.h"
#include "StringValue.h"

namespace NodeEngine {

/// A node that is a register of the device: IRegister and the caching of bytes, beside its value interface.
template <class Base>
class RegisterOf : public Base, public GenApi::IRegister
{
public:
    RegisterOf(NodeContext &context, const NodeRecord &record)
        : Base(context, record), m_register(*this, context.changes)
    { }

    // IRegister
    void Set(const uint8_t *buffer, int64_t length, bool verify) override
    {
        this->m_context.changes.change(
            [&] { setBytes(std::vector<uint8_t>(buffer, buffer + std::max<int64_t>(length, 0)), verify); });
    }
    void Get(uint8_t *buffer, int64_t length, bool, bool ignoreCache) override
    {
        const GenApi::AutoLock lock(this->m_context.lock);
        requireReadable(*this, "Get()");
        const std::vector<uint8_t> &bytes = m_register.read(ignoreCache);
        requireLength(length, bytes.size());
        std::copy_n(bytes.begin(), static_cast<std::size_t>(length), buffer);
    }
    int64_t GetLength() override
    {
        const GenApi::AutoLock lock(this->m_context.lock);
        return m_register.length();
    }
    int64_t GetAddress() override
    {
        const GenApi::AutoLock lock(this->m_context.lock);
        return m_register.address();
    }

    void forget() override
    {
        Base::forget();
        m_register.forget();
    }

protected:
    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader) override
    {
        return m_register.take(tag, child, loader) || Base::take(tag, child, loader);
    }
    void loaded(NodeLoader &loader) override { m_register.loaded(loader); }
    GenApi::EAccessMode ownAccessMode() const override { return m_register.accessMode(); }
    GenApi::EAccessMode ownBaseAccessMode() const override { return m_register.baseAccessMode(); }
    GenApi::ECachingMode ownCachingMode() const override
    {
        const GenApi::ECachingMode mode = m_register.cachingMode();
        return mode == GenApi::WriteThrough ? Base::ownCachingMode() : mode;
    }

    void setBytes(std::vector<uint8_t> bytes, bool verify)
    {
        requireWritable(*this, verify, "Set()");
        requireLength(static_cast<int64_t>(bytes.size()), static_cast<std::size_t>(m_register.length()));
        bytes.resize(static_cast<std::size_t>(m_register.length()));
        m_register.write(bytes);
        this->m_context.changes.changed(*this);
    }

    RegisterSource m_register;

private:
    void requireLength(int64_t length, std::size_t available) const
    {
        if (length < 0 || static_cast<uint64_t>(length) > available)
            throw OUT_OF_RANGE_EXCEPTION("Node '%s' : the register has %lld bytes, not %lld.", this->name().c_str(),
                                         static_cast<long long>(available), static_cast<long long>(length));
    }
};

/// IntReg and MaskedIntReg: an integer of 1 to 8 bytes, or some of its bits.
class IntRegNode : public RegisterOf<IntegerValue>
{
public:
    using RegisterOf::RegisterOf;

protected:
    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader) override;
    void loaded(NodeLoader &loader) override;
    int64_t readNumber(bool fresh) override;
    void writeNumber(int64_t value, bool verify) override;
    int64_t ownLimit(Limit limit) const override;

private:
    /// The bits of the word that hold the value.
    struct Field
    {
        int shift;
        int width;
        uint64_t mask() const { return width >= 64 ? ~uint64_t(0) : (uint64_t(1) << width) - 1; }
    };
    Field field(int64_t lengthOfRegister) const;
    uint64_t word(const std::vector<uint8_t> &bytes) const;
    std::vector<uint8_t> bytesOf(uint64_t word, std::size_t length) const;

    int64_t m_lsb = -1;
    int64_t m_msb = -1;
    bool m_isSigned = false;
};

/// FloatReg: an IEEE number of 4 or 8 bytes.
class FloatRegNode : public RegisterOf<FloatValue>
{
public:
    using RegisterOf::RegisterOf;

protected:
    double readNumber(bool fresh) override;
    void writeNumber(double value, bool verify) override;
    double ownLimit(Limit limit) const override;

private:
    std::vector<uint8_t> ordered(std::vector<uint8_t> bytes) const;
};

/// StringReg: a text padded with zeros.
class StringRegNode : public RegisterOf<StringValue>
{
public:
    using RegisterOf::RegisterOf;

protected:
    std::string readString(bool fresh) override;
    void writeString(const std::string &value, bool verify) override;
    int64_t capacity() override { return m_register.length(); }
};

/// What a Register has beside IRegister: nothing.
class NoValue : public ValueNode<GenApi::IValue>
{
public:
    using ValueNode::ValueNode;

    GenApi::EInterfaceType GetPrincipalInterfaceType() const override { return GenApi::intfIRegister; }
};

/// Register: bytes without a meaning.
class RawRegisterNode : public RegisterOf<NoValue>
{
public:
    using RegisterOf::RegisterOf;

    std::string textValue(bool verify, bool fresh) override;
    void setTextValue(const std::string &text, bool verify) override;
};

} // namespace NodeEngine
