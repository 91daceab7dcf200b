// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <QObject>
#include <QString>

#include "Tools/SettingsLoad.h"

class HostContext;
class QWidget;
class SettingsWalk;

/// Reads and writes the settings of open devices while a window shows how far that is. What comes of it is in the log.
/// GUI thread; each call returns when it has ended, and handles events meanwhile.
class DeviceSettings : public QObject
{
    Q_OBJECT

public:
    explicit DeviceSettings(HostContext &context, QObject *parent = nullptr);

    /// What a person calls the device.
    QString nameOf(const QString &id) const;
    bool isOpen(const QString &id) const;
    /// Who an open device is; empty for others.
    Persistence::DeviceInfo infoOf(const QString &id) const;
    /// A file name without a path for its settings, from its model and serial number.
    QString fileNameFor(const QString &id) const;
    /// The open devices, `first` before all others.
    QStringList openDevices(const QString &first) const;

    /// The settings of a device; nothing when it is not open, was lost, or the user has cancelled. Acquisition pauses
    /// meanwhile.
    std::optional<Persistence::Settings> read(const QString &id, QWidget *window);
    /// Reads what the device has in the places of a load. False as above.
    bool compare(SettingsLoad &load, const QString &id, QWidget *window);
    /// Writes what is chosen. Acquisition is stopped for it, and started again after it if that is wanted.
    SettingsLoad::End apply(SettingsLoad &load, const QString &id, QWidget *window);

    /// Whether a load starts the acquisition again that it has stopped; on at first, kept in the settings of the host.
    void setAcquiringAgain(bool acquiring);
    bool isAcquiringAgain() const;

    void log(const QString &line);

Q_SIGNALS:
    /// A setting was written to a device, or, with the device's own words, refused.
    void written(const QString &id, const Persistence::Entry &entry, const QString &refusal);

private:
    SettingsLoad::End write(SettingsLoad &load, const QString &id, SettingsWalk &walk);
    bool tellEnd(const SettingsWalk &walk, const QString &id, bool isAnswering);
    void tellLoad(const SettingsLoad &load, const QString &id, SettingsLoad::End end);

    HostContext &m_context;
};
