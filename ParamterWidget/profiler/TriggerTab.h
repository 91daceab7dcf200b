// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

class QComboBox;
class QPushButton;
class QString;
class QWidget;
struct PanelContext;

/// Frame trigger, line scan, data source and batches of a laser profiler. GUI thread only; writes pause for some 10 ms.
///
/// The frame trigger and the line trigger share TriggerMode and TriggerSource, told apart by TriggerSelector. Every
/// function that selects one leaves the line trigger selected.
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
    QComboBox *batchMode() const { return m_batchMode; }

    /// Write what the control says, and show the rows that belong to it. After a refused write the control shows what
    /// the device has; it stays as it is if that cannot be read.
    void followFrameTriggerMode() const;
    void followFrameTriggerSource() const;
    void followLineScanMode() const;
    void followBatchMode() const;
    void followDataSource(int index) const;
    void trigger() const;

    /// Sets the controls from the device. The two modes are followed as if the user had chosen them.
    void readModes();
    void readDataSource() const;
    /// A number of the device between the classes moves to the class above it, on the device too.
    void readBatchMode();
    /// Show what the device has and the rows that belong to it, writing nothing; what cannot be read stays. The modes,
    /// with the frame trigger's source, need both triggers selected.
    void showModes() const;
    void showDataSource() const;
    void showBatchMode() const;

private:
    /// Of the trigger that is selected.
    std::optional<bool> isTriggerOff() const;
    void showMode(QComboBox *list, int entryOfOff, int entryOfOn) const;
    /// The entry for a number of lines; the one that is shown when there is none.
    int batchMode(const std::optional<double> &lines) const;
    /// Shows the source that the device has, which gets another one if its own cannot be used; false if it refuses.
    bool useFrameTriggerSource() const;
    /// An entry that is not offered shows as none.
    void showFrameTriggerSource(const QString &source) const;
    void showFrameTriggerRows() const;
    /// Whether lines are scanned by time.
    bool showLineScanRows() const;
    void enableSoftwareTrigger(const QString &source) const;

    const PanelContext &m_context;
    QComboBox *m_frameTriggerMode;
    QComboBox *m_frameTriggerSource;
    QPushButton *m_softwareTrigger;
    QComboBox *m_lineScanMode;
    QComboBox *m_dataSource;
    QComboBox *m_batchMode;
};
