// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

#include "Tools/SettingsDiff.h"
#include "Viewer/SettingsCopy.h"

class QLabel;
class QPushButton;
class SettingsTable;

/// Two open devices, a device and a file, or two files side by side. What is ticked can be copied to the other side or
/// to all open devices of the model.
class CompareDialog : public QDialog
{
    Q_OBJECT

public:
    /// `settings` must outlive this.
    CompareDialog(DeviceSettings &settings, QWidget *parent);

    SettingsTable &table() { return *m_table; }
    SettingsSource &left() { return *m_left; }
    SettingsSource &right() { return *m_right; }
    QPushButton &toRight() { return *m_toRight; }
    QPushButton &toLeft() { return *m_toLeft; }
    QPushButton &toAll() { return *m_toAll; }

    void reject() override;

private:
    void layOut();
    void connectParts();
    void showDifferences(const SettingsCopy &copied);
    void showNothingCopied() { showDifferences(SettingsCopy(m_settings, this)); }
    void showCommands();
    void copy(const SettingsSource &from, SettingsSource &to);
    void copyToAll();
    /// Reads the sides anew that were written.
    void refreshAfter(const SettingsCopy &copied, const std::vector<SettingsSource::Place> &written);
    std::vector<Persistence::Entry> tickedOf(const SettingsSource &side) const;
    QStringList devicesOfModel() const;
    void warn(const QString &sentence);

    DeviceSettings &m_settings;
    SettingsSource *m_left;
    SettingsSource *m_right;
    SettingsTable *m_table;
    QLabel *m_state;
    QPushButton *m_toRight;
    QPushButton *m_toLeft;
    QPushButton *m_toAll;
    SettingsDiff m_diff;
    bool m_isRunning = false;
};
