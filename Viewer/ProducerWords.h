// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <QCoreApplication>
#include <QString>

#include "Devices/gentl/ProducerReport.h"
#include "Host/Producers.h"

/// A producer that the host knows, with what the last search has seen behind it.
struct KnownProducer
{
    Producers::File file;
    std::optional<ProducerReport> report = std::nullopt; ///< none when it was not searched
    bool isSearching = false;
};

/// What a person reads about a producer.
class ProducerWords
{
    Q_DECLARE_TR_FUNCTIONS(ProducerWords)

public:
    /// What is reached: "GigE Vision, CoaXPress".
    static QString transports(const KnownProducer &producer);
    static QString origin(Producers::Origin origin);
    /// What it sees, or why nothing: a line.
    static QString state(const KnownProducer &producer);
    /// Everything that is known of it: some lines.
    static QString details(const KnownProducer &producer);

private:
    static QString interfaceLines(const ProducerReport::SeenInterface &seen);
    static QString deviceLine(const ProducerReport::SeenDevice &seen);
};
