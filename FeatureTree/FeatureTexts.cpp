// SPDX-License-Identifier: MIT
#include "FeatureTree/FeatureTexts.h"

#include <QFile>
#include <QList>

namespace {

/// The text up to its first NUL byte, if it has one.
QString decoded(const QByteArray &text)
{
    return QString::fromUtf8(text.constData());
}

} // namespace

QHash<QString, QString> readFeatureTexts(const QString &path)
{
    QHash<QString, QString> texts;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return texts;
    while (!file.atEnd()) {
        QList<QByteArray> parts = file.readLine().split('>');
        if (parts.size() != 2)
            continue;
        if (parts[1].endsWith('\n'))
            parts[1].chop(1);
        texts.insert(decoded(parts[0]), decoded(parts[1]));
    }
    return texts;
}
