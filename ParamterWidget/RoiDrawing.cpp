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
#include "ParamterWidget/HostValues.h"
#include "ParamterWidget/NodeAccess.h"
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

/// The host's text of a number; nothing when the host cannot read it.
std::optional<int> hostValue(const PanelContext &context, const char *feature)
{
    std::string text;
    int result = -1;
    context.read([&] { result = callHost<HostCore::GetCameraNodeValue>(Module, context.deviceKey(), feature, text); });
    return result == 0 ? std::optional(QString::fromStdString(text).toInt()) : std::nullopt;
}

void writeByName(const PanelContext &context, const char *feature, int value)
{
    context.reading->writeByName([&] {
        return callHost<HostCore::SetCameraNodeValue>(Module, context.deviceKey(), feature, std::to_string(value));
    });
}

void log(const QString &message)
{
    logToHost(Module, message.toStdString());
}

} // namespace

RoiDrawing::RoiDrawing(PanelContext &context, QWidget *controlsParent)
    : m_context(context), m_selectButton(new SelectedButton(controlsParent)),
      m_drawButton(new QPushButton(controlsParent)), m_resetImageSizeButton(new QPushButton(controlsParent)),
      m_horizontal("Width", "OffsetX", controlsParent), m_vertical("Height", "OffsetY", controlsParent)
{
    for (QPushButton *button : {static_cast<QPushButton *>(m_selectButton), m_drawButton, m_resetImageSizeButton}) {
        button->setText(QCoreApplication::translate("ParamterWidget", "Execute"));
        button->setStyleSheet(StyleSheets::PlainButton);
    }
    m_drawButton->setEnabled(false);
    context.controls[RowId::RoiSelect] = m_selectButton;
    context.controls[RowId::DrawWidth] = m_horizontal.size();
    context.controls[RowId::DrawHeight] = m_vertical.size();
    context.controls[RowId::DrawOffsetX] = m_horizontal.offset();
    context.controls[RowId::DrawOffsetY] = m_vertical.offset();
    context.controls[RowId::RoiApply] = m_drawButton;
    context.controls[RowId::RestoreImageSize] = m_resetImageSizeButton;
}

std::array<QSpinBox *, 4> RoiDrawing::coordinates() const
{
    return {m_horizontal.size(), m_vertical.size(), m_horizontal.offset(), m_vertical.offset()};
}

void RoiDrawing::pairRows()
{
    for (const auto &[camera, drawn] : PairedRows) {
        const RowPair rows{m_context.placed(camera).row, m_context.placed(drawn).row};
        if (!rows.camera || !rows.drawn)
            continue;
        rows.drawn->setWidgetItemVisible(false);
        QObject::connect(rows.camera, &ToolPageWidgetItem::availabilityChanged, rows.drawn,
                         [this, rows] { showDrawnRow(rows); });
        m_rowPairs.append(rows);
    }
}

void RoiDrawing::applySelectButton()
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
    m_horizontal.adoptCamera(m_context);
    m_vertical.adoptCamera(m_context);
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
    const std::optional<int> width = hostValue(m_context, m_horizontal.sizeFeature());
    const std::optional<int> height = width ? hostValue(m_context, m_vertical.sizeFeature()) : std::nullopt;
    if (!height || !m_selectButton->isSelected())
        return false;
    bool accepted = false;
    const int result =
        callHost<HostCore::DrawROI>(Module, m_context.deviceKey(), 0, 0, *width, *height, m_region, accepted, 0, 0);
    if (result == 0 && accepted)
        return true;
    log(QStringLiteral("The host draws no region for %1").arg(m_context.deviceName));
    return false;
}

void RoiDrawing::showDrawingRows(bool drawing)
{
    m_showsDrawing = drawing;
    for (const RowPair &rows : m_rowPairs) {
        rows.camera->setWidgetItemVisible(!drawing);
        showDrawnRow(rows);
    }
}

void RoiDrawing::showDrawnRow(const RowPair &rows)
{
    rows.drawn->setWidgetItemVisible(m_showsDrawing && rows.camera->isAvailable());
}

void RoiDrawing::applyCoordinate(const QObject *spinBox)
{
    const bool isOwn = m_horizontal.limitPartner(spinBox) || m_vertical.limitPartner(spinBox);
    if (isOwn && !m_horizontal.offset()->signalsBlocked()) // not while a move of the host is taken
        moveHostRegion();
}

QRect RoiDrawing::drawnRegion() const
{
    return {m_horizontal.begin(), m_vertical.begin(), m_horizontal.length(), m_vertical.length()};
}

void RoiDrawing::moveHostRegion()
{
    const QScopedValueRollback<bool> echo(m_hostMoveExpected, false);
    const QRect region = drawnRegion();
    callHost<HostCore::SetROIPos>(Module, m_context.deviceKey(), m_region, region.x(), region.y(),
                                  region.x() + region.width(), region.y() + region.height());
}

void RoiDrawing::adoptHostRegion(int leftX, int leftY, int rightX, int rightY)
{
    if (!m_hostMoveExpected || !m_drawing)
        return;
    const QSignalBlocker horizontal(m_horizontal.offset());
    const QSignalBlocker vertical(m_vertical.offset());
    m_vertical.adoptHost(leftY, rightY);
    m_horizontal.adoptHost(leftX, rightX);
    const QPoint corner(std::min(leftX, rightX), std::min(leftY, rightY));
    const QSize size(std::abs(rightX - leftX), std::abs(rightY - leftY));
    if (drawnRegion() != QRect(corner, size)) // the image must not show what the camera cannot have
        moveHostRegion();
}

void RoiDrawing::adoptCameraChange()
{
    if (m_drawing && !m_context.disabled && !m_context.reading->isSilent()
        && !(m_horizontal.isCurrent(m_context) && m_vertical.isCurrent(m_context)))
        m_selectButton->click();
}

void RoiDrawing::apply()
{
    if (m_drawing)
        m_selectButton->click();
    if (m_context.disabled) // the host closed the device with the region
        return;
    write(m_horizontal.sizeFeature(), m_horizontal.size()->value());
    write(m_vertical.sizeFeature(), m_vertical.size()->value());
    write(m_horizontal.offsetFeature(), m_horizontal.offset()->value());
    write(m_vertical.offsetFeature(), m_vertical.offset()->value());
    m_context.written();
    for (const RowPair &rows : m_rowPairs)
        rows.camera->updateWidget(false);
}

void RoiDrawing::write(const char *feature, int value)
{
    const QString name = QString::fromLatin1(feature);
    const auto set = [&](int number) {
        DeviceReading *const reading = m_context.reading.get();
        return reading->writeByName([&] { return SetCameraIntNodeValue(reading, m_context.deviceName, name, number); });
    };
    const int result = set(value);
    if (result == 0 || result == NoSuchFeature)
        return;
    const IntegerInfo info = HostValues::readInteger(m_context, feature);
    const int fitting = value - (value - info.minimum) % qMax(1, info.increment);
    if (fitting != value && set(fitting) == 0)
        log(QStringLiteral("The camera refuses %1 %2, it gets %3").arg(name).arg(value).arg(fitting));
    else
        log(QStringLiteral("The camera refuses %1 %2").arg(name).arg(value));
}

void RoiDrawing::restoreFullSize()
{
    for (const RoiAxis *axis : {&m_vertical, &m_horizontal})
        writeByName(m_context, axis->offsetFeature(), 0);
    // Only now the maxima are those of the sensor.
    const int height = HostValues::readInteger(m_context, m_vertical.sizeFeature()).maximum;
    const int width = HostValues::readInteger(m_context, m_horizontal.sizeFeature()).maximum;
    for (const auto &[feature, size] :
         {std::pair(m_vertical.sizeFeature(), height), std::pair(m_horizontal.sizeFeature(), width)}) {
        if (size > 0)
            writeByName(m_context, feature, size);
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
