// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <GenApi/GenApi.h>

#include "Devices/gentl/Modules.h"

/// The registers of a module, or of the camera behind a device module. Keeps the module open.
///
/// What the producer refuses becomes a GenICam exception. When it refuses in a way that tells of a device that is gone,
/// registers that can always be read are looked at: if they are refused as well, the device is gone.
class ModulePort : public GenApi::IPort
{
public:
    struct Target
    {
        std::shared_ptr<Module> module;
        GenTL::PORT_HANDLE handle = nullptr; ///< the module's own or that of its camera
        bool isReadOnly = false;
        /// The address of 4 bytes that can always be read and mean nothing; none: the first ones that could be.
        std::optional<uint64_t> readable{};
    };
    /// Called once, on the thread of an access.
    using GoneHandler = std::function<void()>;

    explicit ModulePort(Target target, GoneHandler onGone = {});

    GenApi::EAccessMode GetAccessMode() const override;
    void Read(void *buffer, int64_t address, int64_t length) override;
    void Write(const void *buffer, int64_t address, int64_t length) override;

private:
    [[noreturn]] void refuse(const GentlError &error, int64_t address, int64_t length);
    bool isGone(GenTL::GC_ERROR code) const;

    Target m_target;
    GoneHandler m_onGone;
};
