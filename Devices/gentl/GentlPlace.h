// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

#include <QByteArray>
#include <QString>

#include "Devices/Device.h"

/// Where a module is: the way to it from its producer. Ids are the producer's bytes; empty ones end the way.
struct GentlPlace
{
    QString producer; ///< file, canonical
    QByteArray interfaceId{};
    QByteArray deviceId{};
    QByteArray streamId{};

    /// Under which a device is known, see Device::id().
    QString key() const;
};

/// What a search tells about a device that a producer reaches.
struct GentlIdentity
{
    GentlPlace place;
    QString displayName;
    QString transport; ///< the standard's name: GEV, U3V, CXP...
    std::chrono::milliseconds openLimit{20'000}; ///< what opening may take at most
};

/// GEV and U3V are known by themselves, everything else is Other.
Device::Transport transportOf(const QString &gentlTransport);
