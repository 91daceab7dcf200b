// SPDX-License-Identifier: MIT
#pragma once

#include <iterator>

class TourStage;

/// What a person does with a row of a curated page, or sees there or on the device. Texts of Choose and Becomes are
/// entries of lists, or numbers.
struct Deed
{
    enum Kind { Open, Choose, Enter, Press, Becomes, Shown, Hidden } kind;
    const char *name; ///< of the row, or of the feature for Becomes
    const char *text = "";
    int page = 0; ///< for Open
};

constexpr Deed openPage(int page)
{
    return {Deed::Open, "", "", page};
}

/// Does all of them in their order, until one does not work; the stage knows which.
bool perform(TourStage &stage, const Deed *first, const Deed *last);

template <const auto &deeds>
bool perform(TourStage &stage)
{
    return perform(stage, std::begin(deeds), std::end(deeds));
}
