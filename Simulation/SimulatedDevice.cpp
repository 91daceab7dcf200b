// SPDX-License-Identifier: MIT
#include "Simulation/SimulatedDevice.h"

#include <QFile>
#include <QPointer>

#include "Features/NodeGuard.h"
#include "Simulation/Firmware.h"
#include "Simulation/FrameSource.h"

namespace {

QByteArray resource(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArrayList resources(const QStringList &paths)
{
    QByteArrayList contents;
    for (const QString &path : paths)
        contents << resource(path);
    return contents;
}

void execute(GenApi::INodeMap &nodes, const char *command)
{
    GenApi::CCommandPtr(nodes.GetNode(command))->Execute();
}

/// Locks or unlocks what must not change while images are transferred.
void setParametersLocked(GenApi::INodeMap &nodes, bool locked)
{
    GenApi::CIntegerPtr(nodes.GetNode("TLParamsLocked"))->SetValue(locked ? 1 : 0);
}

} // namespace

SimulatedDevice::SimulatedDevice(const SimulatedModel &deviceModel, QObject *parent)
    : Device(parent), m_model(deviceModel), m_description(resource(m_model.description)),
      m_firmware(std::make_unique<Firmware>(m_description, resources(m_model.powerUpTables), m_model.behaviours())),
      m_port(*m_firmware)
{
    connect(m_firmware.get(), &Firmware::acquisitionChanged, this, &SimulatedDevice::onAcquisitionChanged,
            Qt::QueuedConnection);
    connect(&m_tally, &FrameTally::changed, this, &Device::framesCounted);
    const auto report = [this](const QString &line) {
        Q_EMIT reported(QStringLiteral("%1: %2").arg(m_model.name, line));
    };
    connect(&m_tally, &FrameTally::reported, this, report);
    const auto forgetValues = [this] {
        if (!m_nodes)
            return;
        m_nodes->get()->InvalidateNodes();
        Q_EMIT restarted();
    };
    connect(m_firmware.get(), &Firmware::restarted, this, forgetValues, Qt::QueuedConnection);
}

SimulatedDevice::~SimulatedDevice()
{
    close();
}

bool SimulatedDevice::open(QString *error)
{
    if (isOpen())
        return true;
    const bool loaded = guarded(error, [this] {
        quint32 word = 0;
        m_port.Read(&word, 0, sizeof word);
        m_nodes.emplace(m_description, m_port);
    });
    if (loaded)
        startRunning();
    return loaded;
}

void SimulatedDevice::startRunning()
{
    m_source = m_model.source(*m_firmware);
    FrameSource *const source = m_source.get();
    connect(m_firmware.get(), &Firmware::acquisitionChanged, source, &FrameSource::setAcquiring, Qt::QueuedConnection);
    connect(m_firmware.get(), &Firmware::triggered, source, &FrameSource::trigger, Qt::QueuedConnection);
    const auto fetch = [this, from = QPointer<FrameSource>(source)] {
        if (!from) // the device was closed meanwhile
            return;
        deliver(from->take());
    };
    connect(source, &FrameSource::frameReady, this, fetch, Qt::QueuedConnection);
    source->moveToThread(nullptr); // the thread fetches it
    m_thread = std::thread([source, home = thread()] { source->live(*home); });
}

void SimulatedDevice::deliver(SimulatedFrame frame)
{
    const FrameFaults::Passage passage = m_frameFaults.pass(frame);
    m_tally.count(passage.fate);
    if (!passage.payloadChange.isEmpty())
        Q_EMIT reported(QStringLiteral("%1: %2: acquisition restarted").arg(m_model.name, passage.payloadChange));
    if (passage.fate != FrameFate::Good)
        return;
    if (frame.heights)
        Q_EMIT heightReady(*frame.heights);
    Q_EMIT frameReady(frame.image);
}

void SimulatedDevice::close()
{
    if (!isOpen())
        return;
    stopAcquisition();
    QMetaObject::invokeMethod(m_source.get(), "ending", Qt::QueuedConnection);
    m_thread.join();
    m_source.reset();
    m_nodes.reset();
    // A link that failed may have kept the lock from being taken off.
    m_firmware->change([](RegisterMemory &memory) { memory.setInteger("TLParamsLocked", 0); });
}

GenApi::INodeMap *SimulatedDevice::nodeMap() const
{
    return m_nodes ? m_nodes->get() : nullptr;
}

bool SimulatedDevice::startAcquisition(QString *error)
{
    if (!isOpen() || !canAcquire()) {
        *error = QStringLiteral("the device cannot take images now");
        return false;
    }
    if (isAcquiring())
        return true;
    m_frameFaults.begin();
    m_tally.restart();
    return guarded(error, [this] {
        setParametersLocked(*nodeMap(), true);
        execute(*nodeMap(), "AcquisitionStart");
    });
}

void SimulatedDevice::stopAcquisition()
{
    if (!isAcquiring())
        return;
    QString ignored; // the device stops, whether the link lets the command pass or not
    guarded(&ignored, [this] { execute(*nodeMap(), "AcquisitionStop"); });
    m_firmware->stopAcquisition();
    unlockParameters();
}

bool SimulatedDevice::isAcquiring() const
{
    return m_firmware->inspect([](const RegisterMemory &memory) { return memory.integer("Acquiring") == 1; });
}

void SimulatedDevice::onAcquisitionChanged(bool acquiring)
{
    if (!acquiring)
        unlockParameters();
    Q_EMIT acquiringChanged(acquiring);
}

void SimulatedDevice::unlockParameters()
{
    if (!isOpen() || isAcquiring())
        return;
    QString ignored; // a link that fails shows elsewhere
    guarded(&ignored, [this] {
        nodeMap()->GetNode("AcquiringReg")->InvalidateNode();
        setParametersLocked(*nodeMap(), false);
    });
}

void SimulatedDevice::setFault(Fault fault)
{
    const bool wasAnswering = m_port.fault() != Fault::Timeout;
    m_port.setFault(fault);
    const bool isAnswering = fault != Fault::Timeout;
    if (isOpen() && isAnswering != wasAnswering)
        Q_EMIT answeringChanged(isAnswering);
    if (fault != Fault::Drop)
        return;
    Q_EMIT lost(QStringLiteral("the link to the device is gone"));
    m_firmware->stopAcquisition();
}

bool SimulatedDevice::isPresent() const
{
    return m_port.fault() == Fault::None || m_port.fault() == Fault::Refuse;
}

void SimulatedDevice::setLatency(std::chrono::milliseconds time)
{
    m_port.setLatency(time);
}
