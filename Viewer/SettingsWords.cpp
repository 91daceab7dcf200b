// SPDX-License-Identifier: MIT
#include "Viewer/SettingsWords.h"

#include <QCoreApplication>

#include <algorithm>

#include "Tools/BytesText.h"

QString failureText(const Persistence::Outcome &outcome)
{
    const QString reason = textOfBytes(outcome.reason);
    if (!outcome.selector.empty())
        return QStringLiteral("%1: %2").arg(textOfBytes(outcome.selector), reason);
    switch (outcome.result) {
    case Persistence::Result::Done:
        return {};
    case Persistence::Result::NotTried:
        return QCoreApplication::translate("SettingsWords", "not tried");
    case Persistence::Result::NotFound:
        return QCoreApplication::translate("SettingsWords", "the device has no such feature");
    case Persistence::Result::Differs:
        return QCoreApplication::translate("SettingsWords", "written, but it reads back as '%1'")
            .arg(textOfBytes(outcome.found));
    default:
        return outcome.isOfVerify
            ? QCoreApplication::translate("SettingsWords", "written, but it cannot be read back: %1").arg(reason)
            : reason;
    }
}

std::size_t countErrors(const std::vector<Persistence::Problem> &problems)
{
    return std::size_t(std::count_if(problems.begin(), problems.end(), [](const Persistence::Problem &problem) {
        return problem.severity == Persistence::Severity::Error;
    }));
}
