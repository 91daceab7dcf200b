// SPDX-License-Identifier: MIT
#include "Simulation/Firmware.h"

#include <map>
#include <utility>

namespace {

/// Registers that the device keeps when it is switched off.
const char *const KeptRegisters[] = {
    "DeviceUserID",           "UserSetDefault",          "UserSetDescription",
    "GevPersistentIPAddress", "GevPersistentSubnetMask", "GevPersistentDefaultGateway"};

bool isKept(const Register &reg)
{
    return std::any_of(std::begin(KeptRegisters), std::end(KeptRegisters),
                       [&reg](const char *name) { return reg.name == name; });
}

} // namespace

Firmware::Firmware(const QByteArray &description, QByteArrayList powerUpTables, Behaviours deviceBehaviours)
    : m_registers(description), m_tables(std::move(powerUpTables)), m_behaviours(std::move(deviceBehaviours))
{
    powerUp();
}

Firmware::~Firmware() = default;

void Firmware::powerUp()
{
    const std::lock_guard<std::recursive_mutex> hold(m_lock);
    std::map<const Register *, QByteArray> kept;
    for (const Register &reg : m_registers.registers()) {
        if (m_switchedOn && isKept(reg))
            kept[&reg] = m_registers.bytes(reg);
    }
    setAcquiring(false);
    m_registers.clear();
    m_odd.clear();
    for (const QByteArray &table : m_tables)
        m_odd += m_registers.load(table);
    for (const auto &[reg, contents] : kept)
        m_registers.setBytes(*reg, contents);
    m_switchedOn = true;
    resetTimestamp();
    for (const auto &behaviour : m_behaviours)
        behaviour->powerUp(*this);
}

bool Firmware::read(void *buffer, qint64 address, qint64 length) const
{
    const std::lock_guard<std::recursive_mutex> hold(m_lock);
    return m_registers.read(buffer, address, length);
}

bool Firmware::write(const void *buffer, qint64 address, qint64 length, QString *objection)
{
    const std::lock_guard<std::recursive_mutex> hold(m_lock);
    const Register *reg = m_registers.at(address);
    RegisterWrite write;
    if (reg) {
        const QByteArray data(static_cast<const char *>(buffer), int(std::min<qint64>(length, reg->length)));
        write = {reg, int((address - reg->address) / reg->length), RegisterMemory::decode(*reg, data)};
        for (const auto &behaviour : m_behaviours) {
            *objection = behaviour->objection(*this, write);
            if (!objection->isEmpty())
                return true;
        }
    }
    if (!m_registers.write(buffer, address, length))
        return false;
    if (reg) {
        for (const auto &behaviour : m_behaviours)
            behaviour->written(*this, write);
    }
    return true;
}

void Firmware::elapse(std::chrono::milliseconds time)
{
    const std::lock_guard<std::recursive_mutex> hold(m_lock);
    for (const auto &behaviour : m_behaviours)
        behaviour->elapsed(*this, time);
}

void Firmware::frameTaken()
{
    const std::lock_guard<std::recursive_mutex> hold(m_lock);
    for (const auto &behaviour : m_behaviours)
        behaviour->frameTaken(*this);
}

void Firmware::stopAcquisition()
{
    const std::lock_guard<std::recursive_mutex> hold(m_lock);
    setAcquiring(false);
}

void Firmware::setAcquiring(bool acquiring)
{
    if (acquiring == (m_registers.integer("Acquiring") != 0))
        return;
    m_registers.setInteger("Acquiring", acquiring);
    m_registers.setInteger("AcquisitionStatus", acquiring, 0);
    Q_EMIT acquisitionChanged(acquiring);
}
