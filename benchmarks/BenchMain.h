// SPDX-License-Identifier: MIT
#pragma once

class BenchReport;
class QString;

/// The main function of a program that measures: runs `measure` with an application object, prints the table, and
/// returns 0 if every bound is kept, 1 if not, 2 after a failure.
int benchMain(int argc, char **argv, const QString &description, void (*measure)(BenchReport &));
