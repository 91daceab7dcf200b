// SPDX-License-Identifier: MIT
#pragma once

#include "Simulation/RegisterMemory.h"
#include "tests/gentl/Description.h"
#include "tests/gentl/Module.h"

namespace TestProducer {

/// A module with registers and a description of them.
class Port : public Module
{
public:
    using Module::Module;

    /// What tells one port from another.
    struct Identity
    {
        std::string id, vendor, model, transport, module, portName;
    };
    virtual Identity identity() const = 0;
    virtual const Description &description() const = 0;
    virtual void read(std::uint64_t address, void *buffer, std::size_t size) = 0;
    virtual void write(std::uint64_t address, const void *buffer, std::size_t size) = 0;
    virtual bool isWritable() const { return true; }
};

/// Nothing for commands that it does not know.
std::optional<Fact> portInfo(const Port &port, GenTL::PORT_INFO_CMD command);

/// The registers of a module of the producer itself.
class ModuleRegisters
{
public:
    explicit ModuleRegisters(const char *name);

    const Description &description() const { return m_description; }
    RegisterMemory &memory() { return m_memory; }
    void setText(const char *name, const std::string &value, int position = 0);
    void read(std::uint64_t address, void *buffer, std::size_t size) const;
    /// The name of the register that was written; empty if there is none.
    std::string write(std::uint64_t address, const void *buffer, std::size_t size);

private:
    Description m_description;
    RegisterMemory m_memory;
};

/// A module of the producer itself.
class OwnPort : public Port
{
public:
    OwnPort(std::shared_ptr<Module> moduleParent, std::string moduleName, const char *registers)
        : Port(std::move(moduleParent), std::move(moduleName)), m_registers(registers)
    { }

    const Description &description() const override { return m_registers.description(); }
    void read(std::uint64_t address, void *buffer, std::size_t size) override
    {
        refresh(m_registers);
        m_registers.read(address, buffer, size);
    }
    void write(std::uint64_t address, const void *buffer, std::size_t size) override
    {
        written(m_registers.write(address, buffer, size));
    }

protected:
    /// Puts what may have changed into the registers.
    virtual void refresh(ModuleRegisters &registers) = 0;
    virtual void written(const std::string &) { }

private:
    ModuleRegisters m_registers;
};

} // namespace TestProducer
