// SPDX-License-Identifier: MIT
#pragma once

#include <exception>

#include <QString>

#include <GenApi/GenApi.h>

/// Runs `access` and turns whatever it throws into a sentence in `error`. True when nothing was thrown.
/// GenICam exceptions are no std::exception, and a port may throw anything through the node map.
template <class Access>
bool guarded(QString *error, Access access)
{
    try {
        access();
        return true;
    } catch (const GenICam::GenericException &failure) {
        *error = QString::fromUtf8(failure.GetDescription());
    } catch (const std::exception &failure) {
        *error = QString::fromUtf8(failure.what());
    } catch (...) {
        *error = QStringLiteral("unknown failure");
    }
    return false;
}
