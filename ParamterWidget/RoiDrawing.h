// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include <QRect>
#include <QVector>

#include "ParamterWidget/RoiAxis.h"

class QObject;
class QPushButton;
class QSpinBox;
class QWidget;
class SelectedButton;
class ToolPageWidgetItem;
struct PanelContext;

/// Draws the camera's region of interest on the host's image view and writes it to the camera; also restores
/// the full image size. GUI thread only.
///
/// Two states: idle, with the rows of the camera's region shown, and drawing, with rows of the drawn region in their
/// place. The select button switches between them. The host's rectangles are relative to the camera's current
/// region; the spin boxes show sensor pixels.
class RoiDrawing
{
public:
    /// The controls become children of `controlsParent`, until a page places them.
    RoiDrawing(PanelContext &context, QWidget *controlsParent);

    /// Selected while a region is being drawn; toggles itself before applySelectButton() is called.
    SelectedButton *selectButton() const { return m_selectButton; }
    /// Writes the drawn region to the camera; disabled unless a region is being drawn.
    QPushButton *drawButton() const { return m_drawButton; }
    QPushButton *resetImageSizeButton() const { return m_resetImageSizeButton; }
    /// Width, height, x offset and y offset of the drawn region in pixels.
    std::array<QSpinBox *, 4> coordinates() const;

    /// Pairs the rows of the camera's region with those of the drawn one, once the page is built. A value that the
    /// camera lacks has neither row.
    void pairRows();

    /// Starts or stops drawing, as the select button says. If the camera's size cannot be read or the host refuses,
    /// the state stays idle.
    void applySelectButton();
    /// A spin box was changed: limits its partner to the region's edge and moves the host's rectangle, unless the
    /// change came from there. Other senders are ignored.
    void applyCoordinate(const QObject *spinBox);
    /// The user moved the host's rectangle; the host hears nothing of it, unless the camera cannot have that one.
    void adoptHostRegion(int leftX, int leftY, int rightX, int rightY);
    /// Shows the rows of the drawn region in place of those of the camera's, or the other way round.
    void showDrawingRows(bool drawing);

    /// Ends drawing, with nothing written, when the camera's region is not the one any more in which is being drawn.
    void adoptCameraChange();

    /// Ends drawing and writes width, height, x and y offset, in this order. A value that the camera refuses is
    /// written again as the next smaller one that fits its increment; refusals are logged.
    void apply();
    /// Sets the offsets to 0 and then height and width to their maxima.
    void restoreFullSize();

    /// Ends drawing as the user's click would, and keeps the image size as it is until unlock().
    void lock();
    void unlock();
    /// Once the panel is disabled: forgets the region, which goes with the device.
    void disable();

private:
    struct RowPair
    {
        ToolPageWidgetItem *camera;
        ToolPageWidgetItem *drawn;
    };

    void showDrawnRow(const RowPair &rows);
    void enterDrawing();
    void leaveDrawing();
    void enableButtons();
    bool requestRegion();
    /// In the pixels of the host's image.
    QRect drawnRegion() const;
    void moveHostRegion();
    void write(const char *feature, int value);

    PanelContext &m_context;
    SelectedButton *m_selectButton;
    QPushButton *m_drawButton;
    QPushButton *m_resetImageSizeButton;
    RoiAxis m_horizontal;
    RoiAxis m_vertical;
    QVector<RowPair> m_rowPairs;
    bool m_drawing = false;
    bool m_showsDrawing = false; ///< the rows of the drawn region are shown, as far as the camera has theirs
    bool m_locked = false;
    int m_region = 0; ///< the host's handle of the rectangle
    bool m_hostMoveExpected = true; ///< false while the host may echo a move of the panel's own
};
