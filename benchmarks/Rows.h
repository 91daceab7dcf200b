// SPDX-License-Identifier: MIT
#pragma once

#include "BenchReport.h"

/// Loading descriptions and reading features, without the panel.
void addEngineRows(BenchReport &report);

/// Opening, searching and repainting a panel, and what it keeps in memory. Needs the application object.
void addPanelRows(BenchReport &report);

/// Building, writing, refreshing and drawing on the curated pages. Needs the application object.
void addPageRows(BenchReport &report);

/// Panels of cameras that are slow, that do not answer, and that are back. Needs the application object.
void addFaultRows(BenchReport &report);
