// SPDX-License-Identifier: MIT
#include "Tools/BytesText.h"

QString textOfBytes(const std::string &bytes)
{
    const QString text = QString::fromStdString(bytes);
    return text.toStdString() == bytes ? text : QString::fromLatin1(bytes.data(), static_cast<int>(bytes.size()));
}
