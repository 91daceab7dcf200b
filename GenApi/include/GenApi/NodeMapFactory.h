// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/IDestroy.h>
#include <GenApi/INodeMap.h>

#include <memory>

namespace GENAPI_NAMESPACE {

/// What the bytes of a description are. The content is looked at as well: a zip archive is found by itself.
typedef enum _EContentType_t { ContentType_Xml, ContentType_ZippedXml } EContentType_t;

/// Accepted for compatibility: there is no cache of descriptions on disk.
typedef enum _ECacheUsage_t {
    CacheUsage_Automatic,
    CacheUsage_ForceWrite,
    CacheUsage_ForceRead,
    CacheUsage_Ignore
} ECacheUsage_t;

/// Makes node maps of a camera description.
class GENICAM_DECL CNodeMapFactory
{
public:
    /// Throws a RuntimeException when the file cannot be read.
    CNodeMapFactory(EContentType_t type, const gcstring &fileName, ECacheUsage_t cache = CacheUsage_Automatic,
                    bool suppressStrings = false);
    /// Copies the data.
    CNodeMapFactory(EContentType_t type, const void *data, size_t size, ECacheUsage_t cache = CacheUsage_Automatic,
                    bool suppressStrings = false);
    ~CNodeMapFactory();

    /// Makes a node map that is not connected yet; the caller frees it with CastToIDestroy(map)->Destroy().
    /// Throws a RuntimeException when the content is no camera description.
    INodeMap *CreateNodeMap(const gcstring &deviceName = "Device", bool releaseData = true);
    /// Drops the description's text.
    void ReleaseCameraDescriptionFileData();

private:
    CNodeMapFactory(const CNodeMapFactory &);
    CNodeMapFactory &operator=(const CNodeMapFactory &);

    struct Private;
    std::unique_ptr<Private> d;
};

/// The interface through which a map made by CNodeMapFactory is freed; null for null.
GENICAM_DECL IDestroy *CastToIDestroy(INodeMap *nodeMap);

} // namespace GENAPI_NAMESPACE
