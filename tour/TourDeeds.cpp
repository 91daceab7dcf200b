// SPDX-License-Identifier: MIT
#include "tour/TourDeeds.h"

#include <algorithm>

#include "tour/TourStage.h"

namespace {

bool performOne(TourStage &stage, const Deed &deed)
{
    const QString name = say(deed.name);
    switch (deed.kind) {
    case Deed::Open:
        return stage.expect(stage.page().open(deed.page), say("the page does not open"));
    case Deed::Choose:
        return stage.page().choose(name, say(deed.text));
    case Deed::Enter:
        return stage.page().enter(name, say(deed.text));
    case Deed::Press:
        return stage.page().press(name);
    case Deed::Becomes:
        return stage.becomes(deed.name, deed.text);
    case Deed::Shown:
        return stage.expect(stage.page().row(name), QStringLiteral("the row %1 is not shown").arg(name));
    case Deed::Hidden:
        return stage.expect(!stage.page().row(name), QStringLiteral("the row %1 is shown").arg(name));
    }
    return false;
}

} // namespace

bool perform(TourStage &stage, const Deed *first, const Deed *last)
{
    return std::all_of(first, last, [&](const Deed &deed) { return performOne(stage, deed); });
}
