// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <vector>

class TourStage;

/// One step of the tour: does something and checks what is then shown.
struct TourStep
{
    const char *name; ///< of the screenshot
    bool (*walk)(TourStage &stage); ///< false when it did not work; the stage knows why
};

/// The whole tour.
std::vector<TourStep> tourSteps();
