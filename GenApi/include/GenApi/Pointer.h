// SPDX-License-Identifier: MIT
#pragma once

#include <Base/GCException.h>
#include <GenApi/IBase.h>
#include <GenApi/IFloat.h>

namespace GENAPI_NAMESPACE {

struct INode;
struct IValue;
struct ICategory;
struct IBoolean;
struct IInteger;
struct IFloat;
struct IString;
struct IRegister;
struct IEnumeration;
struct IEnumEntry;
struct ICommand;
struct IPort;
struct ISelector;

/// A pointer to an interface of a node, cast at run time. Does not own the node. Everything but IsValid(),
/// the conversion to bool and comparisons throws a LogicalErrorException when the pointer is null.
template <class T, class B = IBase>
class CPointer
{
public:
    CPointer() : m_pointer(nullptr) { }
    CPointer(B *base) : m_pointer(cast(base)) { }
    CPointer(const CPointer &other) = default;
    ~CPointer() { }

    CPointer &operator=(B *base)
    {
        m_pointer = cast(base);
        return *this;
    }
    CPointer &operator=(const CPointer &other) = default;

    bool IsValid() const throw() { return m_pointer != nullptr; }
    operator bool() const throw() { return m_pointer != nullptr; }

    operator T *() const { return checked(); }
    T *operator->() const { return checked(); }
    T &operator*() const { return *checked(); }
    T &operator()() const { return *checked(); }

    bool operator==(T *other) const { return m_pointer == other; }
    bool operator==(const CPointer &other) const { return m_pointer == other.m_pointer; }
    /// For comparisons with a literal 0 only.
    bool operator==(int mustBeZero) const
    {
        if (mustBeZero != 0)
            throw LOGICAL_ERROR_EXCEPTION("argument must be nullptr");
        return m_pointer == nullptr;
    }

protected:
    T *m_pointer;

private:
    static T *cast(B *base) { return base ? dynamic_cast<T *>(base) : nullptr; }
    T *checked() const
    {
        if (!m_pointer)
            throw LOGICAL_ERROR_EXCEPTION("NULL pointer dereferenced");
        return m_pointer;
    }
};

typedef CPointer<IBase> CBasePtr;
typedef CPointer<INode> CNodePtr;
typedef CPointer<IValue> CValuePtr;
typedef CPointer<ICategory> CCategoryPtr;
typedef CPointer<IBoolean> CBooleanPtr;
typedef CPointer<IInteger> CIntegerPtr;
typedef CPointer<IString> CStringPtr;
typedef CPointer<IRegister> CRegisterPtr;
typedef CPointer<IEnumeration> CEnumerationPtr;
typedef CPointer<IEnumEntry> CEnumEntryPtr;
typedef CPointer<ICommand> CCommandPtr;
typedef CPointer<IPort> CPortPtr;
typedef CPointer<ISelector> CSelectorPtr;

/// Also gives the integer or enumeration that the description names as the feature's cast alias.
class CFloatPtr : public CPointer<IFloat, IBase>
{
public:
    CFloatPtr() { }
    CFloatPtr(IBase *base) : CPointer<IFloat, IBase>(base) { }

    CFloatPtr &operator=(IBase *base)
    {
        CPointer<IFloat, IBase>::operator=(base);
        return *this;
    }

    IInteger *GetIntAlias() const { return castAlias<IInteger>(); }
    IEnumeration *GetEnumAlias() const { return castAlias<IEnumeration>(); }

private:
    template <class T>
    T *castAlias() const;
};

} // namespace GENAPI_NAMESPACE
