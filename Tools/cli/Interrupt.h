// SPDX-License-Identifier: MIT
#pragma once

/// Ctrl-C and its like end the work at the next step, so that devices are left in order.
namespace Interrupt {

/// From now on. A second Ctrl-C ends the program at once.
void watch();
bool happened();

} // namespace Interrupt
