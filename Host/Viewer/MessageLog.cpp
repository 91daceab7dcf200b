// SPDX-License-Identifier: MIT
#include "Host/Viewer/MessageLog.h"

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

void report(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const char *module = moduleOf(context);
    HostContext *host = HostContext::current();
    if (host && std::strncmp(module, "qt.", 3) != 0)
        host->log(QString::fromLatin1(module), text, 0);
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
