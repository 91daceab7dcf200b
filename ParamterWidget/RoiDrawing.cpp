// SPDX-License-Identifier: MIT
#include "ParamterWidget/RoiDrawing.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

#include <QCoreApplication>
#include <QPushButton>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QSpinBox>

#include "PanelBase/HostCall.h"
#include "PanelBase/StyleSheets.h"
#include "ParamterWidget/NodeAccess.h"
#include "ParamterWidget/PageControls.h"
#include "ParamterWidget/PanelContext.h"
#include "ToolPage/SelectedButton.h"
#include "ToolPage/ToolPageWidget.h"
#include "ToolPage/ToolPageWidgetItem.h"

namespace {

constexpr const char *Module = "RoiDrawing";

constexpr std::pair<RowId, RowId> PairedRows[] = {
    {RowId::Width, RowId::DrawWidth},
    {RowId::Height, RowId::DrawHeight},
    {RowId::OffsetX, RowId::DrawOffsetX},
    {RowId::OffsetY, RowId::DrawOffsetY},
};

/// The answer of SetCameraIntNodeValue() for a feature that the camera lacks.
constexpr int NoSuchFeature = -2;

struct NodeInfo
{
    int value = 0;
    int minimum = 0;
    int maximum = 0;
    int increment = 1;
};

/// Zeros, and that value, when the feature cannot be read.
NodeInfo nodeInfo(const QString &device, const char *feature, int value = 0)
{
    NodeInfo info{value};
    GetCameraIntNodeInfo(device, QString::fromLatin1(feature), info.value, info.minimum, info.maximum, info.increment);
    return info;
}

/// The host's text of a number; nothing when the host cannot read it.
std::optional<int> hostValue(const std::string &device, const char *feature)
{
    std::string text;
    if (callHost<HostCore::GetCameraNodeValue>(Module, device, feature, text) != 0)
        return std::nullopt;
    return QString::fromStdString(text).toInt();
}

void setUp(QSpinBox *spinBox, int minimum, int maximum, const NodeInfo &info)
{
    const QSignalBlocker blocker(spinBox);
    spinBox->setRange(minimum, maximum);
    spinBox->setSingleStep(qMax(1, info.increment));
    spinBox->setValue(info.value);
    PageControls::settle(spinBox);
}

void log(const QString &message)
{
    logToHost(Module, message.toStdString());
}

} // namespace

RoiDrawing::RoiDrawing(PanelContext &context, QWidget *controlsParent)
    : m_context(context), m_selectButton(new SelectedButton(controlsParent)),
      m_drawButton(new QPushButton(controlsParent)),
      m_resetImageSizeButton(new QPushButton(controlsParent)), m_horizontal{"Width", "OffsetX",
                                                                            PageControls::integerField(controlsParent),
                                                                            PageControls::integerField(controlsParent)},
      m_vertical{"Height", "OffsetY", PageControls::integerField(controlsParent),
                 PageControls::integerField(controlsParent)}
{
    for (QPushButton *button : {static_cast<QPushButton *>(m_selectButton), m_drawButton, m_resetImageSizeButton}) {
        button->setText(QCoreApplication::translate("ParamterWidget", "Execute"));
        button->setStyleSheet(StyleSheets::PlainButton);
    }
    m_drawButton->setEnabled(false);
    context.controls[RowId::RoiSelect] = m_selectButton;
    context.controls[RowId::DrawWidth] = m_horizontal.size;
    context.controls[RowId::DrawHeight] = m_vertical.size;
    context.controls[RowId::DrawOffsetX] = m_horizontal.offset;
    context.controls[RowId::DrawOffsetY] = m_vertical.offset;
    context.controls[RowId::RoiApply] = m_drawButton;
    context.controls[RowId::RestoreImageSize] = m_resetImageSizeButton;
}

std::array<QSpinBox *, 4> RoiDrawing::coordinates() const
{
    return {m_horizontal.size, m_vertical.size, m_horizontal.offset, m_vertical.offset};
}

void RoiDrawing::pairRows()
{
    for (const auto &[camera, drawn] : PairedRows) {
        const RowPair rows{m_context.placed(camera).row, m_context.placed(drawn).row};
        if (!rows.camera || !rows.drawn)
            continue;
        rows.drawn->setWidgetItemVisible(false);
        if (!rows.camera->isHidden())
            m_rowPairs.append(rows);
    }
}

void RoiDrawing::followSelectButton()
{
    // The host may raise events or throw while it is asked; the controls show the state that this leads to.
    const auto showState = qScopeGuard([this] {
        if (m_selectButton->isSelected() != m_drawing)
            m_selectButton->setSelected(m_drawing);
        enableButtons();
    });
    const bool select = m_selectButton->isSelected();
    if (select && !m_drawing)
        enterDrawing();
    else if (!select && m_drawing)
        leaveDrawing();
}

void RoiDrawing::enterDrawing()
{
    if (!requestRegion())
        return;
    if (!m_selectButton->isSelected()) { // acquisition started, or the device closed
        callHost<HostCore::RomoveROI>(Module, m_context.deviceKey(), m_region);
        return;
    }
    adoptCameraRegion(m_horizontal);
    adoptCameraRegion(m_vertical);
    m_drawing = true;
    showDrawingRows(true);
}

void RoiDrawing::leaveDrawing()
{
    m_drawing = false;
    showDrawingRows(false);
    callHost<HostCore::RomoveROI>(Module, m_context.deviceKey(), m_region);
}

void RoiDrawing::enableButtons()
{
    const bool operable = !m_locked && !m_context.disabled;
    m_selectButton->setEnabled(operable);
    m_drawButton->setEnabled(operable && m_drawing);
    m_resetImageSizeButton->setEnabled(operable && !m_drawing);
}

/// Asks the host for a rectangle around the whole current image.
bool RoiDrawing::requestRegion()
{
    const std::string device = m_context.deviceKey();
    const std::optional<int> width = hostValue(device, m_horizontal.sizeFeature);
    const std::optional<int> height = width ? hostValue(device, m_vertical.sizeFeature) : std::nullopt;
    if (!height || !m_selectButton->isSelected())
        return false;
    bool accepted = false;
    const int result = callHost<HostCore::DrawROI>(Module, device, 0, 0, *width, *height, m_region, accepted, 0, 0);
    if (result == 0 && accepted)
        return true;
    log(QStringLiteral("The host draws no region for %1").arg(m_context.deviceName));
    return false;
}

/// The drawn region starts as, and never leaves, the camera's current one.
void RoiDrawing::adoptCameraRegion(Axis &axis) const
{
    const NodeInfo offset = nodeInfo(m_context.deviceName, axis.offsetFeature);
    const NodeInfo size = nodeInfo(m_context.deviceName, axis.sizeFeature);
    setUp(axis.size, size.minimum, size.value, size);
    setUp(axis.offset, offset.value, offset.value, offset);
    axis.edge = offset.value + size.value;
}

void RoiDrawing::showDrawingRows(bool drawing) const
{
    for (const RowPair &rows : m_rowPairs) {
        rows.camera->setWidgetItemVisible(!drawing);
        rows.drawn->setWidgetItemVisible(drawing);
    }
}

void RoiDrawing::followCoordinate(const QObject *spinBox)
{
    for (const Axis &axis : {m_horizontal, m_vertical}) {
        if (spinBox == axis.size)
            axis.offset->setMaximum(axis.edge - axis.size->value());
        else if (spinBox == axis.offset)
            axis.size->setMaximum(axis.edge - axis.offset->value());
        else
            continue;
        PageControls::settle(axis.size);
        PageControls::settle(axis.offset);
        if (!m_horizontal.offset->signalsBlocked()) // not while the host's move is followed
            moveHostRegion();
    }
}

/// In the pixels of the host's image.
QRect RoiDrawing::drawnRegion() const
{
    return {m_horizontal.offset->value() - m_horizontal.offset->minimum(),
            m_vertical.offset->value() - m_vertical.offset->minimum(), m_horizontal.size->value(),
            m_vertical.size->value()};
}

void RoiDrawing::moveHostRegion()
{
    const QScopedValueRollback<bool> echo(m_hostMoveExpected, false);
    const QRect region = drawnRegion();
    callHost<HostCore::SetROIPos>(Module, m_context.deviceKey(), m_region, region.x(), region.y(),
                                  region.x() + region.width(), region.y() + region.height());
}

void RoiDrawing::followHost(int leftX, int leftY, int rightX, int rightY)
{
    if (!m_hostMoveExpected || !m_drawing)
        return;
    const QSignalBlocker horizontal(m_horizontal.offset);
    const QSignalBlocker vertical(m_vertical.offset);
    followHost(m_vertical, leftY, rightY);
    followHost(m_horizontal, leftX, rightX);
    const QPoint corner(std::min(leftX, rightX), std::min(leftY, rightY));
    const QSize size(std::abs(rightX - leftX), std::abs(rightY - leftY));
    if (drawnRegion() != QRect(corner, size)) // the image must not show what the camera cannot have
        moveHostRegion();
}

void RoiDrawing::followHost(const Axis &axis, int from, int to)
{
    const auto [begin, end] = std::minmax(from, to);
    axis.size->setMaximum(axis.edge - axis.offset->minimum());
    axis.size->setValue(end - begin); // limits the offset
    axis.offset->setValue(begin + axis.offset->minimum());
    axis.size->setMaximum(axis.edge - axis.offset->value());
    PageControls::settle(axis.size);
    PageControls::settle(axis.offset);
}

bool RoiDrawing::isCurrent(const Axis &axis) const
{
    const int offset = axis.offset->minimum();
    const int size = axis.edge - offset;
    return nodeInfo(m_context.deviceName, axis.offsetFeature, offset).value == offset
        && nodeInfo(m_context.deviceName, axis.sizeFeature, size).value == size;
}

void RoiDrawing::followCamera()
{
    if (m_drawing && !m_context.disabled && !(isCurrent(m_horizontal) && isCurrent(m_vertical)))
        m_selectButton->click();
}

void RoiDrawing::apply()
{
    if (m_drawing)
        m_selectButton->click();
    if (m_context.disabled) // the host closed the device with the region
        return;
    write(m_horizontal.sizeFeature, m_horizontal.size->value());
    write(m_vertical.sizeFeature, m_vertical.size->value());
    write(m_horizontal.offsetFeature, m_horizontal.offset->value());
    write(m_vertical.offsetFeature, m_vertical.offset->value());
    m_context.written();
    for (const RowPair &rows : m_rowPairs)
        rows.camera->updateWidget(false);
}

void RoiDrawing::write(const char *feature, int value) const
{
    const QString name = QString::fromLatin1(feature);
    const int result = SetCameraIntNodeValue(m_context.deviceName, name, value);
    if (result == 0 || result == NoSuchFeature)
        return;
    const NodeInfo info = nodeInfo(m_context.deviceName, feature);
    const int fitting = value - (value - info.minimum) % qMax(1, info.increment);
    if (fitting != value && SetCameraIntNodeValue(m_context.deviceName, name, fitting) == 0)
        log(QStringLiteral("The camera refuses %1 %2, it gets %3").arg(name).arg(value).arg(fitting));
    else
        log(QStringLiteral("The camera refuses %1 %2").arg(name).arg(value));
}

void RoiDrawing::restoreFullSize() const
{
    const std::string device = m_context.deviceKey();
    for (const Axis *axis : {&m_vertical, &m_horizontal})
        callHost<HostCore::SetCameraNodeValue>(Module, device, axis->offsetFeature, "0");
    // Only now the maxima are those of the sensor.
    const int height = nodeInfo(m_context.deviceName, m_vertical.sizeFeature).maximum;
    const int width = nodeInfo(m_context.deviceName, m_horizontal.sizeFeature).maximum;
    for (const auto &[feature, size] :
         {std::pair(m_vertical.sizeFeature, height), std::pair(m_horizontal.sizeFeature, width)}) {
        if (size > 0)
            callHost<HostCore::SetCameraNodeValue>(Module, device, feature, std::to_string(size));
    }
    m_context.written();
    if (ToolPageWidget *const group = m_context.placed(RowId::RestoreImageSize).group)
        group->updateWidget();
}

void RoiDrawing::lock()
{
    if (m_selectButton->isSelected())
        m_selectButton->click();
    m_locked = true;
    enableButtons();
}

void RoiDrawing::unlock()
{
    m_locked = false;
    enableButtons();
}

void RoiDrawing::disable()
{
    m_drawing = false;
    m_selectButton->setSelected(false);
    enableButtons();
}
