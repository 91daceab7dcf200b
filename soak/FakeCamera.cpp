// SPDX-License-Identifier: MIT
#include "soak/FakeCamera.h"

bool FakeCamera::plug()
{
    const QString network = qEnvironmentVariable("FAKE_CAMERA_NETWORK");
    QStringList command{QStringLiteral("arv-fake-gv-camera-0.8"), QStringLiteral("-i"),
                        qEnvironmentVariable("FAKE_CAMERA_ADDRESS", QStringLiteral("127.0.0.1"))};
    if (!network.isEmpty())
        command = QStringList{QStringLiteral("nsenter"), QStringLiteral("--net=") + network} + command;
    m_process.start(command.takeFirst(), command);
    return m_process.waitForStarted();
}

void FakeCamera::unplug()
{
    m_process.kill();
    m_process.waitForFinished();
}
