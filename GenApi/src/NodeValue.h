// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/Types.h>

#include <cstdint>
#include <string>

namespace NodeEngine {

enum class Limit { Min, Max, Inc };

/// The value of a node as nodes that link to it read and write it. The public interfaces call the same functions.
///
/// Called with the map's lock held. `fresh` passes the caches of the values, not of limits and access modes; `verify`
/// asks for the access mode and the range. Port errors pass through unchanged.
class NodeValue
{
public:
    virtual ~NodeValue() = default;

    virtual int64_t integerValue(bool fresh) = 0;
    virtual double floatValue(bool fresh) = 0;
    virtual std::string textValue(bool verify, bool fresh) = 0;
    virtual void setInteger(int64_t value, bool verify) = 0;
    virtual void setFloat(double value, bool verify) = 0;
    virtual void setTextValue(const std::string &value, bool verify) = 0;

    virtual int64_t integerLimit(Limit limit) const = 0;
    virtual double floatLimit(Limit limit) const = 0;
    virtual bool hasIncrement() const = 0;
    virtual GenApi::EIncMode incrementMode() const = 0;
    /// Of a text, in bytes.
    virtual int64_t greatestLength() = 0;

    // How the number is shown; undefined, empty or negative if nobody says.
    virtual GenApi::ERepresentation representation() const = 0;
    virtual std::string unit() const = 0;
    virtual GenApi::EDisplayNotation displayNotation() const = 0;
    virtual int64_t displayPrecision() const = 0;
};

} // namespace NodeEngine
