// SPDX-License-Identifier: MIT
#pragma once

class HostContext;
struct ViewerOptions;

/// Prints the feature tree of the device or the description that the options name. The exit code: 0, or 1 with
/// the reason on the standard error output when it cannot be opened.
int runDump(HostContext &context, const ViewerOptions &options);
