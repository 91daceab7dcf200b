// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

#include "ParamterWidget/ReadingSteps.h"

class CComboBox;
class QComboBox;
class QWidget;
struct PanelContext;

/// The 2D images that a structured-light camera sends beside its depth map: which of the eight it sends, and which one
/// the host shows. GUI thread only.
class OutputSelection
{
public:
    /// The controls, set from the device, become children of `controlsParent`, until a page places them. Nothing is
    /// written.
    OutputSelection(PanelContext &context, QWidget *controlsParent);

    CComboBox *outputs() const { return m_outputs; }
    QComboBox *showTypes() const { return m_showTypes; }

    /// Switches an output of the device, by its place in the list. A refused one shows what the device has, or stays as
    /// the user set it if that cannot be read.
    void applyOutput(int output, bool on);
    /// Tells the host which image to show; none is 0.
    void applyShowType();
    /// Offers the outputs that are on. If the one that is shown has gone, none is, and the host is told.
    void updateShowTypes();
    /// Shows what the device has, without writing to it. An output that cannot be read stays as it is.
    void show();

private:
    /// Ticks an output as the device has it.
    void show(int output, bool otherwise);
    void showReadable(int output, GenApi::INodeMap *nodeMap);
    /// The outputs that can be chosen.
    QStringList offered() const;

    PanelContext &m_context;
    CComboBox *m_outputs;
    QComboBox *m_showTypes;
    ReadingSteps m_steps;
};
