// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

class QComboBox;
class QWidget;
struct PanelContext;

/// What a laser profiler sends: heights alone or intensities too, and how many profiles make a batch. GUI thread only.
class ProfileData
{
public:
    /// The lists become children of `controlsParent`, until a page places them.
    ProfileData(PanelContext &context, QWidget *controlsParent);

    QComboBox *batchMode() const { return m_batchMode; }
    /// Write what the list says. After a refused write it shows what the device has, and stays as it is if that cannot
    /// be read.
    void applyBatchMode();
    void applySource(int index);
    /// Set the lists from the device, or to the usual entry if the host cannot read it. A number of profiles between
    /// the classes moves to the class above it, on the device too.
    void adoptSource();
    void adoptBatchMode();
    /// Show what the device has, writing nothing; what cannot be read stays.
    void showSource();
    void showBatchMode();

private:
    /// The entry for a number of profiles; the one that is shown when there is none.
    int batchMode(const std::optional<double> &profiles) const;

    PanelContext &m_context;
    QComboBox *m_source;
    QComboBox *m_batchMode;
};
