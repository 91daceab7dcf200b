// SPDX-License-Identifier: MIT
#include "Devices/AravisDevice.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <mutex>
#include <utility>

#include <QTimer>

#include "Devices/AlignedPort.h"
#include "Devices/AravisHandle.h"
#include "Devices/AravisStream.h"
#include "Devices/CameraFeatures.h"
#include "Devices/FailFastPort.h"
#include "Devices/FrameMailbox.h"
#include "Devices/LoadedNodeMap.h"
#include "Features/NodeGuard.h"
#include "Features/NodeText.h"

namespace {

const QString AcquisitionStop = QStringLiteral("AcquisitionStop");
constexpr int DoubtInterval = 1000; // ms between two looks at the payload size

/// The registers of an Aravis device, which it keeps alive.
class RegisterPort : public GenApi::IPort
{
public:
    explicit RegisterPort(AravisHandle<ArvDevice> opened) : m_device(std::move(opened)) { }

    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }

    void Read(void *buffer, int64_t address, int64_t length) override
    {
        AravisError error;
        arv_device_read_memory(m_device.get(), static_cast<guint64>(address), size(length), buffer, error.out());
        error.throwIfSet();
    }

    void Write(const void *buffer, int64_t address, int64_t length) override
    {
        AravisError error;
        arv_device_write_memory(m_device.get(), static_cast<guint64>(address), size(length), const_cast<void *>(buffer),
                                error.out());
        error.throwIfSet();
    }

private:
    static guint32 size(int64_t length)
    {
        if (length < 0 || length > std::numeric_limits<guint32>::max())
            throw INVALID_ARGUMENT_EXCEPTION("An access of %lld bytes is not possible", static_cast<long long>(length));
        return static_cast<guint32>(length);
    }

    AravisHandle<ArvDevice> m_device;
};

std::unique_ptr<GenApi::IPort> makeRegisterPort(AravisHandle<ArvDevice> device)
{
    const bool wantsWords = ARV_IS_GV_DEVICE(device.get());
    auto port = std::make_unique<RegisterPort>(std::move(device));
    if (wantsWords)
        return std::make_unique<AlignedPort>(std::move(port));
    return port;
}

/// Where Aravis' threads leave the message that control is lost; the receiver may go at any time.
struct LostMailbox
{
    std::mutex mutex;
    Device *receiver;
    HandOver *handOver; ///< of the receiver
    bool isLost = false; ///< also told to who asks later
};

const QString LostReason = QStringLiteral("the camera no longer answers its host");
using SharedMailbox = std::shared_ptr<LostMailbox>;

/// Guards what GLib holds for deliverLost(): GLib's own lock does so, too, but hidden from the thread sanitizer.
std::mutex heldMailboxes;

void deliverLost(ArvDevice *, gpointer data)
{
    SharedMailbox mailbox;
    {
        const std::lock_guard<std::mutex> lock(heldMailboxes);
        mailbox = *static_cast<SharedMailbox *>(data);
    }
    const std::lock_guard<std::mutex> lock(mailbox->mutex);
    mailbox->isLost = true;
    if (!mailbox->receiver)
        return;
    mailbox->handOver->post([receiver = mailbox->receiver] { Q_EMIT receiver->lost(LostReason); });
}

void releaseMailbox(gpointer data, GClosure *)
{
    const std::lock_guard<std::mutex> lock(heldMailboxes);
    delete static_cast<SharedMailbox *>(data);
}

SharedMailbox connectLost(ArvDevice *source, Device *receiver, HandOver *handOver)
{
    auto mailbox = std::make_shared<LostMailbox>();
    mailbox->receiver = receiver;
    mailbox->handOver = handOver;
    const auto held = [&mailbox] {
        const std::lock_guard<std::mutex> lock(heldMailboxes);
        return new SharedMailbox(mailbox);
    };
    g_signal_connect_data(source, "control-lost", G_CALLBACK(deliverLost), held(), releaseMailbox, GConnectFlags(0));
    return mailbox;
}

/// Not copied: valid as long as the device.
QByteArray descriptionOf(ArvDevice *device)
{
    std::size_t size = 0;
    const char *xml = arv_device_get_genicam_xml(device, &size);
    return QByteArray::fromRawData(xml, static_cast<int>(size));
}

} // namespace

/// An open camera. Members go in reverse order: the node map before its port.
struct AravisDevice::Connection
{
    ArvDevice *device = nullptr; ///< kept alive by the port
    SharedMailbox mailbox;
    std::unique_ptr<FailFastPort> port;
    std::unique_ptr<LoadedNodeMap> nodes;
    bool mayBeSending = true; ///< a program that ended without a word may have left the camera so
    std::chrono::milliseconds heartbeat{0}; ///< 0: the camera does not tell

    Connection() = default;
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;
    ~Connection()
    {
        if (!mailbox)
            return;
        const std::lock_guard<std::mutex> lock(mailbox->mutex);
        mailbox->receiver = nullptr;
    }

    bool isLost() const
    {
        const std::lock_guard<std::mutex> lock(mailbox->mutex);
        return mailbox->isLost;
    }
};

/// A camera that answered, or why it did not.
struct AravisDevice::Reached
{
    std::unique_ptr<Connection> connection; ///< null when the camera could not be reached
    QString error;
};

AravisDevice::AravisDevice(Identity camera, QObject *parent) : Device(parent), m_identity(std::move(camera))
{
    connect(&m_tally, &FrameTally::changed, this, &Device::framesCounted);
    connect(
        &m_tally, &FrameTally::reported, this, [this](const QString &line) { Q_EMIT reported(named(line)); },
        Qt::DirectConnection);
}

AravisDevice::~AravisDevice()
{
    close();
}

void AravisDevice::reach(const std::atomic_bool &cancelled, const ReadProgress &progress)
{
    m_reached = std::make_unique<Reached>(reached());
    if (m_reached->connection)
        m_reached->connection->nodes->readAhead(cancelled, progress);
}

AravisDevice::Reached AravisDevice::reached()
{
    AravisError failure;
    AravisHandle<ArvDevice> camera(arv_open_device(m_identity.id.toUtf8().constData(), failure.out()));
    if (!camera)
        return {nullptr, QString::fromUtf8(failure.text())};
    const QByteArray description = descriptionOf(camera.get());
    auto opened = std::make_unique<Connection>();
    opened->device = camera.get();
    opened->mailbox = connectLost(camera.get(), this, &m_handOver);
    const auto report = [this](bool answering) { reportAnswering(answering); };
    opened->port = std::make_unique<FailFastPort>(makeRegisterPort(std::move(camera)), FailFastPort::Timing(), report);
    QString error;
    if (!guarded(&error, [&] { opened->nodes = std::make_unique<LoadedNodeMap>(description, *opened->port); }))
        return {nullptr, error};
    opened->heartbeat = heartbeatOf(*opened->nodes->get());
    return {std::move(opened), QString()};
}

bool AravisDevice::open(QString *error)
{
    if (m_connection)
        return true;
    const std::unique_ptr<Reached> before = std::move(m_reached);
    Reached camera = before ? std::move(*before) : reached();
    if (camera.connection && camera.connection->isLost())
        camera = {nullptr, LostReason};
    m_connection = std::move(camera.connection);
    *error = camera.error;
    return m_connection != nullptr;
}

void AravisDevice::close()
{
    stopAcquisition();
    m_reached.reset();
    m_connection.reset();
}

PortLoad AravisDevice::portLoad() const
{
    return m_connection ? m_connection->nodes->load() : PortLoad();
}

GenApi::INodeMap *AravisDevice::nodeMap() const
{
    return m_connection ? m_connection->nodes->get() : nullptr;
}

QByteArray AravisDevice::description() const
{
    return m_connection ? descriptionOf(m_connection->device) : QByteArray();
}

std::chrono::milliseconds AravisDevice::heartbeat() const
{
    const bool isTold = m_connection && m_connection->heartbeat.count() > 0;
    return isTold ? m_connection->heartbeat : Device::heartbeat();
}

bool AravisDevice::startAcquisition(QString *error)
{
    if (m_stream)
        return true;
    QString ignored;
    if (std::exchange(m_connection->mayBeSending, false))
        guarded(&ignored, [this] { writeNodeText(*nodeMap(), AcquisitionStop, QString()); });
    m_tally.restart();
    if (!guarded(error, [this] { startStream(); })) {
        m_stream.reset();
        return false;
    }
    Q_EMIT acquiringChanged(true);
    return true;
}

void AravisDevice::startStream()
{
    GenApi::INodeMap &map = *nodeMap();
    const auto receive = [this, mailbox = std::make_shared<FrameMailbox>()](const AravisStream::Arrival &arrival) {
        if (arrival.lostBefore > 0)
            m_tally.count(FrameFate::Lost, arrival.lostBefore);
        if (arrival.fate)
            m_tally.count(*arrival.fate);
        const auto check = [this, isCounted = arrival.fate.has_value()] { checkPayload(isCounted); };
        if (arrival.fate != FrameFate::Good && !m_isDoubting.exchange(true))
            m_handOver.post(check);
        const auto deliver = [this, mailbox] { Q_EMIT frameReady(mailbox->take()); };
        if (!arrival.image.isNull() && mailbox->put(arrival.image))
            m_handOver.post(deliver);
    };
    m_stream =
        std::make_unique<AravisStream>(m_connection->device, static_cast<std::size_t>(payloadSize(map)), receive);
    writeIfWritable(map, "TLParamsLocked", QStringLiteral("1"));
    writeNodeText(map, QStringLiteral("AcquisitionStart"), QString());
}

void AravisDevice::checkPayload(bool isCounted)
{
    QTimer::singleShot(DoubtInterval, this, [this] { m_isDoubting = false; });
    qint64 size = 0;
    QString error;
    const bool isKnown = m_stream && guarded(&error, [&] { size = payloadSize(*nodeMap()); });
    const qint64 before = isKnown ? static_cast<qint64>(m_stream->frameSize()) : size;
    if (size == before)
        return;
    if (size > before && !isCounted)
        m_tally.count(FrameFate::TooLarge);
    const auto restart = [this] {
        writeNodeText(*nodeMap(), AcquisitionStop, QString());
        m_stream.reset();
        startStream();
    };
    const bool isRestarted = guarded(&error, restart);
    const QString outcome = isRestarted ? QStringLiteral("acquisition restarted")
                                        : QStringLiteral("restarting the acquisition failed: ") + error;
    Q_EMIT reported(named(QStringLiteral("%1: %2").arg(payloadChange(before, size), outcome)));
    if (isRestarted)
        return;
    m_stream.reset();
    Q_EMIT acquiringChanged(false);
}

void AravisDevice::stopAcquisition()
{
    if (!m_stream)
        return;
    const auto stop = [this] {
        writeNodeText(*nodeMap(), AcquisitionStop, QString());
        writeIfWritable(*nodeMap(), "TLParamsLocked", QStringLiteral("0"));
    };
    QString error;
    if (!guarded(&error, stop))
        Q_EMIT reported(QStringLiteral("Stopping acquisition failed: ") + error);
    m_stream.reset();
    Q_EMIT acquiringChanged(false);
}

QString AravisDevice::named(const QString &line) const
{
    return QStringLiteral("%1: %2").arg(m_identity.displayName, line);
}

void AravisDevice::reportAnswering(bool answering)
{
    const QString state = answering ? QStringLiteral("%1 answers again") : QStringLiteral("%1 does not answer");
    Q_EMIT reported(state.arg(m_identity.displayName));
    m_handOver.post([this, answering] { Q_EMIT answeringChanged(answering); });
}

namespace {

/// Aravis' names of what it can reach cameras by.
Device::Transport transportOf(const char *protocol)
{
    const QLatin1String name(protocol);
    if (name == QLatin1String("GigEVision"))
        return Device::Transport::GigEVision;
    if (name == QLatin1String("USB3Vision"))
        return Device::Transport::Usb3Vision;
    return name == QLatin1String("Fake") ? Device::Transport::Fake : Device::Transport::Other;
}

FoundDevice foundAt(unsigned int i)
{
    FoundDevice found;
    found.id = QString::fromUtf8(arv_get_device_id(i));
    found.transport = transportOf(arv_get_device_protocol(i));
    found.vendor = QString::fromUtf8(arv_get_device_vendor(i));
    found.model = QString::fromUtf8(arv_get_device_model(i));
    found.serial = QString::fromUtf8(arv_get_device_serial_nbr(i));
    found.address = QString::fromUtf8(arv_get_device_address(i));
    found.hardwareAddress = normalHardwareAddress(QString::fromUtf8(arv_get_device_physical_id(i)));
    found.name = QStringLiteral("%1 %2 (%3)").arg(found.vendor, found.model, found.serial);
    const AravisDevice::Identity identity{found.id, found.name, found.transport};
    found.create = [identity] { return std::make_unique<AravisDevice>(identity); };
    return found;
}

} // namespace

DeviceFinder aravisFinder(bool withFakeCamera)
{
    if (withFakeCamera)
        arv_enable_interface("Fake");
    return [] {
        arv_update_device_list();
        std::vector<FoundDevice> found;
        for (unsigned int i = 0; i < arv_get_n_devices(); ++i)
            found.push_back(foundAt(i));
        return found;
    };
}
