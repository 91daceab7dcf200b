// SPDX-License-Identifier: MIT
#pragma once

#include "ParamterWidget/pages/RowSpec.h"

class QDoubleSpinBox;
class QObject;
class QPushButton;
class QWidget;
struct PanelContext;

/// Levels a laser profiler: the tilt, which the device keeps as sine and cosine, and the height scale. The host can
/// determine both. GUI thread only; writing the tilt pauses for 10 ms.
class Corrections
{
public:
    /// The controls become children of `controlsParent`, until a page places them.
    Corrections(PanelContext &context, QWidget *controlsParent);

    /// In degrees, -44.427 to 44.427 once read.
    QDoubleSpinBox *tilt() const { return m_tilt; }
    QDoubleSpinBox *height() const { return m_height; }
    QPushButton *tiltButton() const { return m_tiltButton; }
    QPushButton *heightButton() const { return m_heightButton; }

    /// Writes an edited field to the device; after a refusal the field shows what the device has. Other objects are
    /// ignored.
    void apply(const QObject *field);
    /// Lets the host determine the value of a button's field, which it may set, and writes it. Other objects are
    /// ignored.
    void determine(const QObject *button);
    /// Show what the device has, writing nothing. What cannot be read, or is being typed, stays as it is.
    void showTilt();
    void showHeight();
    /// Sets the texts in the application's language.
    void retranslate();

private:
    void writeTilt();
    void writeHeight();
    /// Takes the focus from a field, unless it is being stepped; its row keeps the place, so that Tab goes on from
    /// there.
    void leave(QDoubleSpinBox *field, RowId id);

    PanelContext &m_context;
    QDoubleSpinBox *m_tilt;
    QDoubleSpinBox *m_height;
    QPushButton *m_tiltButton;
    QPushButton *m_heightButton;
};
