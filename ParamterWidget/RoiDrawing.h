// SPDX-License-Identifier: MIT
#pragma once

#include <array>

class QPushButton;
class QSpinBox;
class QWidget;
class SelectedButton;

/// The controls for drawing a region of interest and for restoring the full image size. GUI thread only.
class RoiDrawing
{
public:
    /// The controls become children of `controlsParent`, until a page places them.
    explicit RoiDrawing(QWidget *controlsParent);

    /// Selected while a region is being drawn.
    SelectedButton *selectButton() const { return m_selectButton; }
    /// Writes the drawn region to the camera; disabled unless a region is being drawn.
    QPushButton *drawButton() const { return m_drawButton; }
    QPushButton *resetImageSizeButton() const { return m_resetImageSizeButton; }
    /// Width, height, x offset and y offset of the drawn region in pixels.
    const std::array<QSpinBox *, 4> &coordinates() const { return m_coordinates; }

    bool isDrawing() const;
    /// Ends drawing as the user's click would, and keeps the image size as it is until unlock().
    void lock();
    void unlock();

private:
    void setButtonsEnabled(bool enabled);

    SelectedButton *m_selectButton;
    QPushButton *m_drawButton;
    QPushButton *m_resetImageSizeButton;
    std::array<QSpinBox *, 4> m_coordinates;
};
