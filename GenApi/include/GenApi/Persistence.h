// SPDX-License-Identifier: MIT
#pragma once

#include <Base/GCString.h>
#include <Base/GCStringVector.h>
#include <GenApi/INodeMap.h>

#include <istream>
#include <memory>
#include <ostream>

namespace GENAPI_NAMESPACE {

/// The settings of a device: taken from a node map, written to one, and kept in a stream.
class GENICAM_DECL CFeatureBag
{
public:
    CFeatureBag();
    CFeatureBag(const CFeatureBag &other);
    CFeatureBag &operator=(const CFeatureBag &other);
    virtual ~CFeatureBag();

    /// The same settings in the same order; the name and the device do not count.
    bool operator==(const CFeatureBag &other) const;
    bool operator!=(const CFeatureBag &other) const { return !(*this == other); }

    /// Replaces the bag by all streamable features that can be read and written, at all positions of their selectors.
    /// \param max    the most entries that are taken, all if it is negative
    /// \param filter names of features; all are taken without it
    /// \param errors gets what had to be left out
    /// \returns the number of entries
    int64_t StoreToBag(INodeMap *nodeMap, const int max = -1, gcstring_vector *filter = nullptr,
                       gcstring_vector *errors = nullptr);

    /// Writes all entries; those that are refused are told in `errors` and cost the others nothing.
    /// \param verify read all back afterwards and compare
    /// \returns whether everything was written
    bool LoadFromBag(INodeMap *nodeMap, bool verify = true, gcstring_vector *errors = nullptr);

    /// As operator<< writes it.
    gcstring ToString() const;

    /// Anything; no stream has it.
    gcstring GetName() const;
    void SetName(const gcstring &name);

private:
    friend GENICAM_DECL std::ostream &operator<<(std::ostream &stream, const CFeatureBag &bag);
    friend GENICAM_DECL std::istream &operator>>(std::istream &stream, CFeatureBag &bag);

    struct Private;
    std::unique_ptr<Private> d;
};

GENICAM_DECL std::ostream &operator<<(std::ostream &stream, const CFeatureBag &bag);
/// Reads the stream to its end. Lines that cannot be understood are told by LoadFromBag().
/// \throws GenICam::RuntimeException if the stream does not hold a bag; the bag stays as it was
GENICAM_DECL std::istream &operator>>(std::istream &stream, CFeatureBag &bag);

} // namespace GENAPI_NAMESPACE
