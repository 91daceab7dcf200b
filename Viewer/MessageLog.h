// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// While it lives, Qt's messages of the panel and the viewer also go to the log of the current HostContext; those of Qt
/// itself reach the standard error output only, and mere bookkeeping and remarks on style sheets are dropped. Any
/// thread may report.
class MessageLog
{
public:
    MessageLog();
    ~MessageLog();

private:
    Q_DISABLE_COPY(MessageLog)
};
