// SPDX-License-Identifier: MIT
#pragma once

#include <Base/GCList.h>
#include <Base/GCString.h>

namespace GENICAM_NAMESPACE {

/// A list of strings.
class GENICAM_DECL gcstring_vector : public list_base<gcstring>
{
public:
    gcstring_vector() { }
    explicit gcstring_vector(size_t count, const gcstring &value = "") : list_base<gcstring>(count, value) { }

    bool contains(const gcstring &value) const
    {
        for (const_iterator it = begin(); it != end(); ++it) {
            if (*it == value)
                return true;
        }
        return false;
    }
};

typedef gcstring_vector StringList_t;

} // namespace GENICAM_NAMESPACE
