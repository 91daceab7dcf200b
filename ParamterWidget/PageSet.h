// SPDX-License-Identifier: MIT
#pragma once

/// The curated pages that a camera can have.
enum class PageSet { AreaScan, Profiler, StructuredLight };
