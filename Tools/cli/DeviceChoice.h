// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QString>

#include "Devices/Device.h"

struct Options;

/// A device that could be opened, and what is known of it before.
struct KnownDevice
{
    QString id;
    Device::Transport transport = Device::Transport::Other;
    QString name;
    QString vendor;
    QString model;
    QString serial;
    QString address;
    std::function<std::unique_ptr<Device>()> create;
};

/// All devices, simulated ones first. Waits for the search no longer than the options say; the network's part of it
/// takes a second.
std::vector<KnownDevice> knownDevices(const Options &options, QString *warning);

/// Whether that is the id of a description file.
bool isDescription(const QString &name);

/// The device that a person calls so: an id, a serial number or an IP address. Searches only if it has to.
std::vector<KnownDevice> devicesNamed(const std::string &name, const Options &options, QString *error);
/// Those that --genicam or --all-of names.
std::vector<KnownDevice> devicesOfOptions(const Options &options, QString *error);

/// "GigE Vision"
QString transportName(Device::Transport transport);

/// The program must end without tidying up: a search hangs.
bool isSearchHanging();
