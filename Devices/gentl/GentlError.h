// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>

#include "Devices/gentl/GenTL.h"

/// A call into a producer that failed.
class GentlError : public std::runtime_error
{
public:
    /// `words`: what the producer, or whoever looked at its answer, has to say; may be empty.
    GentlError(const char *function, GenTL::GC_ERROR code, const std::string &words);

    const std::string &function() const { return m_function; }
    GenTL::GC_ERROR code() const { return m_code; }

private:
    std::string m_function;
    GenTL::GC_ERROR m_code;
};

/// The standard's name of a code, or that it is the producer's own.
std::string gentlCodeName(GenTL::GC_ERROR code);
