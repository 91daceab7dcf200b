// SPDX-License-Identifier: MIT
#include "Viewer/MessageLog.h"

#include <QString>

#include <cstring>

#include "Host/HostContext.h"

namespace {

QtMessageHandler previousHandler = nullptr;

const char *moduleOf(const QMessageLogContext &context)
{
    const bool unnamed = !context.category || std::strcmp(context.category, "default") == 0;
    return unnamed ? "Panel" : context.category;
}

/// Bookkeeping of the feature tree that tells a person nothing: closing an editor without a value, new titles, and a
/// refused write, which the tree itself logs with its reason.
bool isBookkeeping(const QString &text)
{
    return text == QLatin1String("Data is invalid!") || text == QLatin1String("Feature is invalid!")
        || text.startsWith(QLatin1String("Failed to set data for "));
}

/// What Qt says of the panel's style sheets each time that it reads one: they name colours as rgb with an alpha value.
bool isOfStyleSheet(const QString &text)
{
    return text.startsWith(QLatin1String("QCssParser::parseColorValue: Specified color without alpha value"));
}

/// Qt names its own messages by category ("qt....") or by function ("QClass::function: ...").
bool isOfQt(const char *module, const QString &text)
{
    return std::strncmp(module, "qt.", 3) == 0
        || (text.startsWith(QLatin1Char('Q')) && text.contains(QLatin1String("::")));
}

void report(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (isBookkeeping(text) || isOfStyleSheet(text))
        return;
    const char *module = moduleOf(context);
    HostContext *host = HostContext::current();
    if (host && !isOfQt(module, text))
        host->log().add(QString::fromLatin1(module), text, 0);
    if (previousHandler)
        previousHandler(type, context, text);
}

} // namespace

MessageLog::MessageLog()
{
    previousHandler = qInstallMessageHandler(report);
}

MessageLog::~MessageLog()
{
    qInstallMessageHandler(previousHandler);
}
