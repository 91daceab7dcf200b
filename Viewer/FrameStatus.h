// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class ImageView;
class QLabel;

/// The fields of the status bar that describe the shown image: pixel under the cursor, size, pixel format,
/// frame rate and zoom. Empty while there is no image.
class FrameStatus : public QWidget
{
    Q_OBJECT

public:
    /// `view` must outlive the fields.
    explicit FrameStatus(const ImageView &view, QWidget *parent = nullptr);

    /// The camera's PixelFormat (PFNC name); empty when unknown.
    void setPixelFormat(const QString &name);
    /// Takes everything else from the view.
    void refresh();
    /// The fields as they are shown, for checks.
    QString text() const;

protected:
    void changeEvent(QEvent *event) override;

private:
    enum Field { PixelField, SizeField, FormatField, RateField, ZoomField, FieldCount };

    const ImageView &m_view;
    QString m_pixelFormat;
    QLabel *m_labels[FieldCount] = {};
};
