// SPDX-License-Identifier: MIT
#include "support/FakeCamera.h"

#include <QStandardPaths>

namespace {

const QString Program = QStringLiteral("arv-fake-gv-camera-0.8");

} // namespace

bool FakeCamera::isInstalled()
{
    return !QStandardPaths::findExecutable(Program).isEmpty();
}

QString FakeCamera::address()
{
    return qEnvironmentVariable("FAKE_CAMERA_ADDRESS", QStringLiteral("127.0.0.1"));
}

bool FakeCamera::plug(const QString &serial)
{
    QStringList command{Program, QStringLiteral("-i"), address()};
    if (!serial.isEmpty())
        command << QStringLiteral("-s") << serial;
    const QString network = qEnvironmentVariable("FAKE_CAMERA_NETWORK");
    if (!network.isEmpty())
        command = QStringList{QStringLiteral("nsenter"), QStringLiteral("--net=") + network} + command;
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(command.takeFirst(), command);
    return m_process.waitForStarted();
}

bool FakeCamera::unplug()
{
    m_process.kill();
    return !isPlugged() || m_process.waitForFinished();
}
