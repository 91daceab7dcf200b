// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// While it lives, Qt's messages of the panel and the viewer (not those of Qt itself, nor mere bookkeeping) also go to
/// the log of the current HostContext; all still reach the standard error output. Any thread may report.
class MessageLog
{
public:
    MessageLog();
    ~MessageLog();

private:
    Q_DISABLE_COPY(MessageLog)
};
