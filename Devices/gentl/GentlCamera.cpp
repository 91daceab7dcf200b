// SPDX-License-Identifier: MIT
#include "Devices/gentl/GentlCamera.h"

#include <mutex>
#include <utility>

#include <QPointer>
#include <QTimer>

#include "Devices/CameraFeatures.h"
#include "Devices/FrameMailbox.h"
#include "Devices/gentl/ChunkPorts.h"
#include "Devices/gentl/GentlModule.h"
#include "Devices/gentl/GentlOpening.h"
#include "Devices/gentl/GentlStream.h"
#include "Devices/gentl/ModuleConnection.h"
#include "Features/NodeText.h"

namespace {

const char AcquisitionStart[] = "AcquisitionStart";
const char AcquisitionStop[] = "AcquisitionStop";
const char ParametersLocked[] = "TLParamsLocked";
constexpr int DoubtInterval = 1000; // ms between two looks at the payload size
const QString GoneAlready = QStringLiteral("the producer no longer reaches it");

/// Transports whose cameras take whole 32-bit words only.
bool wantsWords(const QString &transport)
{
    return transport == QLatin1String(GenTL::TLTypeGEVName) || transport == QLatin1String(GenTL::TLTypeCXPName);
}

void execute(GenApi::INodeMap &map, const char *command)
{
    writeNodeText(map, QString::fromLatin1(command), QString());
}

uint64_t valueOf(GenApi::INodeMap &map, const char *name)
{
    const GenApi::CIntegerPtr number(map.GetNode(name));
    const GenApi::CEnumerationPtr choice(map.GetNode(name));
    int64_t value = 0;
    guardNode([&] {
        if (number.IsValid())
            value = number->GetValue();
        else if (choice.IsValid())
            value = choice->GetIntValue();
    });
    return static_cast<uint64_t>(value);
}

FrameFormat frameFormat(GenApi::INodeMap &map)
{
    return {static_cast<uint32_t>(valueOf(map, "PixelFormat")), static_cast<int>(valueOf(map, "Width")),
            static_cast<int>(valueOf(map, "Height"))};
}

/// Bytes of a frame; 0 when the camera does not tell, since the stream may know.
std::size_t payloadOrNone(GenApi::INodeMap &map)
{
    return GenApi::IsReadable(map.GetNode("PayloadSize")) ? static_cast<std::size_t>(payloadSize(map)) : 0;
}

/// The newest chunk data on their way to the GUI thread.
class ChunkMailbox
{
public:
    /// True when the receiver is to be told to take() once.
    bool put(std::vector<FrameChunk> chunks)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_chunks = std::move(chunks);
        return !std::exchange(m_isTold, true);
    }

    std::vector<FrameChunk> take()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isTold = false;
        return std::move(m_chunks);
    }

private:
    std::mutex m_mutex; ///< guards what follows
    std::vector<FrameChunk> m_chunks;
    bool m_isTold = false;
};

} // namespace

/// An open camera. Members go in reverse order; the producer's device is held by the port.
struct GentlCamera::Connection
{
    std::shared_ptr<DeviceLine> line;
    std::weak_ptr<DeviceModule> device;
    std::vector<QByteArray> streams; ///< ids
    std::unique_ptr<ModuleConnection> nodes;
    std::unique_ptr<ChunkPorts> chunks;
    bool mayBeSending = true; ///< a program that ended without a word may have left the camera so
    std::chrono::milliseconds heartbeat{0}; ///< 0: the camera does not tell

    Connection(const GentlIdentity &identity, std::shared_ptr<DeviceLine> told);
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    GenApi::INodeMap &map() const { return *nodes->nodes().get(); }
};

GentlCamera::Connection::Connection(const GentlIdentity &identity, std::shared_ptr<DeviceLine> told)
    : line(std::move(told))
{
    const GentlPlace &place = identity.place;
    const std::shared_ptr<SystemModule> system = SystemModule::open(Producer::load(place.producer));
    const std::shared_ptr<DeviceModule> opened = system->openInterface(place.interfaceId)->openDevice(place.deviceId);
    ModuleConnection::Plan plan;
    plan.target = {opened, opened->remotePort(), opened->isReadOnly()};
    plan.wantsWords = wantsWords(identity.transport);
    nodes = std::make_unique<ModuleConnection>(plan, line);
    chunks = std::make_unique<ChunkPorts>(map());
    heartbeat = heartbeatOf(map());
    guardNode([&] { streams = opened->streamIds(); });
    device = opened;
    if (opened->isReadOnly())
        line->report(QStringLiteral("open for reading only: another program or computer controls it"));
}

GentlCamera::Connection::~Connection()
{
    const std::shared_ptr<DeviceModule> opened = line->isLost() ? device.lock() : nullptr;
    if (opened)
        opened->retire();
}

/// A camera that answered, or why it did not.
struct GentlCamera::Reached
{
    std::unique_ptr<Connection> connection; ///< null when the camera could not be reached
    QString error;
};

/// What the stream's thread hands over.
struct GentlCamera::Arrivals
{
    FrameMailbox images;
    ChunkMailbox chunks;
};

GentlCamera::GentlCamera(GentlIdentity identity, QObject *parent) : Device(parent), m_identity(std::move(identity))
{
    connect(&m_tally, &FrameTally::changed, this, &Device::framesCounted);
    connect(
        &m_tally, &FrameTally::reported, this,
        [this](const QString &line) { Q_EMIT reported(QStringLiteral("%1: %2").arg(displayName(), line)); },
        Qt::DirectConnection);
}

GentlCamera::~GentlCamera()
{
    close();
}

void GentlCamera::reach(const std::atomic_bool &cancelled, const ReadProgress &progress)
{
    m_reached = std::make_unique<Reached>(reached());
    if (m_reached->connection)
        m_reached->connection->nodes->readAhead(cancelled, progress);
}

GentlCamera::Reached GentlCamera::reached()
{
    m_line = std::make_shared<DeviceLine>(this, &m_handOver, displayName());
    const auto open = [identity = m_identity, line = m_line] { return std::make_unique<Connection>(identity, line); };
    Reached camera;
    camera.connection = openBounded(open, m_identity, &camera.error);
    if (!camera.connection)
        m_line->hangUp();
    return camera;
}

bool GentlCamera::open(QString *error)
{
    if (m_connection)
        return true;
    const std::unique_ptr<Reached> before = std::move(m_reached);
    Reached camera = before ? std::move(*before) : reached();
    if (camera.connection && camera.connection->line->isLost())
        camera = {nullptr, GoneAlready};
    m_connection = std::move(camera.connection);
    *error = camera.error;
    if (m_connection)
        m_connection->nodes->goLive();
    return m_connection != nullptr;
}

void GentlCamera::close()
{
    if (m_connection)
        Q_EMIT closing();
    stopAcquisition();
    if (m_line)
        m_line->hangUp();
    m_reached.reset();
    m_connection.reset();
    m_line.reset();
}

GenApi::INodeMap *GentlCamera::nodeMap() const
{
    return m_connection ? &m_connection->map() : nullptr;
}

QByteArray GentlCamera::description() const
{
    return m_connection ? m_connection->nodes->description() : QByteArray();
}

PortLoad GentlCamera::portLoad() const
{
    return m_connection ? m_connection->nodes->nodes().load() : PortLoad();
}

std::chrono::milliseconds GentlCamera::heartbeat() const
{
    const bool isTold = m_connection && m_connection->heartbeat.count() > 0;
    return isTold ? m_connection->heartbeat : Device::heartbeat();
}

bool GentlCamera::startAcquisition(QString *error)
{
    if (m_stream)
        return true;
    QString ignored;
    if (std::exchange(m_connection->mayBeSending, false))
        guarded(&ignored, [this] { execute(*nodeMap(), AcquisitionStop); });
    m_tally.restart();
    if (!guarded(error, [this] { startStream(); })) {
        m_stream.reset();
        guarded(&ignored, [this] { writeIfWritable(*nodeMap(), ParametersLocked, QStringLiteral("0")); });
        return false;
    }
    Q_EMIT acquiringChanged(true);
    return true;
}

void GentlCamera::startStream()
{
    GenApi::INodeMap &map = *nodeMap();
    GentlStream::Plan plan;
    plan.device = m_connection->device;
    plan.id = m_connection->streams.empty() ? QByteArray() : m_connection->streams.front();
    plan.frameSize = payloadOrNone(map);
    plan.format = frameFormat(map);
    plan.wantsChunks = !m_connection->chunks->isEmpty();
    writeIfWritable(map, ParametersLocked, QStringLiteral("1"));
    const auto receive = [this, arrivals = std::make_shared<Arrivals>()](GentlStream::Arrival arrival) {
        take(std::move(arrival), arrivals);
    };
    const auto report = [line = m_line](const QString &text) { line->report(text); };
    m_stream = std::make_unique<GentlStream>(plan, GentlStream::Receiver{receive, report});
    execute(map, AcquisitionStart);
}

void GentlCamera::take(GentlStream::Arrival arrival, const std::shared_ptr<Arrivals> &arrivals)
{
    if (arrival.lostBefore > 0)
        m_tally.count(FrameFate::Lost, arrival.lostBefore);
    m_tally.count(arrival.fate);
    if (arrival.fate != FrameFate::Good && !m_isDoubting.exchange(true))
        m_handOver.post([this] { checkPayload(); });
    const auto adoptChunks = [this, arrivals] {
        if (m_connection)
            m_connection->chunks->adopt(arrivals->chunks.take());
    };
    if (!arrival.chunks.empty() && arrivals->chunks.put(std::move(arrival.chunks)))
        m_handOver.post(adoptChunks);
    if (!arrival.image.isNull() && arrivals->images.put(arrival.image))
        m_handOver.post([this, arrivals] { Q_EMIT frameReady(arrivals->images.take()); });
}

void GentlCamera::checkPayload()
{
    QTimer::singleShot(DoubtInterval, this, [this] { m_isDoubting = false; });
    if (!m_stream)
        return;
    const auto before = static_cast<qint64>(m_stream->frameSize());
    qint64 size = before;
    QString error;
    const bool isKnown = guarded(&error, [&] { size = m_stream->currentFrameSize(payloadOrNone(*nodeMap())); });
    if (!isKnown || size == before)
        return;
    const auto restart = [this] {
        execute(*nodeMap(), AcquisitionStop);
        m_stream.reset();
        startStream();
    };
    const bool isRestarted = guarded(&error, restart);
    const QString outcome = isRestarted ? QStringLiteral("acquisition restarted")
                                        : QStringLiteral("restarting the acquisition failed: ") + error;
    m_line->report(QStringLiteral("%1: %2").arg(payloadChange(before, size), outcome));
    if (!isRestarted)
        endStream();
}

void GentlCamera::stopAcquisition()
{
    if (!m_stream)
        return;
    QString error;
    if (!guarded(&error, [this] { execute(*nodeMap(), AcquisitionStop); }))
        m_line->report(QStringLiteral("stopping acquisition failed: ") + error);
    endStream();
}

void GentlCamera::endStream()
{
    m_stream.reset();
    guardNode([this] { writeIfWritable(*nodeMap(), ParametersLocked, QStringLiteral("0")); });
    Q_EMIT acquiringChanged(false);
}

std::vector<FoundDevice> GentlCamera::modules() const
{
    std::vector<FoundDevice> found;
    const auto add = [&](const QByteArray &stream, const QString &name) {
        GentlIdentity identity = m_identity;
        identity.place.streamId = stream;
        identity.displayName = QStringLiteral("%1 (%2)").arg(displayName(), name);
        FoundDevice module;
        module.id = GentlModule(identity).id();
        module.name = identity.displayName;
        module.model = name;
        module.create = [identity, camera = QPointer<const GentlCamera>(this)] {
            auto made = std::make_unique<GentlModule>(identity);
            if (camera)
                connect(camera, &GentlCamera::closing, made.get(), &GentlModule::cameraCloses);
            return made;
        };
        found.push_back(std::move(module));
    };
    if (m_connection)
        add(QByteArray(), QStringLiteral("device module"));
    for (const QByteArray &stream : m_connection ? m_connection->streams : std::vector<QByteArray>())
        add(stream, QStringLiteral("stream %1").arg(textForPeople(stream)));
    return found;
}
