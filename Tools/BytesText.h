// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include <QString>

/// The text of bytes of a device or a file: UTF-8, or Latin-1 where they are none.
QString textOfBytes(const std::string &bytes);
inline std::string bytesOfText(const QString &text)
{
    return text.toStdString();
}
