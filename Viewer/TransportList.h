// SPDX-License-Identifier: MIT
#pragma once

#include "Host/HostContext.h"

/// Searches for cameras once, and prints everything that the search goes through and what was seen there, for people
/// whose camera is not found. The exit code: 0.
int listTransports(HostContext::Options options);
