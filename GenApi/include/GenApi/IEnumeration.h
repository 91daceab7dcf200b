// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/Container.h>
#include <GenApi/IEnumEntry.h>
#include <GenApi/IValue.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE IEnumeration : virtual public IValue
{
    /// Replaces the list by the symbolic names of the entries that are available now.
    virtual void GetSymbolics(StringList_t & symbolics) = 0;
    /// Replaces the list by all entries.
    virtual void GetEntries(NodeList_t & entries) = 0;
    virtual IEnumeration &operator=(const gcstring &symbolic) = 0;
    virtual void SetIntValue(int64_t value, bool verify = true) = 0;
    virtual gcstring operator*() = 0;
    virtual int64_t GetIntValue(bool verify = false, bool ignoreCache = false) = 0;
    /// Null if there is no such entry.
    virtual IEnumEntry *GetEntryByName(const gcstring &symbolic) = 0;
    virtual IEnumEntry *GetEntry(const int64_t value) = 0;
    virtual IEnumEntry *GetCurrentEntry(bool verify = false, bool ignoreCache = false) = 0;
};

} // namespace GENAPI_NAMESPACE
