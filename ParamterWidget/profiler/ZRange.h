// SPDX-License-Identifier: MIT
#pragma once

#include "ParamterWnd/HostCore.h"

class QDoubleSpinBox;
class QObject;
class QPushButton;
class QWidget;
struct PanelContext;

/// The range of heights in mm in which the host displays profiles: typed, or worked out by the host from a new
/// acquisition. The host keeps it per camera. GUI thread only.
class ZRange
{
public:
    /// The controls become children of `controlsParent`, until a page places them; they show the host's settings
    /// within the device's bounds.
    ZRange(PanelContext &context, QWidget *controlsParent);

    QPushButton *autoButton() const { return m_auto; }
    QDoubleSpinBox *maximum() const { return m_maximum.field; }
    QDoubleSpinBox *minimum() const { return m_minimum.field; }

    /// Asks the host for a range and starts an acquisition from a thread of its own, which nobody waits for.
    void determine();
    /// Stores an edited bound, or restores it if the range would be inverted: to what the host has stored, or to the
    /// last one that was taken. Other objects are ignored.
    void apply(const QObject *bound);
    /// Shows the host's settings. A bound that is no number, or that is being typed, stays as it is.
    void show();
    /// Sets the texts in the application's language.
    void retranslate();

private:
    struct Bound
    {
        QDoubleSpinBox *field;
        HostCore::CAM_INFO item;
        double usual;
    };

    PanelContext &m_context;
    QPushButton *m_auto;
    Bound m_maximum;
    Bound m_minimum;
};
