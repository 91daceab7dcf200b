// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QTranslator>

/// Translates every text of the panel by putting it into brackets.
class BracketTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        const bool ofThePanel = qstrcmp(context, "ParamterWidget") == 0 || qstrcmp(context, "ToolPageWidgetItem") == 0;
        return ofThePanel ? QStringLiteral("[%1]").arg(QString::fromUtf8(source)) : QString();
    }
};
