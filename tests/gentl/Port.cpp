// SPDX-License-Identifier: MIT
#include "tests/gentl/Port.h"

using namespace GenTL;

namespace TestProducer {

std::optional<Fact> portInfo(const Port &port, PORT_INFO_CMD command)
{
    const Port::Identity identity = port.identity();
    switch (command) {
    case PORT_INFO_ID:
        return text(identity.id);
    case PORT_INFO_VENDOR:
        return text(identity.vendor);
    case PORT_INFO_MODEL:
        return text(identity.model);
    case PORT_INFO_TLTYPE:
        return text(identity.transport);
    case PORT_INFO_MODULE:
        return text(identity.module);
    case PORT_INFO_LITTLE_ENDIAN:
    case PORT_INFO_ACCESS_READ:
        return flag(true);
    case PORT_INFO_ACCESS_WRITE:
        return flag(port.isWritable());
    case PORT_INFO_BIG_ENDIAN:
    case PORT_INFO_ACCESS_NA:
    case PORT_INFO_ACCESS_NI:
        return flag(false);
    case PORT_INFO_VERSION:
        return text("1.0.0");
    case PORT_INFO_PORTNAME:
        return text(identity.portName);
    default:
        return {};
    }
}

ModuleRegisters::ModuleRegisters(const char *name)
    : m_description(QStringLiteral(":/test-producer/"), QString::fromLatin1(name)), m_memory(m_description.xml())
{
    m_memory.setInteger("DeviceUpdateTimeout", 200); // each module ignores what the others have
    m_memory.setInteger("LinkCommandTimeout", 1000);
    m_memory.setInteger("LinkCommandRetryCount", 3);
}

void ModuleRegisters::setText(const char *name, const std::string &value, int position)
{
    m_memory.setText(name, QByteArray::fromStdString(value), position);
}

void ModuleRegisters::read(std::uint64_t address, void *buffer, std::size_t size) const
{
    require(m_description.read(address, buffer, size) || m_memory.read(buffer, qint64(address), qint64(size)),
            GC_ERR_INVALID_ADDRESS, "there is no register at this address");
}

std::string ModuleRegisters::write(std::uint64_t address, const void *buffer, std::size_t size)
{
    const Register *const reg = m_memory.at(qint64(address));
    require(m_memory.write(buffer, qint64(address), qint64(size)), GC_ERR_INVALID_ADDRESS,
            "there is no register at this address");
    return reg ? reg->name.toStdString() : std::string();
}

} // namespace TestProducer
