// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QObject>
#include <QString>

#include "Viewer/SettingsSource.h"

class CompareDialog;
class DeviceSettings;
class DeviceTree;
class HostContext;
class RecentFiles;
class SettingsLoad;
class ViewerCommands;
enum class Command;

/// The commands that save, load and compare settings: they ask for files and open the dialogs.
class SettingsCommands : public QObject
{
    Q_OBJECT

public:
    /// Owned by the window, as the commands and the tree are.
    SettingsCommands(HostContext &context, const DeviceTree &devices, ViewerCommands &commands, QWidget *window);

    DeviceSettings &settings() { return *m_settings; }
    /// The settings of a device are being read or written: it must stay.
    bool isBusy() const;

    /// Saves the settings of a device.
    void save(const QString &id, const QString &path);
    /// Shows what the file would change in the current device; asks before if it is of another model. Does nothing
    /// while settings are being read or written.
    void load(const QString &path);
    /// The dialog, on its way; it deletes itself.
    CompareDialog *compare(const SettingsSource::Place &left, const SettingsSource::Place &right);

private:
    void run(Command command);
    void updateCommands();
    QString currentId() const;
    QString pathOf(const QString &file) const;
    void askForSave();
    void askForLoad();
    void compareCurrent();
    void askForModel(const QString &path, const QString &id, const std::shared_ptr<SettingsLoad> &load);
    void plan(const QString &path, const QString &id, SettingsLoad &load);
    void keep(const QString &path);
    void warn(const QString &title, const QString &sentence);

    HostContext &m_context;
    const DeviceTree &m_devices;
    ViewerCommands &m_commands;
    QWidget *m_window;
    DeviceSettings *m_settings;
    RecentFiles *m_recent;
};
