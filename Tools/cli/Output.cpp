// SPDX-License-Identifier: MIT
#include "Tools/cli/Output.h"

#include <cerrno>
#include <cstdio>

#include <QJsonDocument>

void Output::bytes(const QByteArray &text)
{
    const auto size = static_cast<std::size_t>(text.size());
    if (m_isBroken || (std::fwrite(text.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0))
        return;
    m_isBroken = true;
    if (errno != EPIPE) // else whoever read it has had enough
        note(QStringLiteral("the output cannot be written: %1").arg(qt_error_string(errno)));
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
