// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include <QByteArray>
#include <QDir>
#include <QString>

#include <GenApi/GenApi.h>

#include "Devices/gentl/Producer.h"

/// Where a description is, as a URL of a port tells it.
struct PortUrl
{
    enum class Place { Registers, File };

    Place place = Place::Registers;
    uint64_t address = 0;
    uint64_t length = 0; ///< bytes
    QString path; ///< of a file
    int schema = 0; ///< version of the schema: major, minor and sub-minor, three decimal digits each; 0: not told
};

/// Understands `Local:name;address;length` with hexadecimal numbers and `File:path`, both with and without slashes
/// before the name, in any case, with escapes of per cent and with `?SchemaVersion=`. Throws std::runtime_error with a
/// sentence for a person. Relative files are those in `directory`.
PortUrl parsePortUrl(const QByteArray &url, const QDir &directory);

/// All URLs of a port, as they stand, those with the newest schema first.
std::vector<QByteArray> portUrls(const Producer &gentl, GenTL::PORT_HANDLE port);

/// The ways to registers that a description may lie in. They are tried one after the other: some producers know nothing
/// behind the last byte, others want whole words.
using DescriptionPorts = std::vector<std::unique_ptr<GenApi::IPort>>;

/// Calls `use` with the description, XML or zipped, that the first URL leads to; if that or `use` throws, with that of
/// the next one. Each failure goes to `report`. Throws std::runtime_error when none is left.
void useDescription(const std::vector<QByteArray> &urls, const QDir &directory, const DescriptionPorts &ports,
                    const std::function<void(const QByteArray &description, const PortUrl &url)> &use,
                    const std::function<void(const QString &line)> &report);
