// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "Devices/FrameCounts.h"

class ImageView;
class QLabel;

/// The fields of the status bar that describe the shown image: pixel under the cursor, size, pixel format,
/// frame rate, faulty frames and zoom. Empty while there is no image, but for the faulty frames.
class FrameStatus : public QWidget
{
    Q_OBJECT

public:
    /// `view` must outlive the fields.
    explicit FrameStatus(const ImageView &view, QWidget *parent = nullptr);

    /// The camera's PixelFormat (PFNC name); empty when unknown.
    void setPixelFormat(const QString &name);
    /// Of the camera's acquisition; faultless ones are not shown.
    void setFrameCounts(const FrameCounts &counts);
    /// Takes everything else from the view.
    void refresh();
    /// The fields as they are shown, for checks.
    QString text() const;

protected:
    void changeEvent(QEvent *event) override;

private:
    enum Field { PixelField, SizeField, FormatField, RateField, FaultField, ZoomField, FieldCount };

    QString faultText() const;
    QString faultTip() const;

    const ImageView &m_view;
    QString m_pixelFormat;
    FrameCounts m_counts;
    QLabel *m_labels[FieldCount] = {};
};
