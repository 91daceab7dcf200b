// SPDX-License-Identifier: MIT
#pragma once

/// The one function of the test producer that is not the standard's; look it up by its name with dlsym(). A line is
///     FAULT FUNCTION[:COMMAND] ...   see Faults.h
///     ORDER ...                      see Script.cpp
/// and takes effect at once, on all threads. The answer of the thread's last line stays valid until its next one:
/// empty, a number or a list for lines that ask, "error: ..." for a line that makes no sense. Lines, divided by ';',
/// are also taken from the environment variable PARAMTER_TEST_SCRIPT in GCInitLib().
extern "C" const char *paramter_test_script(const char *line);
