// SPDX-License-Identifier: MIT
// How devices are opened and closed while panels follow.
#include <utility>

#include "Host/HostContext.h"

namespace {

const QString Module = QStringLiteral("HostContext");

} // namespace

bool HostContext::open(const QString &id)
{
    Entry *known = entry(id);
    if (known && known->ready)
        return true;
    QString error;
    if (!known)
        error = QStringLiteral("it is not known");
    else if (known->opening)
        error = QStringLiteral("it is already being opened");
    else if (known->closing)
        error = QStringLiteral("it is still being closed, try again");
    const bool isTried = error.isEmpty();
    const bool isOpen = isTried && known->device->open(&error);
    if (!isOpen)
        log(Module, QStringLiteral("Opening %1 failed: %2").arg(id, error));
    if (!isTried)
        return false;
    known->ready = isOpen;
    known->openingError = isOpen ? QString() : error;
    if (isOpen)
        announceDevice(id);
    Q_EMIT deviceStateChanged(id);
    return isOpen;
}

void HostContext::openLater(const QString &id)
{
    Entry *known = entry(id);
    if (!known || known->ready || known->opening || known->closing) {
        open(id); // which says what is wrong
        return;
    }
    known->opening = true;
    m_openings.start([this, id, device = known->device.get()] {
        device->reach();
        QMetaObject::invokeMethod(
            this, [this, id] { finishOpening(id); }, Qt::QueuedConnection);
    });
    Q_EMIT deviceStateChanged(id);
}

void HostContext::finishOpening(const QString &id)
{
    if (current() != this) // it goes; its destructor still handles events
        return;
    entry(id)->opening = false;
    open(id);
}

void HostContext::close(const QString &id)
{
    Entry *known = entry(id);
    if (!known || !known->ready)
        return;
    known->ready = false;
    known->closing = true;
    m_closings += id;
    announceDevice(id);
    Q_EMIT deviceStateChanged(id);
}

void HostContext::followAnnounced()
{
    // A camera that is listed as closed makes the panel show nothing, whoever has the focus.
    announceFocus();
    // The events of devices that were closed meanwhile may still be on their way.
    if (!m_announcer->isIdle())
        return;
    const QStringList seen = std::exchange(m_closings, {});
    for (const QString &id : seen)
        releaseAfterPanels(id);
}

void HostContext::releaseAfterPanels(const QString &id)
{
    m_imageRegions.removeAll(id);
    // The event has left the device's panels to deferred deletion. Deferred deletions run in their order, so the
    // node map goes when the last user of it has gone.
    auto *afterPanels = new QObject(this);
    connect(afterPanels, &QObject::destroyed, this, [this, id] { finishClosing(id); });
    afterPanels->deleteLater();
}

void HostContext::finishClosing(const QString &id)
{
    Entry *known = entry(id);
    if (!known)
        return;
    known->device->close();
    known->closing = false;
    Q_EMIT deviceStateChanged(id);
}

void HostContext::deviceLost(const QString &id, const QString &reason)
{
    if (!isReady(id))
        return;
    log(Module, QStringLiteral("Device %1 is lost: %2").arg(id, reason));
    close(id);
}
