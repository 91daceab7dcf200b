// SPDX-License-Identifier: MIT
#include "Devices/gentl/ModulePort.h"

#include <limits>
#include <utility>

namespace {

/// What producers are known to answer once a device has been unplugged. Each of them may mean less, too.
bool mayMeanGone(GenTL::GC_ERROR code)
{
    switch (code) {
    case GenTL::GC_ERR_ERROR:
    case GenTL::GC_ERR_NOT_INITIALIZED:
    case GenTL::GC_ERR_INVALID_HANDLE:
    case GenTL::GC_ERR_IO:
    case GenTL::GC_ERR_NOT_AVAILABLE:
    case GenTL::GC_ERR_ABORT:
    case GenTL::GC_ERR_ACCESS_DENIED: // control was taken away
        return true;
    default:
        return code <= GenTL::GC_ERR_CUSTOM_ID;
    }
}

std::size_t sizeOf(int64_t length)
{
    if (length < 0 || length > std::numeric_limits<int32_t>::max())
        throw INVALID_ARGUMENT_EXCEPTION("An access of %lld bytes is not possible", static_cast<long long>(length));
    return static_cast<std::size_t>(length);
}

void checkTransfer(const char *function, std::size_t done, int64_t length, int64_t address)
{
    if (done != static_cast<std::size_t>(length))
        throw RUNTIME_EXCEPTION("%s moved %zu bytes of %lld at address 0x%llx", function, done,
                                static_cast<long long>(length), static_cast<unsigned long long>(address));
}

} // namespace

ModulePort::ModulePort(Target target, GoneHandler onGone) : m_target(std::move(target)), m_onGone(std::move(onGone)) { }

GenApi::EAccessMode ModulePort::GetAccessMode() const
{
    return m_target.isReadOnly ? GenApi::RO : GenApi::RW;
}

void ModulePort::Read(void *buffer, int64_t address, int64_t length)
{
    const Producer &gentl = *m_target.module->producer();
    std::size_t size = sizeOf(length);
    try {
        gentl.check("GCReadPort", gentl->GCReadPort(m_target.handle, static_cast<uint64_t>(address), buffer, &size));
    } catch (const GentlError &error) {
        refuse(error, address, length);
    }
    checkTransfer("GCReadPort", size, length, address);
    if (length == sizeof(uint32_t) && !m_target.readable)
        m_target.readable = static_cast<uint64_t>(address);
}

void ModulePort::Write(const void *buffer, int64_t address, int64_t length)
{
    const Producer &gentl = *m_target.module->producer();
    std::size_t size = sizeOf(length);
    try {
        gentl.check("GCWritePort", gentl->GCWritePort(m_target.handle, static_cast<uint64_t>(address), buffer, &size));
    } catch (const GentlError &error) {
        refuse(error, address, length);
    }
    checkTransfer("GCWritePort", size, length, address);
}

void ModulePort::refuse(const GentlError &error, int64_t address, int64_t length)
{
    if (m_onGone && isGone(error.code()))
        std::exchange(m_onGone, nullptr)();
    const auto place = static_cast<unsigned long long>(address);
    switch (error.code()) {
    case GenTL::GC_ERR_TIMEOUT:
        throw TIMEOUT_EXCEPTION("%s (address 0x%llx)", error.what(), place);
    case GenTL::GC_ERR_ACCESS_DENIED:
        throw ACCESS_EXCEPTION("%s (address 0x%llx)", error.what(), place);
    case GenTL::GC_ERR_INVALID_ADDRESS:
        throw OUT_OF_RANGE_EXCEPTION("%s (%lld bytes at address 0x%llx)", error.what(), static_cast<long long>(length),
                                     place);
    default:
        throw RUNTIME_EXCEPTION("%s (address 0x%llx)", error.what(), place);
    }
}

bool ModulePort::isGone(GenTL::GC_ERROR code) const
{
    if (!mayMeanGone(code) || !m_target.readable)
        return false;
    const Producer &gentl = *m_target.module->producer();
    uint32_t word = 0;
    std::size_t size = sizeof word;
    return mayMeanGone(gentl->GCReadPort(m_target.handle, *m_target.readable, &word, &size));
}
