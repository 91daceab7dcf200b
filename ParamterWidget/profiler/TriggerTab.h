// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

class QComboBox;
class QPushButton;
class QString;
class QWidget;
struct PanelContext;

/// Frame trigger and line scan of a laser profiler. GUI thread only; writes pause for some 10 ms.
///
/// The frame trigger and the line trigger share TriggerMode and TriggerSource, told apart by TriggerSelector. Every
/// function that selects one leaves the line trigger selected, but for those that are to be followed by one of the line
/// scan.
class TriggerTab
{
public:
    /// The controls become children of `controlsParent`, until a page places them.
    TriggerTab(PanelContext &context, QWidget *controlsParent);

    QComboBox *frameTriggerMode() const { return m_frameTriggerMode; }
    QComboBox *frameTriggerSource() const { return m_frameTriggerSource; }
    /// Enabled while the frame trigger's source is the software.
    QPushButton *softwareTrigger() const { return m_softwareTrigger; }
    QComboBox *lineScanMode() const { return m_lineScanMode; }

    /// Write what the control says, and show the rows that belong to it. After a refused write the control shows what
    /// the device has; it stays as it is if that cannot be read.
    void applyFrameTriggerMode();
    void applyFrameTriggerSource();
    void applyLineScanMode();
    void trigger();

    /// Set the two modes from the device and apply them as if the user had chosen them.
    void adoptFrameTrigger();
    void adoptLineScan();
    /// Show what the device has, with the frame trigger's source and the rows that belong to it. Write nothing but
    /// what selects the triggers to ask for; what cannot be read stays.
    void showFrameTrigger();
    void showLineScan();

private:
    void showModes();
    /// Of the trigger that is selected.
    std::optional<bool> isTriggerOff() const;
    void showMode(QComboBox *list, int entryOfOff, int entryOfOn);
    /// Shows the source that the device has, which gets another one if its own cannot be used; false if it refuses.
    bool useFrameTriggerSource();
    /// An entry that is not offered shows as none.
    void showFrameTriggerSource(const QString &source);
    void showFrameTriggerRows();
    /// Whether lines are scanned by time.
    bool showLineScanRows();
    void enableSoftwareTrigger(const QString &source);

    PanelContext &m_context;
    QComboBox *m_frameTriggerMode;
    QComboBox *m_frameTriggerSource;
    QPushButton *m_softwareTrigger;
    QComboBox *m_lineScanMode;
};
