// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

/// What the program prints, in UTF-8: lines for people, or data as JSON; notes and errors beside it.
class Output
{
public:
    explicit Output(bool isJson) : m_isJson(isJson) { }

    bool isJson() const { return m_isJson; }
    /// Prints at once.
    void line(const QString &text);
    void bytes(const QByteArray &text);
    /// On the standard error output.
    void note(const QString &text);
    /// A JSON document in one line, at once.
    void record(const QJsonObject &data);
    /// For document().
    void add(const QJsonObject &data) { m_documents.append(data); }
    /// Prints what was added, if anything: as one object, or all as an array.
    void document(bool asArray);
    /// Nobody reads it any more, or the disk is full.
    bool isBroken() const { return m_isBroken; }

private:
    const bool m_isJson;
    QJsonArray m_documents;
    bool m_isBroken = false;
};
