// SPDX-License-Identifier: MIT
#include "Tools/cli/OpenDevice.h"

#include <QCoreApplication>

#include "Tools/cli/Interrupt.h"

namespace {

constexpr qint64 EventInterval = 20; // ms

} // namespace

OpenDevice::OpenDevice(std::unique_ptr<Device> device) : m_device(std::move(device))
{
    m_sinceEvents.start();
    QObject::connect(m_device.get(), &Device::lost, [this](const QString &reason) { m_lossReason = reason; });
    QObject::connect(m_device.get(), &Device::answeringChanged, [this](bool answering) {
        if (!answering)
            m_lossReason = QStringLiteral("it does not answer");
    });
}

OpenDevice::~OpenDevice()
{
    m_device->disconnect();
    m_device->close();
}

std::unique_ptr<OpenDevice> OpenDevice::open(std::unique_ptr<Device> device, QString *error)
{
    QString reason;
    std::unique_ptr<OpenDevice> opened(new OpenDevice(std::move(device)));
    if (opened->m_device->open(&reason))
        return opened;
    *error = QStringLiteral("%1 cannot be opened: %2").arg(opened->id(), reason);
    return nullptr;
}

bool OpenDevice::goesOn()
{
    return m_sinceEvents.elapsed() >= EventInterval ? endsWell() : !Interrupt::happened() && !isLost();
}

bool OpenDevice::endsWell()
{
    QCoreApplication::processEvents();
    m_sinceEvents.restart();
    return !Interrupt::happened() && !isLost();
}

QString OpenDevice::lossText() const
{
    return QStringLiteral("%1 is lost: %2").arg(id(), m_lossReason);
}
