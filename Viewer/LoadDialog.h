// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

#include "Tools/SettingsLoad.h"

class DeviceSettings;
class HostContext;
class QCheckBox;
class QLabel;
class QPushButton;
class SettingsTable;

/// What a settings file would change in a device, for the user to choose from; after the load, what came of it.
class LoadDialog : public QDialog
{
    Q_OBJECT

public:
    /// What a load is of.
    struct Subject
    {
        QString device; ///< its id
        QString file; ///< its path
    };

    /// The load has compared already. Context and settings must outlive this.
    LoadDialog(HostContext &context, DeviceSettings &settings, const Subject &subject, SettingsLoad load,
               QWidget *parent);

    SettingsTable &table() { return *m_table; }
    void accept() override;
    void reject() override;

private:
    void layOut();
    QWidget *problemList() const;
    void showPlan();
    void showResults(SettingsLoad::End end);
    void showState();
    QString sentence(SettingsLoad::End end) const;

    HostContext &m_context;
    DeviceSettings &m_settings;
    const Subject m_subject;
    SettingsLoad m_load;
    SettingsTable *m_table;
    QLabel *m_state;
    QCheckBox *m_acquiresAgain;
    QPushButton *m_apply;
    QPushButton *m_close;
    bool m_isRunning = false;
    bool m_isDone = false;
};
