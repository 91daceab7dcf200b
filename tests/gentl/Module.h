// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/gentl/Failure.h"

namespace TestProducer {

/// Something that has a handle: a module, a remote device's port, a buffer, an event.
class Module : public std::enable_shared_from_this<Module>
{
public:
    Module(std::shared_ptr<Module> moduleParent, std::string moduleName)
        : m_parent(std::move(moduleParent)), m_name(std::move(moduleName))
    { }
    virtual ~Module() = default;
    Module(const Module &) = delete;
    Module &operator=(const Module &) = delete;

    const std::shared_ptr<Module> &parent() const { return m_parent; }
    /// For complaints.
    const std::string &name() const { return m_name; }
    /// It has no handle any more.
    virtual void closed() { }
    /// Whether it must not be left open when its parent is closed.
    virtual bool isToBeClosed() const { return true; }

private:
    const std::shared_ptr<Module> m_parent;
    const std::string m_name;
};

/// The handles that are valid. A handle is a number that is never used again, so that a stale one is found out.
class Handles
{
public:
    void *add(std::shared_ptr<Module> module)
    {
        m_last += 16;
        void *const handle = reinterpret_cast<void *>(m_last);
        m_modules.emplace(handle, std::move(module));
        return handle;
    }

    /// INVALID_HANDLE unless the handle is one of a T.
    template <class T>
    std::shared_ptr<T> get(void *handle) const
    {
        const auto found = m_modules.find(handle);
        auto module = found == m_modules.end() ? nullptr : std::dynamic_pointer_cast<T>(found->second);
        require(module != nullptr, GenTL::GC_ERR_INVALID_HANDLE, "the handle is not valid");
        return module;
    }

    void *of(const Module *module) const
    {
        for (const auto &[handle, candidate] : m_modules) {
            if (candidate.get() == module)
                return handle;
        }
        return nullptr;
    }

    template <class T>
    std::vector<std::shared_ptr<T>> all() const
    {
        std::vector<std::shared_ptr<T>> result;
        for (const auto &[handle, module] : m_modules) {
            if (auto found = std::dynamic_pointer_cast<T>(module))
                result.push_back(std::move(found));
        }
        return result;
    }

    template <class T>
    std::vector<std::shared_ptr<T>> children(const Module *parent) const
    {
        auto result = all<T>();
        const auto isOther = [parent](const auto &module) { return module->parent().get() != parent; };
        result.erase(std::remove_if(result.begin(), result.end(), isOther), result.end());
        return result;
    }

    void remove(const Module *module) { m_modules.erase(of(module)); }

private:
    std::uintptr_t m_last = 0x1000;
    std::map<void *, std::shared_ptr<Module>> m_modules;
};

} // namespace TestProducer
