// SPDX-License-Identifier: MIT
#include <GenApi/NodeMapFactory.h>

#include "DescriptionText.h"
#include "NodeMap.h"

namespace GENAPI_NAMESPACE {

struct CNodeMapFactory::Private
{
    std::string data; // as given, a file's as text already
};

CNodeMapFactory::CNodeMapFactory(EContentType_t, const gcstring &fileName, ECacheUsage_t, bool)
    : d(new Private{NodeEngine::descriptionTextOfFile(fileName.c_str())})
{ }

CNodeMapFactory::CNodeMapFactory(EContentType_t, const void *data, size_t size, ECacheUsage_t, bool)
    : d(new Private{std::string(static_cast<const char *>(data), data ? size : 0)})
{ }

CNodeMapFactory::~CNodeMapFactory() = default;

INodeMap *CNodeMapFactory::CreateNodeMap(const gcstring &deviceName, bool releaseData)
{
    const std::string name(deviceName.c_str(), deviceName.size());
    std::string text = NodeEngine::descriptionText(d->data.data(), d->data.size());
    if (releaseData)
        ReleaseCameraDescriptionFileData();
    return new NodeEngine::NodeMap(std::move(text), name);
}

void CNodeMapFactory::ReleaseCameraDescriptionFileData()
{
    d->data = {};
}

} // namespace GENAPI_NAMESPACE
