// SPDX-License-Identifier: MIT
#include "Tools/cli/Interrupt.h"

#include <csignal>
#include <initializer_list>

namespace {

volatile std::sig_atomic_t g_happened = 0;

void note(int signal)
{
    g_happened = 1;
    std::signal(signal, SIG_DFL);
}

} // namespace

namespace Interrupt {

void watch()
{
    for (int signal : {SIGINT, SIGTERM, SIGHUP})
        std::signal(signal, note);
    std::signal(SIGPIPE, SIG_IGN); // Output notices that nobody reads it any more
}

bool happened()
{
    return g_happened != 0;
}

} // namespace Interrupt
