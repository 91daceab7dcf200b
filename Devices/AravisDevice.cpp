// SPDX-License-Identifier: MIT
#include "Devices/AravisDevice.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <limits>
#include <mutex>
#include <thread>
#include <utility>

#include <QVariant>

#include <arv.h>

#include "Devices/AlignedPort.h"
#include "Devices/FailFastPort.h"
#include "Devices/FrameImage.h"
#include "Devices/FrameMailbox.h"
#include "Devices/LoadedNodeMap.h"
#include "Features/NodeGuard.h"
#include "Features/NodeText.h"

namespace {

constexpr int BufferCount = 8; // frames that Aravis may fill
constexpr guint64 PopTimeout = 50'000; // us
constexpr std::chrono::milliseconds StreamEndTimeout(500);

struct Unreference
{
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <class Object>
using Reference = std::unique_ptr<Object, Unreference>;

/// A GLib error as an out parameter.
class ErrorSlot
{
public:
    ErrorSlot() = default;
    ~ErrorSlot() { g_clear_error(&m_error); }
    ErrorSlot(const ErrorSlot &) = delete;
    ErrorSlot &operator=(const ErrorSlot &) = delete;

    GError **out() { return &m_error; }
    const char *text() const { return m_error ? m_error->message : "unknown failure"; }

    void throwIfSet() const
    {
        if (!m_error)
            return;
        if (g_error_matches(m_error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_TIMEOUT))
            throw TIMEOUT_EXCEPTION("%s", m_error->message);
        throw RUNTIME_EXCEPTION("%s", m_error->message);
    }

private:
    GError *m_error = nullptr;
};

/// The registers of an Aravis device, which it keeps alive.
class RegisterPort : public GenApi::IPort
{
public:
    explicit RegisterPort(Reference<ArvDevice> opened) : m_device(std::move(opened)) { }

    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }

    void Read(void *buffer, int64_t address, int64_t length) override
    {
        ErrorSlot error;
        arv_device_read_memory(m_device.get(), static_cast<guint64>(address), size(length), buffer, error.out());
        error.throwIfSet();
    }

    void Write(const void *buffer, int64_t address, int64_t length) override
    {
        ErrorSlot error;
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

    Reference<ArvDevice> m_device;
};

std::unique_ptr<GenApi::IPort> makeRegisterPort(Reference<ArvDevice> device)
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
    bool isLost = false; ///< also told to who asks later
};

const QString LostReason = QStringLiteral("the camera no longer answers its host");
using SharedMailbox = std::shared_ptr<LostMailbox>;

void deliverLost(ArvDevice *, gpointer data)
{
    LostMailbox &mailbox = **static_cast<SharedMailbox *>(data);
    const std::lock_guard<std::mutex> lock(mailbox.mutex);
    mailbox.isLost = true;
    if (!mailbox.receiver)
        return;
    const auto tell = [receiver = mailbox.receiver] { Q_EMIT receiver->lost(LostReason); };
    QMetaObject::invokeMethod(mailbox.receiver, tell, Qt::QueuedConnection);
}

SharedMailbox connectLost(ArvDevice *source, Device *receiver)
{
    auto mailbox = std::make_shared<LostMailbox>();
    mailbox->receiver = receiver;
    const auto release = [](gpointer data, GClosure *) { delete static_cast<SharedMailbox *>(data); };
    g_signal_connect_data(source, "control-lost", G_CALLBACK(deliverLost), new SharedMailbox(mailbox), release,
                          GConnectFlags(0));
    return mailbox;
}

/// Features that a camera need not have are written if they can be.
void writeIfWritable(GenApi::INodeMap &map, const char *name, const QString &text)
{
    if (GenApi::IsWritable(map.GetNode(name)))
        writeNodeText(map, QString::fromLatin1(name), text);
}

int64_t payloadSize(GenApi::INodeMap &map)
{
    const GenApi::CIntegerPtr payload(map.GetNode("PayloadSize"));
    if (!payload.IsValid())
        throw RUNTIME_EXCEPTION("The camera does not tell its payload size");
    return payload->GetValue(false, true);
}

QImage toImage(ArvBuffer *buffer)
{
    if (arv_buffer_get_status(buffer) != ARV_BUFFER_STATUS_SUCCESS || arv_buffer_get_n_parts(buffer) == 0)
        return {};
    std::size_t size = 0;
    const void *data = arv_buffer_get_part_data(buffer, 0, &size);
    return frameImage(arv_buffer_get_part_pixel_format(buffer, 0), arv_buffer_get_part_width(buffer, 0),
                      arv_buffer_get_part_height(buffer, 0), data, size);
}

} // namespace

/// An open camera. Members go in reverse order: the node map before its port.
struct AravisDevice::Connection
{
    ArvDevice *device = nullptr; ///< kept alive by the port
    SharedMailbox mailbox;
    std::unique_ptr<FailFastPort> port;
    std::unique_ptr<LoadedNodeMap> nodes;

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

/// Fetches frames on a thread of its own from construction to destruction.
class AravisDevice::Stream
{
public:
    using Show = std::function<void(const QImage &)>;

    /// `show` is called on the stream's thread. Throws a GenICam exception when the camera grants no stream.
    Stream(ArvDevice *device, std::size_t frameSize, Show show) : m_feed(std::make_shared<Feed>())
    {
        ErrorSlot error;
        m_feed->source.reset(arv_device_create_stream(device, nullptr, nullptr, error.out()));
        if (!m_feed->source)
            throw RUNTIME_EXCEPTION("%s", error.text());
        for (int i = 0; i < BufferCount; ++i)
            arv_stream_push_buffer(m_feed->source.get(), arv_buffer_new_allocate(frameSize));
        m_feed->show = std::move(show);
        std::thread([shared = m_feed] { shared->run(); }).detach();
    }

    /// Releasing the stream of a camera that is gone takes seconds; nobody waits for that.
    ~Stream() { m_feed->stop(); }

private:
    /// Lives until both the stream object and its thread have let go of it.
    struct Feed
    {
        void run()
        {
            while (ArvBuffer *buffer = nextBuffer()) {
                const QImage frame = toImage(buffer);
                arv_stream_push_buffer(source.get(), buffer);
                const std::lock_guard<std::mutex> lock(mutex);
                if (show && !frame.isNull())
                    show(frame);
            }
            source.reset();
            const std::lock_guard<std::mutex> lock(mutex);
            finished = true;
            ended.notify_all();
        }

        /// Null when the stream is over.
        ArvBuffer *nextBuffer()
        {
            ArvBuffer *buffer = nullptr;
            while (!stopping && !buffer)
                buffer = arv_stream_timeout_pop_buffer(source.get(), PopTimeout);
            if (buffer && stopping)
                g_object_unref(std::exchange(buffer, nullptr));
            return buffer;
        }

        void stop()
        {
            std::unique_lock<std::mutex> lock(mutex);
            show = nullptr;
            stopping = true;
            ended.wait_for(lock, StreamEndTimeout, [this] { return finished; });
        }

        Reference<ArvStream> source;
        std::atomic_bool stopping{false};
        std::mutex mutex; ///< guards what follows
        std::condition_variable ended;
        Show show;
        bool finished = false;
    };
    std::shared_ptr<Feed> m_feed;
};

AravisDevice::AravisDevice(Identity camera, QObject *parent) : Device(parent), m_identity(std::move(camera)) { }

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
    ErrorSlot failure;
    Reference<ArvDevice> camera(arv_open_device(m_identity.id.toUtf8().constData(), failure.out()));
    if (!camera)
        return {nullptr, QString::fromUtf8(failure.text())};
    std::size_t size = 0;
    const char *xml = arv_device_get_genicam_xml(camera.get(), &size);
    const QByteArray description(xml, static_cast<int>(size));
    auto opened = std::make_unique<Connection>();
    opened->device = camera.get();
    opened->mailbox = connectLost(camera.get(), this);
    const auto report = [this](bool answering) { reportAnswering(answering); };
    opened->port = std::make_unique<FailFastPort>(makeRegisterPort(std::move(camera)), FailFastPort::Timing(), report);
    QString error;
    if (!guarded(&error, [&] { opened->nodes = std::make_unique<LoadedNodeMap>(description, *opened->port); }))
        return {nullptr, error};
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

bool AravisDevice::startAcquisition(QString *error)
{
    if (m_stream)
        return true;
    const auto start = [this] {
        GenApi::INodeMap &map = *nodeMap();
        const auto show = [this, mailbox = std::make_shared<FrameMailbox>()](const QImage &frame) {
            const auto deliver = [this, mailbox] { Q_EMIT frameReady(mailbox->take()); };
            if (mailbox->put(frame))
                QMetaObject::invokeMethod(this, deliver, Qt::QueuedConnection);
        };
        m_stream = std::make_unique<Stream>(m_connection->device, static_cast<std::size_t>(payloadSize(map)), show);
        writeIfWritable(map, "TLParamsLocked", QStringLiteral("1"));
        writeNodeText(map, QStringLiteral("AcquisitionStart"), QString());
    };
    if (!guarded(error, start)) {
        m_stream.reset();
        return false;
    }
    Q_EMIT acquiringChanged(true);
    return true;
}

void AravisDevice::stopAcquisition()
{
    if (!m_stream)
        return;
    const auto stop = [this] {
        writeNodeText(*nodeMap(), QStringLiteral("AcquisitionStop"), QString());
        writeIfWritable(*nodeMap(), "TLParamsLocked", QStringLiteral("0"));
    };
    QString error;
    if (!guarded(&error, stop))
        Q_EMIT reported(QStringLiteral("Stopping acquisition failed: ") + error);
    m_stream.reset();
    Q_EMIT acquiringChanged(false);
}

void AravisDevice::reportAnswering(bool answering)
{
    const QString state = answering ? QStringLiteral("%1 answers again") : QStringLiteral("%1 does not answer");
    Q_EMIT reported(state.arg(m_identity.displayName));
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

} // namespace

DeviceFinder aravisFinder(bool withFakeCamera)
{
    if (withFakeCamera)
        arv_enable_interface("Fake");
    return [] {
        arv_update_device_list();
        std::vector<FoundDevice> found;
        for (unsigned int i = 0; i < arv_get_n_devices(); ++i) {
            const QString name =
                QStringLiteral("%1 %2 (%3)")
                    .arg(QString::fromUtf8(arv_get_device_vendor(i)), QString::fromUtf8(arv_get_device_model(i)),
                         QString::fromUtf8(arv_get_device_serial_nbr(i)));
            const AravisDevice::Identity identity{QString::fromUtf8(arv_get_device_id(i)), name,
                                                  transportOf(arv_get_device_protocol(i))};
            found.push_back({identity.id, [identity] { return std::make_unique<AravisDevice>(identity); }});
        }
        return found;
    };
}
