// SPDX-License-Identifier: MIT
#include "Simulation/SimulatedPort.h"

#include <QThread>

#include "Simulation/Firmware.h"

void SimulatedPort::setFault(Fault fault)
{
    m_currentFault = fault;
    m_deadlineMissed = false;
}

void SimulatedPort::pass()
{
    if (const int time = m_latency; time > 0)
        QThread::msleep(static_cast<unsigned long>(time));
    switch (m_currentFault) {
    case Fault::None:
        return;
    case Fault::Timeout:
        if (!m_deadlineMissed.exchange(true))
            QThread::msleep(static_cast<unsigned long>(Deadline.count()));
        throw TIMEOUT_EXCEPTION("the device does not answer");
    case Fault::Refuse:
        throw ACCESS_EXCEPTION("the device refuses the access");
    case Fault::Drop:
        throw RUNTIME_EXCEPTION("the link to the device is gone");
    }
}

void SimulatedPort::Read(void *buffer, int64_t address, int64_t length)
{
    pass();
    if (!m_firmware.read(buffer, address, length))
        throw ACCESS_EXCEPTION("there is no register at address 0x%llx", static_cast<long long>(address));
}

void SimulatedPort::Write(const void *buffer, int64_t address, int64_t length)
{
    pass();
    QString objection;
    if (!m_firmware.write(buffer, address, length, &objection))
        throw ACCESS_EXCEPTION("there is no register at address 0x%llx", static_cast<long long>(address));
    if (!objection.isEmpty())
        throw RUNTIME_EXCEPTION("%s", objection.toUtf8().constData());
}
