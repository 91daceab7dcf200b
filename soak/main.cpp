// SPDX-License-Identifier: MIT
#include "Devices/AravisDevice.h"
#include "Viewer/ViewerStyle.h"
#include "soak/EventWatch.h"
#include "soak/OpenCloseCycles.h"
#include "soak/SoakOptions.h"
#include "soak/SoakRun.h"
#include "soak/SoakSession.h"
#include "support/FakeCamera.h"

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    EventWatch application(argc, argv);
    QApplication::setApplicationVersion(QStringLiteral(PARAMTERWND_VERSION));
    const SoakOptions options = SoakOptions::parse(application);
    SoakRecord::print(QStringLiteral("seed %1").arg(options.seed));
    applyViewerStyle(application);
    FakeCamera camera;
    if (options.network && !camera.plug()) {
        SoakRecord::print(QStringLiteral("there is no camera on the network"));
        return 1;
    }
    SoakSession session(options.seed, options.network ? aravisFinder() : DeviceFinder());
    if (options.network)
        session.stage().setCamera(&camera);
    const bool passed = options.cycles > 0
        ? openAndClose(session.stage(), options.cycles)
        : SoakRun(session.stage(), application, {options.seconds, options.steps, options.bound}).run();
    SoakRecord::print(passed ? QStringLiteral("passed: %1 steps, longest event %2 ms")
                                   .arg(session.record().step())
                                   .arg(int(EventWatch::meter()->longest()))
                             : session.record().report());
    return passed ? 0 : 1;
}
