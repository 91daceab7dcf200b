// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QTranslator>

/// Translates every text of the panel, or of another context, by putting it into brackets.
class BracketTranslator : public QTranslator
{
public:
    explicit BracketTranslator(const char *context = "ParamterWidget") : m_context(context) { }
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        const bool isMeant = qstrcmp(context, m_context) == 0 || qstrcmp(context, "ToolPageWidgetItem") == 0;
        return isMeant ? QStringLiteral("[%1]").arg(QString::fromUtf8(source)) : QString();
    }

private:
    const char *const m_context;
};
