// SPDX-License-Identifier: MIT
#include "Viewer/DeviceViews.h"

#include "Host/HostContext.h"
#include "Viewer/DeviceTree.h"
#include "Viewer/HeightDisplay.h"
#include "Viewer/ImageView.h"
#include "Viewer/MissingFrames.h"
#include "Viewer/SensorPictures.h"

namespace {

constexpr int ImageShare = 600; ///< of the height, beside that of the sensor's view
constexpr int SensorShare = 400;

} // namespace

DeviceViews::DeviceViews(HostContext &context, const DeviceTree &devices)
    : QSplitter(Qt::Vertical), m_context(context), m_devices(devices), m_image(new ImageView), m_sensor(new ImageView),
      m_missing(new MissingFrames(this)), m_heights(new HeightDisplay(context, this)),
      m_pictures(new SensorPictures(context, *m_heights, this))
{
    setChildrenCollapsible(false);
    addWidget(m_image);
    addWidget(m_sensor);
    setSizes({ImageShare, SensorShare});
    m_sensor->setObjectName(QStringLiteral("sensorView"));
    m_sensor->hide();
    m_image->setPixelReader([this](const QPoint &pixel) { return m_heights->textAt(currentId(), pixel); });
    connect(&m_context.devices(), &KnownDevices::frameReady, this, &DeviceViews::adoptFrame);
    connect(&m_context.regions(), &ImageRegions::listChanged, this, &DeviceViews::adoptRegions);
    connect(m_heights, &HeightDisplay::changed, this, &DeviceViews::adoptHeights);
    connect(m_missing, &MissingFrames::changed, m_image, [this] { m_image->setNotice(m_missing->text()); });
}

QString DeviceViews::currentId() const
{
    const Device *device = m_devices.currentDevice();
    return device ? device->id() : QString();
}

ImageView &DeviceViews::regionView() const
{
    return m_heights->shows(currentId()) ? *m_sensor : *m_image;
}

QString DeviceViews::pixelFormat(const QString &sent) const
{
    return m_heights->pixelFormat(currentId(), sent);
}

QSize DeviceViews::canvasSize() const
{
    const QList<ImageRegion> regions = m_context.regions().of(currentId());
    if (regions.isEmpty())
        return {};
    const QSize drawnOn = regions.last().image;
    const bool isCovered =
        !m_heights->shows(currentId()) && m_pictures->placeOn(currentId(), drawnOn) == QRect(QPoint(), drawnOn);
    return isCovered ? QSize() : drawnOn;
}

void DeviceViews::showCanvas(ImageView &view)
{
    const QSize canvas = canvasSize();
    const QRect place = m_pictures->placeOn(currentId(), canvas);
    const QString hint = tr("No image of this size yet. Drag the region by its edges and corners.");
    view.showCanvas(canvas, place.contains(QRect(QPoint(), canvas)) ? QString() : hint, m_pictures->of(currentId()),
                    place);
}

/// Height maps have a view of the sensor below them while there are regions.
void DeviceViews::showSensor()
{
    m_showsHeights = m_heights->shows(currentId());
    const bool below = m_showsHeights && !canvasSize().isEmpty();
    m_image->regions().edit(m_context.regions(), m_showsHeights ? QString() : currentId());
    m_sensor->regions().edit(m_context.regions(), m_showsHeights ? currentId() : QString());
    if (below)
        showCanvas(*m_sensor);
    m_sensor->setVisible(below);
}

void DeviceViews::showCurrent()
{
    const QString id = currentId();
    m_missing->watch(m_devices.state(id) == DeviceTree::State::Acquiring ? m_devices.currentDevice() : nullptr);
    showSensor();
    if (&regionView() == m_image && !canvasSize().isEmpty())
        showCanvas(*m_image);
    else if (m_frames.contains(id))
        m_image->showStill(m_heights->picture(id, m_frames.value(id)));
    else
        m_image->clear(imageHint());
}

void DeviceViews::adoptRegions(const QString &id)
{
    const ImageView &view = regionView();
    const QSize shown = view.isCanvas() && view.isVisibleTo(this) ? view.imageSize() : QSize();
    if (id != currentId() || shown == canvasSize())
        return;
    showCurrent();
    Q_EMIT contentChanged();
}

void DeviceViews::adoptHeights(const QString &id)
{
    if (id != currentId() || !m_heights->shows(id) || !m_frames.contains(id))
        return;
    m_image->replaceFrame(m_heights->picture(id, m_frames.value(id)));
    Q_EMIT pictureChanged();
}

void DeviceViews::adoptFrame(const QString &id, const QImage &frame)
{
    const DeviceTree::State state = m_devices.state(id);
    if (state != DeviceTree::State::Acquiring && state != DeviceTree::State::Open)
        return;
    const bool first = !m_frames.contains(id);
    m_frames.insert(id, frame);
    if (id != currentId())
        return;
    m_missing->noteFrame();
    if (m_heights->shows(id) != m_showsHeights)
        showSensor();
    if (state == DeviceTree::State::Acquiring)
        m_image->showFrame(m_heights->picture(id, frame));
    else // the last one of an acquisition, which ended before it was here
        showCurrent();
    Q_EMIT pictureChanged();
    if (first)
        Q_EMIT contentChanged();
}

QString DeviceViews::imageHint() const
{
    const Device *device = m_devices.currentDevice();
    if (!device)
        return tr("Select a device.");
    const QString error = m_context.devices().openingError(device->id());
    switch (m_devices.state(device->id())) {
    case DeviceTree::State::Closed:
        return error.isEmpty() ? tr("%1 is closed. Double-click it to open it.").arg(device->displayName())
                               : tr("%1 could not be opened: %2").arg(device->displayName(), error);
    case DeviceTree::State::Opening:
        return tr("Opening %1...").arg(device->displayName());
    case DeviceTree::State::Lost:
        return lostHint(*device, error);
    case DeviceTree::State::Acquiring:
        return tr("Waiting for images...");
    case DeviceTree::State::Open:
        break;
    }
    return device->canAcquire() ? tr("Start the acquisition to see images.") : tr("This device has no images.");
}

QString DeviceViews::lostHint(const Device &device, const QString &error) const
{
    const QString name = device.displayName();
    if (!m_context.deviceReturn().isEnabled())
        return tr("%1 does not answer any more. Double-click it to open it again.").arg(name);
    const QString hint =
        tr("%1 does not answer any more. It is opened again as soon as it is there; close it to give it up.").arg(name);
    return error.isEmpty() ? hint : tr("%1\nThe last try failed: %2").arg(hint, error);
}

void DeviceViews::retranslate()
{
    m_image->setNotice(m_missing->text());
    m_image->setAccessibleName(tr("Image"));
    m_sensor->setAccessibleName(tr("Sensor"));
    if (m_image->frame().isNull())
        showCurrent();
    else
        showSensor();
    m_image->update(); // names of regions
}
