// SPDX-License-Identifier: MIT
#pragma once

class BenchReport;

/// How many accesses a camera costs until a panel shows it, and how long they take, read ahead and one by one.
void addReadAheadRows(BenchReport &report);
