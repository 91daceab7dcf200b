// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QString>
#include <QWidget>

#include "ParamterWnd/ParamterWndGlobal.h"

struct WindowForm;

/// The window that a host places in its main window. It follows the host's events through HostCore and shows the
/// parameter panel of the device that has the focus, or an empty panel. One process needs one.
///
/// Cameras get the curated pages of area-scan cameras. The dynamic properties "profilerTypeCodes" and
/// "structuredLightTypeCodes", lists of strings, name the type codes (CAM_INFO_TYPE_CODE) of those that get the pages
/// of laser profilers or of structured-light cameras instead; a code in both lists counts in the first. They count for
/// panels that are opened after they were set.
///
/// The dynamic property "returningDevices", a list of strings, names devices that were lost and are expected back, or
/// are back: where a person was in the panel of one when it was removed, the next panel of that device is, too. Other
/// new panels start at the first tab with all groups unfolded.
///
/// It has light colours of its own, whatever the palette of the application.
///
/// GUI thread only. No exception leaves its functions.
class PARAMTERWND_EXPORT ParamterWnd : public QWidget
{
    Q_OBJECT

public:
    /// Registers listeners with HostCore, which may call them from here on.
    explicit ParamterWnd(QWidget *parent = nullptr);
    /// Unregisters the listeners.
    ~ParamterWnd() override;

    /// Shows or hides the curated pages in every panel. The window hides when both tabs are hidden.
    void setPanelWidgetVisiable(bool visible);
    /// Shows or hides the feature tree in every panel. The window hides when both tabs are hidden.
    void setAllDetailWidgetVisiable(bool visible);
    /// Stops all reading of the camera `id`, whose connection is about to go. Its panel stays disabled until the
    /// device list reports the camera as closed.
    void setParamterViewDisable(QString id);
    /// Takes no action.
    void setDefaultParameterWndMode(int mode);

Q_SIGNALS:
    /// The window has written a feature itself, through the node map that the host lent, or was refused to. `device` is
    /// the host's key; `value` the text of the value as settings files hold it, empty for a command; `refusal` what the
    /// device or its node map says when it refuses, else empty. What the window refuses by itself is no write. Writes
    /// by HostCore::SetCameraNodeValue() are not told: the host makes those. Together the two are all writes, each
    /// once, in their order.
    ///
    /// Raised on the GUI thread as soon as the write has ended, before the value is read back. The window is in the
    /// middle of it: a slot must neither close the device nor delete the window, and may read other features.
    void written(const QString &device, const QString &feature, const QString &value, const QString &refusal);

private:
    std::unique_ptr<WindowForm> m_ui;
    QWidget *m_manager;
};
