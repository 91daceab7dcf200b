// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// Marks what the library exports.
#if defined(PARAMTERWND_BUILDING)
#define PARAMTERWND_EXPORT Q_DECL_EXPORT
#else
#define PARAMTERWND_EXPORT Q_DECL_IMPORT
#endif
