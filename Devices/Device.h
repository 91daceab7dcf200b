// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <chrono>
#include <vector>

#include <QImage>
#include <QObject>
#include <QString>

#include <GenApi/GenApi.h>

#include "Devices/CountingPort.h"
#include "Devices/FrameCounts.h"
#include "Devices/HeightFrame.h"
#include "Devices/ReadAhead.h"

struct FoundDevice;

/// A camera or card that the demo host can open: a real one or a simulated one.
///
/// Everything but reach() is called on the GUI thread. Frames may be produced on another thread; they arrive through
/// frameReady() on the GUI thread (queued), never more than a few at a time.
class Device : public QObject
{
    Q_OBJECT

public:
    enum class Kind { Camera, Card };
    /// How a device is reached. Fake is a test camera of the transport library.
    enum class Transport { Simulated, GigEVision, Usb3Vision, Fake, DescriptionFile, Other };

    explicit Device(QObject *parent = nullptr) : QObject(parent) { }

    /// The key under which HostCore and the panel know the device; unique, never changes.
    virtual QString id() const = 0;
    /// What a person calls the device: vendor, model and serial number or user name.
    virtual QString displayName() const = 0;
    virtual Kind kind() const { return Kind::Camera; }
    virtual Transport transport() const { return Transport::Other; }
    /// CAM_INFO_TYPE_CODE of the device: "0" area-scan, "1" structured light, "4" attribute tab only, "5" laser
    /// profiler; see HostCore.h.
    virtual QString typeCode() const { return QStringLiteral("0"); }

    /// Does in advance what open() and then a panel would have to wait for: connects, makes the node map and reads
    /// registers into its cache. Called on any thread while the device is closed; what only tells about the device may
    /// be called meanwhile, open() and close() may not. What was reached is used by the next open() or dropped by
    /// the next close(); a failure is kept for open() to tell.
    /// `cancelled` may become true on any thread and ends this at the next access. `progress` is told on the thread
    /// of the call.
    virtual void reach(const std::atomic_bool &cancelled, const ReadProgress &progress)
    {
        Q_UNUSED(cancelled)
        Q_UNUSED(progress)
    }
    /// Connects to the device and loads its description. False on failure, with the reason in `error`
    /// (a sentence for a person). Opening an open device succeeds at once.
    virtual bool open(QString *error) = 0;
    /// Stops acquisition, drops the node map and releases the device. Whoever uses the node map must
    /// have let go of it before.
    virtual void close() = 0;
    virtual bool isOpen() const = 0;
    /// The device's node map while it is open, else null.
    virtual GenApi::INodeMap *nodeMap() const = 0;
    /// The GenICam description of the open device, as it was found: XML or, from a file, a ZIP. Valid while it is open.
    virtual QByteArray description() const { return {}; }
    /// What the device was asked since it was opened.
    virtual PortLoad portLoad() const { return {}; }

    virtual bool canAcquire() const { return kind() == Kind::Camera; }
    virtual bool startAcquisition(QString *error) = 0;
    virtual void stopAcquisition() = 0;
    virtual bool isAcquiring() const = 0;
    /// Of the acquisition that runs, or of the last one.
    virtual FrameCounts frameCounts() const { return {}; }

    /// After which silence the open device counts as lost.
    virtual std::chrono::milliseconds heartbeat() const { return std::chrono::seconds(3); }
    /// For a device that no search looks for: whether it is there, so that it could be opened.
    virtual bool isPresent() const { return true; }
    /// What a driver has for the open device beside it, as cards that can be opened while it is open.
    virtual std::vector<FoundDevice> modules() const;

Q_SIGNALS:
    void frameReady(const QImage &frame);
    /// The heights of the frame whose gray picture the frameReady() right after this shows. Only profilers and
    /// structured-light cameras raise it, once for each part of a frame, on the GUI thread and as queued as
    /// frameReady(): parts that came while the receiver was busy are left out, a later one holds their profiles too.
    void heightReady(const HeightFrame &frame);
    void acquiringChanged(bool acquiring);
    /// frameCounts() has other faulty frames than before.
    void framesCounted();
    /// The open device has fallen silent, or answers again.
    void answeringChanged(bool answering);
    /// The open device has started anew, with other values than before.
    void restarted();
    /// Something that a person should find in the log. Any thread.
    void reported(const QString &line);
    /// The device stopped answering; close() is still to be called.
    void lost(const QString &reason);
};
