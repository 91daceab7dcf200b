// SPDX-License-Identifier: MIT
// The functions of the library as a whole, and of ports.
#include <algorithm>
#include <cstdlib>

#include "tests/gentl/Call.h"
#include "tests/gentl/TestScript.h"

using namespace TestProducer;

namespace TestProducer {

LastError &lastError()
{
    static thread_local LastError error;
    return error;
}

namespace {

/// A transfer of a port's registers, as long as the script leaves it.
template <class Transfer>
void transfer(std::uint64_t address, const void *buffer, std::size_t *size, Transfer transfer)
{
    require(buffer && size && *size > 0, GenTL::GC_ERR_INVALID_PARAMETER, "nothing is to be transferred");
    if (const auto step = Faults::instance().number(Faults::Kind::Align))
        require(address % *step == 0 && *size % *step == 0, GenTL::GC_ERR_INVALID_ADDRESS, "the access is not aligned");
    const std::size_t length =
        std::min<std::size_t>(*size, Faults::instance().number(Faults::Kind::Short).value_or(*size));
    transfer(length);
    *size = length;
}

/// Does the entries of a stack one by one; `count` becomes the number of those that succeeded.
template <class One>
void transferStack(GenTL::PORT_REGISTER_STACK_ENTRY *entries, std::size_t *count, One one)
{
    require(entries && count, GenTL::GC_ERR_INVALID_PARAMETER, "there are no entries");
    const std::size_t wanted = std::exchange(*count, 0);
    for (std::size_t i = 0; i < wanted; ++i, ++*count) {
        GenTL::PORT_REGISTER_STACK_ENTRY entry = entries[i]; // which is packed
        std::size_t size = entry.Size;
        transfer(entry.Address, entry.pBuffer, &size, [&](std::size_t length) { one(entry, length); });
        entries[i].Size = size;
    }
}

std::vector<Url> urls(const World &world, const Port &port)
{
    return port.description().urls(world.urlMode);
}

} // namespace

} // namespace TestProducer

GenTL::GC_ERROR GenTL::GCInitLib()
{
    const char *const script = std::getenv("PARAMTER_TEST_SCRIPT");
    if (script && !world().isInitialised)
        paramter_test_script(script);
    return guardedCall({"GCInitLib"}, [] {
        const Lock lock(world().mutex);
        require(!world().isInitialised, GC_ERR_RESOURCE_IN_USE, "it was called already");
        world().powerUp();
        world().isInitialised = true;
    });
}

GenTL::GC_ERROR GenTL::GCCloseLib()
{
    return call("GCCloseLib", [](World &world, Lock &lock) {
        for (const auto &system : world.handles.children<System>(nullptr)) {
            world.complain("the library is closed while the system is open");
            world.close(system, lock);
        }
        world.isInitialised = false;
    });
}

GenTL::GC_ERROR GenTL::GCGetInfo(TL_INFO_CMD iInfoCmd, INFO_DATATYPE *piType, void *pBuffer, std::size_t *piSize)
{
    return guardedCall({"GCGetInfo", std::uint64_t(iInfoCmd)}, [&] {
        answer({piType, pBuffer, piSize}, known(systemInfo(iInfoCmd)));
    });
}

GenTL::GC_ERROR GenTL::GCGetLastError(GC_ERROR *piErrorCode, char *sErrText, std::size_t *piSize)
{
    const LastError error = lastError();
    const GC_ERROR result = guardedCall({"GCGetLastError"}, [&] {
        require(piErrorCode, GC_ERR_INVALID_PARAMETER, "there is no place for the code");
        *piErrorCode = error.code;
        answerText(sErrText, piSize, error.words);
    });
    lastError() = error;
    return result;
}

GenTL::GC_ERROR GenTL::GCReadPort(PORT_HANDLE hPort, std::uint64_t iAddress, void *pBuffer, std::size_t *piSize)
{
    return call("GCReadPort", iAddress, [&](World &world) {
        const auto port = world.handles.get<Port>(hPort);
        transfer(iAddress, pBuffer, piSize, [&](std::size_t length) { port->read(iAddress, pBuffer, length); });
    });
}

GenTL::GC_ERROR GenTL::GCWritePort(PORT_HANDLE hPort, std::uint64_t iAddress, const void *pBuffer, std::size_t *piSize)
{
    return call("GCWritePort", iAddress, [&](World &world) {
        const auto port = world.handles.get<Port>(hPort);
        transfer(iAddress, pBuffer, piSize, [&](std::size_t length) { port->write(iAddress, pBuffer, length); });
    });
}

GenTL::GC_ERROR GenTL::GCReadPortStacked(PORT_HANDLE hPort, PORT_REGISTER_STACK_ENTRY *pEntries,
                                         std::size_t *piNumEntries)
{
    return call("GCReadPortStacked", [&](World &world) {
        const auto port = world.handles.get<Port>(hPort);
        transferStack(pEntries, piNumEntries, [&](const PORT_REGISTER_STACK_ENTRY &entry, std::size_t length) {
            port->read(entry.Address, entry.pBuffer, length);
        });
    });
}

GenTL::GC_ERROR GenTL::GCWritePortStacked(PORT_HANDLE hPort, PORT_REGISTER_STACK_ENTRY *pEntries,
                                          std::size_t *piNumEntries)
{
    return call("GCWritePortStacked", [&](World &world) {
        const auto port = world.handles.get<Port>(hPort);
        transferStack(pEntries, piNumEntries, [&](const PORT_REGISTER_STACK_ENTRY &entry, std::size_t length) {
            port->write(entry.Address, entry.pBuffer, length);
        });
    });
}

GenTL::GC_ERROR GenTL::GCGetPortURL(PORT_HANDLE hPort, char *sURL, std::size_t *piSize)
{
    return call("GCGetPortURL", [&](World &world) {
        const auto port = world.handles.get<Port>(hPort);
        const auto found = urls(world, *port);
        answerText(sURL, piSize, found.empty() ? port->description().urls("plain").front().text : found.front().text);
    });
}

GenTL::GC_ERROR GenTL::GCGetNumPortURLs(PORT_HANDLE hPort, std::uint32_t *piNumURLs)
{
    return call("GCGetNumPortURLs",
                [&](World &world) { answerCount(piNumURLs, urls(world, *world.handles.get<Port>(hPort)).size()); });
}

GenTL::GC_ERROR GenTL::GCGetPortURLInfo(PORT_HANDLE hPort, std::uint32_t iURLIndex, URL_INFO_CMD iInfoCmd,
                                        INFO_DATATYPE *piType, void *pBuffer, std::size_t *piSize)
{
    return call("GCGetPortURLInfo", std::uint64_t(iInfoCmd), [&](World &world) {
        const auto found = urls(world, *world.handles.get<Port>(hPort));
        answer({piType, pBuffer, piSize}, known(at(found, iURLIndex).info(iInfoCmd)));
    });
}

GenTL::GC_ERROR GenTL::GCGetPortInfo(PORT_HANDLE hPort, PORT_INFO_CMD iInfoCmd, INFO_DATATYPE *piType, void *pBuffer,
                                     std::size_t *piSize)
{
    return call("GCGetPortInfo", std::uint64_t(iInfoCmd), [&](World &world) {
        answer({piType, pBuffer, piSize}, known(portInfo(*world.handles.get<Port>(hPort), iInfoCmd)));
    });
}
