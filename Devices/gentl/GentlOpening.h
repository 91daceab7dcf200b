// SPDX-License-Identifier: MIT
#pragma once

#include <QFileInfo>
#include <QString>

#include "Devices/gentl/BoundedCall.h"
#include "Devices/gentl/GentlError.h"
#include "Devices/gentl/GentlPlace.h"
#include "Features/NodeGuard.h"

/// A sentence for a person about why a module could not be opened.
QString openingProblem(const GentlError &error);

/// Runs `open`, which opens a module and returns a pointer to what it made, on another thread, for a limited time. Null
/// on failure, with a sentence for a person in `error`.
template <class Open>
auto openBounded(Open open, const GentlIdentity &identity, QString *error)
{
    decltype(open()) made{};
    const auto attempt = [&] {
        try {
            auto result = boundedCall(identity.openLimit, std::move(open));
            if (!result)
                throw std::runtime_error("the producer " + QFileInfo(identity.place.producer).fileName().toStdString()
                                         + " does not come back");
            made = std::move(*result);
        } catch (const GentlError &refusal) {
            throw std::runtime_error(openingProblem(refusal).toStdString());
        }
    };
    guarded(error, attempt);
    return made;
}
