// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>

#include "Features/HandOver.h"

/// The module under which the parts of HostContext report.
inline const QString HostModule = QStringLiteral("HostContext");

/// The reports of the host, its devices and its panels, for whoever shows or keeps them.
class HostLog : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// lineAdded() follows on the GUI thread, at once when called there. Any thread.
    /// `module` names who reports, as a class of the panel or HostModule; `level` 0 is an ordinary report.
    void add(const QString &module, const QString &message, int level = 0);

Q_SIGNALS:
    void lineAdded(const QDateTime &time, const QString &module, const QString &message, int level);

private:
    HandOver m_handOver;
};
