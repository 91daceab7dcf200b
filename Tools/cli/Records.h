// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonObject>

#include <GenApi/PersistenceFile.h>

#include "Tools/BytesText.h"
#include "Tools/Place.h"

/// How settings look in JSON and in lines.

inline QJsonObject recordOf(const Persistence::Entry &entry)
{
    QJsonObject record{{QStringLiteral("feature"), textOfBytes(entry.feature)},
                       {QStringLiteral("value"), textOfBytes(entry.value)}};
    QJsonObject positions;
    for (const Persistence::SelectorPosition &one : entry.selection)
        positions.insert(textOfBytes(one.selector), textOfBytes(one.position));
    if (!positions.isEmpty())
        record.insert(QStringLiteral("selectors"), positions);
    return record;
}

inline QString placeOf(const Persistence::Entry &entry)
{
    return textOfBytes(placeText(entry.feature, entry.selection));
}

inline QString lineOf(const Persistence::Entry &entry)
{
    return placeOf(entry) + QLatin1Char('=') + textOfBytes(entry.value);
}
