// SPDX-License-Identifier: MIT
#include "Simulation/Firmware.h"

#include <map>
#include <utility>

namespace {

/// Registers that the device keeps when it is switched off.
const char *const keptRegisters[] = {
    "DeviceUserID",           "UserSetDefault",          "UserSetDescription",
    "GevPersistentIPAddress", "GevPersistentSubnetMask", "GevPersistentDefaultGateway"};

bool isKept(const Register &reg)
{
    return std::any_of(std::begin(keptRegisters), std::end(keptRegisters),
                       [&reg](const char *name) { return reg.name == name; });
}

} // namespace

Firmware::Firmware(const QByteArray &description, QByteArrayList powerUpTables, Behaviours deviceBehaviours)
    : registers(description), tables(std::move(powerUpTables)), behaviours(std::move(deviceBehaviours))
{
    powerUp();
}

Firmware::~Firmware() = default;

void Firmware::powerUp()
{
    const std::lock_guard<std::recursive_mutex> hold(lock);
    std::map<const Register *, QByteArray> kept;
    for (const Register &reg : registers.registers()) {
        if (switchedOn && isKept(reg))
            kept[&reg] = registers.bytes(reg);
    }
    setAcquiring(false);
    registers.clear();
    odd.clear();
    for (const QByteArray &table : tables)
        odd += registers.load(table);
    for (const auto &[reg, contents] : kept)
        registers.setBytes(*reg, contents);
    switchedOn = true;
    resetTimestamp();
    for (const auto &behaviour : behaviours)
        behaviour->powerUp(*this);
}

bool Firmware::read(void *buffer, qint64 address, qint64 length) const
{
    const std::lock_guard<std::recursive_mutex> hold(lock);
    return registers.read(buffer, address, length);
}

bool Firmware::write(const void *buffer, qint64 address, qint64 length, QString *objection)
{
    const std::lock_guard<std::recursive_mutex> hold(lock);
    const Register *reg = registers.at(address);
    RegisterWrite write;
    if (reg) {
        const QByteArray data(static_cast<const char *>(buffer), int(std::min<qint64>(length, reg->length)));
        write = {reg, int((address - reg->address) / reg->length), RegisterMemory::decode(*reg, data)};
        for (const auto &behaviour : behaviours) {
            *objection = behaviour->objection(*this, write);
            if (!objection->isEmpty())
                return true;
        }
    }
    if (!registers.write(buffer, address, length))
        return false;
    if (reg) {
        for (const auto &behaviour : behaviours)
            behaviour->written(*this, write);
    }
    return true;
}

void Firmware::elapse(std::chrono::milliseconds time)
{
    const std::lock_guard<std::recursive_mutex> hold(lock);
    for (const auto &behaviour : behaviours)
        behaviour->elapsed(*this, time);
}

void Firmware::frameTaken()
{
    const std::lock_guard<std::recursive_mutex> hold(lock);
    for (const auto &behaviour : behaviours)
        behaviour->frameTaken(*this);
}

void Firmware::stopAcquisition()
{
    const std::lock_guard<std::recursive_mutex> hold(lock);
    setAcquiring(false);
}

void Firmware::setAcquiring(bool acquiring)
{
    if (acquiring == (registers.integer("Acquiring") != 0))
        return;
    registers.setInteger("Acquiring", acquiring);
    registers.setInteger("AcquisitionStatus", acquiring, 0);
    Q_EMIT acquisitionChanged(acquiring);
}
