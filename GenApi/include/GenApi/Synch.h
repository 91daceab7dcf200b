// SPDX-License-Identifier: MIT
#pragma once

#include <Base/GCTypes.h>

#include <mutex>

namespace GENAPI_NAMESPACE {

/// A recursive lock.
class GENICAM_DECL CLock
{
public:
    CLock() { }
    bool TryLock() { return m_mutex.try_lock(); }
    void Lock() { m_mutex.lock(); }
    void Unlock() { m_mutex.unlock(); }

private:
    CLock(const CLock &);
    CLock &operator=(const CLock &);

    std::recursive_mutex m_mutex;
};

/// Holds a lock for a scope.
class GENICAM_DECL AutoLock
{
public:
    explicit AutoLock(CLock &lock) : m_lock(lock) { m_lock.Lock(); }
    ~AutoLock() { m_lock.Unlock(); }

private:
    AutoLock(const AutoLock &);
    AutoLock &operator=(const AutoLock &);

    CLock &m_lock;
};

} // namespace GENAPI_NAMESPACE
