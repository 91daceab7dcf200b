// SPDX-License-Identifier: MIT
#include "Tools/cli/Output.h"

#include <cstdio>

#include <QJsonDocument>

void Output::bytes(const QByteArray &text)
{
    const auto size = static_cast<std::size_t>(text.size());
    if (std::fwrite(text.constData(), 1, size, stdout) != size || std::fflush(stdout) != 0)
        m_isBroken = true;
}

void Output::line(const QString &text)
{
    bytes(text.toUtf8() + '\n');
}

void Output::note(const QString &text)
{
    std::fputs((QStringLiteral("paramter: ") + text + QLatin1Char('\n')).toUtf8().constData(), stderr);
}

void Output::record(const QJsonObject &data)
{
    bytes(QJsonDocument(data).toJson(QJsonDocument::Compact) + '\n');
}

void Output::document(bool asArray)
{
    if (asArray)
        bytes(QJsonDocument(m_documents).toJson());
    else if (!m_documents.isEmpty())
        bytes(QJsonDocument(m_documents.first().toObject()).toJson());
}
