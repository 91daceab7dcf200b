// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QImage>
#include <QObject>

#include "Devices/HeightFrame.h"
#include "Host/HeightAnalysis.h"
#include "ParamterWnd/HostCore.h"
#include "Viewer/HeightColours.h"

class HostContext;

/// The newest height map of each laser profiler or structured-light camera, as a picture that follows the display
/// settings of the camera. In a show mode of its own, a structured-light camera shows one of its 2D images instead.
class HeightDisplay : public QObject
{
    Q_OBJECT

public:
    /// `host` must outlive this. What shows its pictures connects to the host later, so that a frame is kept by then.
    explicit HeightDisplay(HostContext &host, QObject *parent = nullptr);

    /// The newest frame of the device has heights.
    bool shows(const QString &id) const { return m_shown.contains(id); }
    /// The picture of the newest frame: `gray` itself for a frame without heights.
    QImage picture(const QString &id, const QImage &gray) const;
    /// The PFNC name of what picture() shows, where `sent` names what the camera sends.
    QString pixelFormat(const QString &id, const QString &sent) const;
    /// Place and height at a pixel of the picture; empty when the picture shows no heights.
    QString textAt(const QString &id, const QPoint &pixel) const;

Q_SIGNALS:
    /// The picture of the device looks different, with the same frame.
    void changed(const QString &id);

private:
    struct Shown
    {
        HeightFrame frame;
        HeightAnalysis::Range range; ///< of the colours, unless the camera has settings of its own
        bool fresh = false; ///< its frameReady() is still to come
    };

    void keep(const QString &id, const HeightFrame &frame);
    void adoptFrame(const QString &id);
    /// The 2D image that the show mode of the device asks for; null when the frame does not have it.
    QImage chosenOutput(const QString &id, const HeightFrame &frame) const;
    bool showsIntensity(const QString &id, const HeightFrame &frame) const;
    /// The picture is an image in place of the heights.
    bool showsImage(const QString &id, const HeightFrame &frame) const;
    HeightSampling sampling(const QString &id, const HeightFrame &frame) const;
    double number(const QString &id, HostCore::CAM_INFO item, double otherwise) const;

    HostContext &m_host;
    QHash<QString, Shown> m_shown;
};
