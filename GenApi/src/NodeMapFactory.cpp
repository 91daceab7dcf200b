// SPDX-License-Identifier: MIT
#include <GenApi/NodeMapFactory.h>

#include "DescriptionText.h"
#include "NodeMap.h"

namespace GENAPI_NAMESPACE {

struct CNodeMapFactory::Private
{
    std::string text;
};

CNodeMapFactory::CNodeMapFactory(EContentType_t, const gcstring &fileName, ECacheUsage_t, bool)
    : d(new Private{NodeEngine::descriptionTextOfFile(fileName.c_str())})
{ }

CNodeMapFactory::CNodeMapFactory(EContentType_t, const void *data, size_t size, ECacheUsage_t, bool)
    : d(new Private{NodeEngine::descriptionText(data, size)})
{ }

CNodeMapFactory::~CNodeMapFactory() = default;

INodeMap *CNodeMapFactory::CreateNodeMap(const gcstring &deviceName, bool releaseData)
{
    const std::string name(deviceName.c_str(), deviceName.size());
    return new NodeEngine::NodeMap(releaseData ? std::move(d->text) : d->text, name);
}

void CNodeMapFactory::ReleaseCameraDescriptionFileData()
{
    d->text = {};
}

} // namespace GENAPI_NAMESPACE
