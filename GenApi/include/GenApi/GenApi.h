// SPDX-License-Identifier: MIT
#pragma once

#include <Base/GCException.h>
#include <Base/GCString.h>
#include <Base/GCStringVector.h>
#include <GenApi/Container.h>
#include <GenApi/EnumClasses.h>
#include <GenApi/IBase.h>
#include <GenApi/IBoolean.h>
#include <GenApi/ICategory.h>
#include <GenApi/ICommand.h>
#include <GenApi/IDestroy.h>
#include <GenApi/IDeviceInfo.h>
#include <GenApi/IEnumEntry.h>
#include <GenApi/IEnumeration.h>
#include <GenApi/IFloat.h>
#include <GenApi/IInteger.h>
#include <GenApi/INode.h>
#include <GenApi/INodeMap.h>
#include <GenApi/IPort.h>
#include <GenApi/IRegister.h>
#include <GenApi/ISelector.h>
#include <GenApi/IString.h>
#include <GenApi/IValue.h>
#include <GenApi/NodeCallback.h>
#include <GenApi/NodeMapFactory.h>
#include <GenApi/Pointer.h>
#include <GenApi/Synch.h>
#include <GenApi/Types.h>

namespace GENAPI_NAMESPACE {

inline bool IsImplemented(EAccessMode mode)
{
    return mode != NI;
}
inline bool IsAvailable(EAccessMode mode)
{
    return mode != NI && mode != NA;
}
inline bool IsReadable(EAccessMode mode)
{
    return mode == RO || mode == RW;
}
inline bool IsWritable(EAccessMode mode)
{
    return mode == WO || mode == RW;
}

#define GENAPI_ACCESS_TEST(name)                                                                                       \
    inline bool name(const IBase *node)                                                                                \
    {                                                                                                                  \
        return node && name(node->GetAccessMode());                                                                    \
    }                                                                                                                  \
    inline bool name(const IBase &node)                                                                                \
    {                                                                                                                  \
        return name(node.GetAccessMode());                                                                             \
    }                                                                                                                  \
    template <class T, class B>                                                                                        \
    inline bool name(const CPointer<T, B> &pointer)                                                                    \
    {                                                                                                                  \
        return pointer.IsValid() && name(pointer->GetAccessMode());                                                    \
    }

GENAPI_ACCESS_TEST(IsImplemented)
GENAPI_ACCESS_TEST(IsAvailable)
GENAPI_ACCESS_TEST(IsReadable)
GENAPI_ACCESS_TEST(IsWritable)

#undef GENAPI_ACCESS_TEST

template <class T>
T *CFloatPtr::castAlias() const
{
    INode *node = dynamic_cast<INode *>(static_cast<IBase *>(m_pointer));
    return node ? dynamic_cast<T *>(static_cast<IBase *>(node->GetCastAlias())) : nullptr;
}

} // namespace GENAPI_NAMESPACE
